#include "annotation/HighlightAnnotation.h"

#include "annotation/HitTesting.h"

namespace marrowfin {

bool HighlightAnnotation::hitTest(const QPointF& point, double tolerance) const {
    return hitsArea(box(), point, tolerance);
}

} // namespace marrowfin
