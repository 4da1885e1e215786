#include "annotation/ArrowGeometry.h"

#include "base/Geometry.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace marrowfin::annotation {

double arrowHeadLength(double length, double strokeWidth) {
    return std::min(length * 0.6, std::max(strokeWidth * 4.5, 10.0));
}

ArrowGeometry arrowGeometry(const QPointF& start, const QPointF& tip, double strokeWidth) {
    constexpr double halfOpening = std::numbers::pi / 6;
    const double angle = std::atan2(tip.y() - start.y(), tip.x() - start.x());
    const double head = arrowHeadLength(distance(start, tip), strokeWidth);
    const auto behindTip = [&](double length, double direction) {
        return tip - length * QPointF(std::cos(direction), std::sin(direction));
    };
    return {head, behindTip(head, angle - halfOpening), behindTip(head, angle + halfOpening),
            behindTip(head * 0.6, angle)};
}

} // namespace marrowfin::annotation
