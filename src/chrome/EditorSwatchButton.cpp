#include "chrome/EditorSwatchButton.h"

#include "base/Geometry.h"

#include <QPainter>

namespace marrowfin::chrome {

EditorSwatchButton::EditorSwatchButton(const QColor& color, const QString& toolTip, QWidget* parent)
    : EditorButton(Hover::Ignored, toolTip, toolTip, parent), swatch(color) {}

void EditorSwatchButton::paintContent(QPainter& painter) {
    const QRectF oval = inset(QRectF(rect()), 4, 4);
    painter.setBrush(swatch);
    painter.setPen(Qt::NoPen);
    painter.drawEllipse(oval);
    // So that white and black both show on any plate.
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(labelColor(0.25), 1));
    painter.drawEllipse(oval);
    if (!isCurrent())
        return;
    painter.setPen(QPen(labelColor(0.85), 1.5));
    painter.drawEllipse(inset(QRectF(rect()), 1, 1));
}

// Between the swatch and the ring around the current one.
void EditorSwatchButton::paintFocusRing(QPainter& painter) const {
    painter.setPen(QPen(color(SystemColor::blue), 1.8));
    painter.drawEllipse(inset(QRectF(rect()), 2.9, 2.9));
}

} // namespace marrowfin::chrome
