#include "annotation/FreehandAnnotation.h"

#include "annotation/HitTesting.h"

#include <algorithm>

namespace marrowfin {

QRectF FreehandAnnotation::boundingRect() const {
    if (points.isEmpty())
        return {};
    double left = points.first().x(), right = left;
    double top = points.first().y(), bottom = top;
    for (const QPointF& point : points) {
        left = std::min(left, point.x());
        right = std::max(right, point.x());
        top = std::min(top, point.y());
        bottom = std::max(bottom, point.y());
    }
    return {left, top, right - left, bottom - top};
}

bool FreehandAnnotation::hitTest(const QPointF& point, double tolerance) const {
    for (qsizetype i = 1; i < points.size(); ++i)
        if (distanceToSegment(point, points[i - 1], points[i]) < tolerance)
            return true;
    return false;
}

void FreehandAnnotation::translate(double dx, double dy) {
    for (QPointF& point : points)
        point += QPointF(dx, dy);
}

} // namespace marrowfin
