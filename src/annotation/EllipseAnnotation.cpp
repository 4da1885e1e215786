#include "annotation/EllipseAnnotation.h"

namespace marrowfin {

bool EllipseAnnotation::hitTest(const QPointF& point, double) const {
    const double a = size.width() * 0.5;
    const double b = size.height() * 0.5;
    const double x = (point.x() - (origin.x() + a)) / a;
    const double y = (point.y() - (origin.y() + b)) / b;
    const double s = x * x + y * y;
    return 0.8 <= s && s <= 1.2; // false for a zero axis, where s is infinite or not a number
}

} // namespace marrowfin
