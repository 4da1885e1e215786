#include "annotation/BlurAnnotation.h"

#include "annotation/DeviceSpace.h"
#include "annotation/HitTesting.h"
#include "base/SystemColors.h"

#include <QPainter>

namespace marrowfin {

bool BlurAnnotation::hitTest(const QPointF& point, double tolerance) const {
    return hitsArea(box(), point, tolerance);
}

void BlurAnnotation::draw(QPainter& painter) const {
    if (!isPaintable(box()))
        return;
    QColor grey = systemColor(SystemColor::gray);
    grey.setAlphaF(0.6F);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(box(), grey);
    painter.restore();
}

} // namespace marrowfin
