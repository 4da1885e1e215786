#include "platform/freedesktop/EmbeddedIcon.h"

#include <QApplication>
#include <QMouseEvent>
#include <QWidget>

namespace marrowfin::freedesktop {

EmbeddedIcon::EmbeddedIcon(Click click) : click(std::move(click)) {}

void EmbeddedIcon::show() {
    tray.show();
    // The toolkit's own signal comes when the button goes down; a menu opened by it would take the release
    // for a choice. So the window that it docks is listened to.
    for (QWidget* widget : QApplication::topLevelWidgets())
        if (widget->inherits("QSystemTrayIconSys"))
            widget->installEventFilter(this);
}

bool EmbeddedIcon::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::MouseButtonRelease)
        return false;
    const auto* mouse = static_cast<QMouseEvent*>(event);
    // A press that was dragged off the icon is a change of mind.
    if (!static_cast<QWidget*>(watched)->rect().contains(mouse->position().toPoint()))
        return false;
    if (mouse->button() == Qt::LeftButton)
        click(platform::StatusItemButton::Left);
    else if (mouse->button() == Qt::RightButton)
        click(platform::StatusItemButton::Right);
    return false;
}

} // namespace marrowfin::freedesktop
