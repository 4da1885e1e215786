#include "chrome/EditorWidthButton.h"

#include "base/Geometry.h"

#include <QPainter>

namespace marrowfin::chrome {

EditorWidthButton::EditorWidthButton(const QString& toolTip, double value, double dotDiameter,
                                     QWidget* parent)
    : EditorButton(Hover::Ignored, toolTip, toolTip, parent), strokeWidth(value), diameter(dotDiameter) {
    setCornerRadius(7);
}

void EditorWidthButton::paintContent(QPainter& painter) {
    if (isCurrent())
        painter.fillPath(roundedRect(inset(QRectF(rect()), 1, 1), 6), labelColor(0.12));
    painter.setPen(Qt::NoPen);
    painter.setBrush(color(isCurrent() ? SystemColor::label : SystemColor::secondaryLabel));
    painter.drawEllipse(QRectF(rect()).center(), diameter / 2, diameter / 2);
}

} // namespace marrowfin::chrome
