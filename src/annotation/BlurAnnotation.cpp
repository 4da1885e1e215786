#include "annotation/BlurAnnotation.h"

#include "annotation/HitTesting.h"

namespace marrowfin {

bool BlurAnnotation::hitTest(const QPointF& point, double tolerance) const {
    return hitsArea(box(), point, tolerance);
}

} // namespace marrowfin
