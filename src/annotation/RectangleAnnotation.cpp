#include "annotation/RectangleAnnotation.h"

#include "annotation/HitTesting.h"

namespace marrowfin {

bool RectangleAnnotation::hitTest(const QPointF& point, double tolerance) const {
    return hitsOutline(box(), point, tolerance);
}

} // namespace marrowfin
