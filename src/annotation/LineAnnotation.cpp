#include "annotation/LineAnnotation.h"

#include "annotation/HitTesting.h"
#include "base/Geometry.h"

namespace marrowfin {

QRectF LineAnnotation::boundingRect() const {
    return rectBetween(startPoint, endPoint);
}

bool LineAnnotation::hitTest(const QPointF& point, double tolerance) const {
    return distanceToSegment(point, startPoint, endPoint) < tolerance;
}

} // namespace marrowfin
