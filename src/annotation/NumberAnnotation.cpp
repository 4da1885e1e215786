#include "annotation/NumberAnnotation.h"

#include "base/Geometry.h"

namespace marrowfin {

QRectF NumberAnnotation::boundingRect() const {
    return {center.x() - radius, center.y() - radius, 2 * radius, 2 * radius};
}

bool NumberAnnotation::hitTest(const QPointF& point, double tolerance) const {
    return distance(point, center) < tolerance + radius;
}

} // namespace marrowfin
