#include "annotation/ArrowAnnotation.h"

#include "annotation/ArrowGeometry.h"
#include "annotation/HitTesting.h"
#include "base/Geometry.h"

#include <algorithm>

namespace marrowfin {

QRectF ArrowAnnotation::boundingRect() const {
    const double head = arrowHeadLength(distance(startPoint, endPoint), strokeWidth);
    const double pad = std::max(10.0, strokeWidth + head * 0.5);
    return inset(rectBetween(startPoint, endPoint), -pad, -pad);
}

bool ArrowAnnotation::hitTest(const QPointF& point, double tolerance) const {
    return distanceToSegment(point, startPoint, endPoint) < tolerance;
}

} // namespace marrowfin
