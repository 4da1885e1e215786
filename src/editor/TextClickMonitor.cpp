#include "editor/TextClickMonitor.h"

#include <QCoreApplication>
#include <QMouseEvent>

namespace marrowfin::editor {

TextClickMonitor::TextClickMonitor(QWidget* canvas, std::function<void()> pressedElsewhere)
    : canvas(canvas), pressedElsewhere(std::move(pressedElsewhere)) {
    QCoreApplication::instance()->installEventFilter(this);
}

bool TextClickMonitor::eventFilter(QObject* watched, QEvent* event) {
    const bool press =
        event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonDblClick;
    if (!press || static_cast<QMouseEvent*>(event)->button() != Qt::LeftButton)
        return false;
    const auto* hit = qobject_cast<QWidget*>(watched);
    if (!hit || !canvas || hit->window() != canvas->window())
        return false;
    if (hit == canvas || canvas->isAncestorOf(hit))
        return false;                                    // the canvas handles it
    const std::function<void()> call = pressedElsewhere; // which ends this monitor
    call();
    return false;
}

} // namespace marrowfin::editor
