#include "capture/WindowHighlightView.h"

#include "base/Geometry.h"
#include "base/SystemColors.h"

#include <QMouseEvent>
#include <QPainter>

namespace marrowfin::capture {

WindowHighlightView::WindowHighlightView(QWidget* parent) : QWidget(parent) {}

void WindowHighlightView::mousePressEvent(QMouseEvent* event) {
    // Taken, so that the release comes here and not to the view beneath.
    event->setAccepted(event->button() == Qt::LeftButton);
}

void WindowHighlightView::mouseReleaseEvent(QMouseEvent* event) {
    // The press holds the pointer, so a release anywhere comes here: one beside the rectangle is a change of
    // mind.
    if (event->button() == Qt::LeftButton && contains(QRectF(rect()), event->position()) && onSelect)
        onSelect(windowID);
}

void WindowHighlightView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(rect(), QColor::fromRgbF(1, 1, 1, 0.2f));
    QPen pen(systemColor(SystemColor::blue), 3.0);
    pen.setJoinStyle(Qt::MiterJoin);
    painter.setPen(pen);
    // On the bounds: half of the line lies outside and is clipped away.
    painter.drawRect(QRectF(rect()));
}

} // namespace marrowfin::capture
