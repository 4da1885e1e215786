#include "annotation/HitTesting.h"

#include "base/Geometry.h"

#include <algorithm>

namespace marrowfin::annotation {

double distanceToSegment(const QPointF& point, const QPointF& a, const QPointF& b) {
    const QPointF along = b - a;
    const double lengthSquared = QPointF::dotProduct(along, along);
    if (!(lengthSquared > 0))
        return distance(point, a);
    const double share = std::clamp(QPointF::dotProduct(point - a, along) / lengthSquared, 0.0, 1.0);
    return distance(point, a + share * along);
}

bool hitsArea(const QRectF& box, const QPointF& point, double tolerance) {
    return contains(inset(box, -tolerance, -tolerance), point);
}

bool hitsOutline(const QRectF& box, const QPointF& point, double tolerance) {
    return hitsArea(box, point, tolerance) && !contains(inset(box, tolerance, tolerance), point);
}

} // namespace marrowfin::annotation
