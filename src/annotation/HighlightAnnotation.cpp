#include "annotation/HighlightAnnotation.h"

#include "annotation/DeviceSpace.h"
#include "annotation/HitTesting.h"

#include <QPainter>

namespace marrowfin::annotation {

bool HighlightAnnotation::hitTest(const QPointF& point, double tolerance) const {
    return hitsArea(box(), point, tolerance);
}

void HighlightAnnotation::draw(QPainter& painter) const {
    if (!isPaintable(box()))
        return;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setCompositionMode(backdropIsDark ? QPainter::CompositionMode_Screen
                                              : QPainter::CompositionMode_Multiply);
    painter.fillRect(box(), strokeColor);
    painter.restore();
}

} // namespace marrowfin::annotation
