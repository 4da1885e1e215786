#include "panel/SwipeGesture.h"

#include <cmath>

namespace marrowfin::panel {

namespace {
constexpr double neededDistance = 70;
} // namespace

void SwipeGesture::begin() {
    total = {};
    consumed = false;
}

std::optional<int> SwipeGesture::move(const QPointF& delta) {
    if (consumed)
        return std::nullopt;
    total += delta;
    const double across = std::fabs(total.x());
    if (across < neededDistance || 2 * std::fabs(total.y()) >= across)
        return std::nullopt;
    consumed = true;
    return total.x() < 0 ? -1 : 1;
}

} // namespace marrowfin::panel
