#include "annotation/BlurAnnotation.h"

#include "annotation/DeviceSpace.h"
#include "annotation/HitTesting.h"
#include "base/ColorAlpha.h"
#include "base/SystemColors.h"

#include <QPainter>

namespace marrowfin::annotation {

bool BlurAnnotation::hitTest(const QPointF& point, double tolerance) const {
    return hitsArea(box(), point, tolerance);
}

void BlurAnnotation::draw(QPainter& painter) const {
    if (!isPaintable(box()))
        return;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(box(), withAlpha(systemColor(SystemColor::gray), 0.6));
    painter.restore();
}

} // namespace marrowfin::annotation
