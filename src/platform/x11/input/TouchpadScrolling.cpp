#include "platform/x11/input/TouchpadScrolling.h"

#include <algorithm>
#include <cmath>

namespace marrowfin::x11 {

using platform::ScrollPhase;
using platform::ScrollStep;

namespace {
// Fingers that rest this long begin anew: not every driver tells that they were lifted.
constexpr std::uint32_t pauseMilliseconds = 250;
// A notch of a wheel is 15 degrees, a point each.
constexpr double pointsPerNotch = 15;

const ScrollAxis* axisOf(const ScrollDevice& device, std::uint16_t number) {
    const auto found = std::find_if(device.axes.begin(), device.axes.end(),
                                    [number](const ScrollAxis& axis) { return axis.number == number; });
    return found == device.axes.end() ? nullptr : &*found;
}
} // namespace

void TouchpadScrolling::setDevices(std::vector<ScrollDevice> devices) {
    known = std::move(devices);
    pointerCame();
}

void TouchpadScrolling::pointerCame() {
    lastPositions.clear();
}

std::optional<ScrollStep> TouchpadScrolling::read(const AxisPositions& positions) {
    const auto device = std::find_if(known.begin(), known.end(), [&positions](const ScrollDevice& candidate) {
        return candidate.id == positions.device;
    });
    if (device == known.end() || device->source != ScrollSource::Touchpad)
        return std::nullopt;
    bool scrolled = false;
    bool stands = true;
    QPointF delta;
    for (const auto& [number, value] : positions.values) {
        const ScrollAxis* axis = axisOf(*device, number);
        if (!axis)
            continue;
        scrolled = true;
        const std::optional<double> moved = way(*device, *axis, value);
        stands = stands && moved == 0.0;
        (axis->orientation == Qt::Horizontal ? delta.rx() : delta.ry()) += moved.value_or(0);
    }
    if (!scrolled)
        return std::nullopt;
    const ScrollPhase phase = phaseAt(positions, stands);
    const bool ours = gesture && gesture->window == positions.window;
    if (phase == ScrollPhase::Ended)
        gesture.reset();
    return ours ? std::optional(ScrollStep{phase, delta}) : std::nullopt;
}

// A gesture begins after a rest; drivers that tell of lifted fingers do it by a movement of nothing.
ScrollPhase TouchpadScrolling::phaseAt(const AxisPositions& positions, bool stands) {
    const std::uint32_t now = positions.milliseconds;
    const bool rested = !gesture || now - gesture->lastMilliseconds > pauseMilliseconds;
    if (!rested) {
        gesture->lastMilliseconds = now;
        return stands ? ScrollPhase::Ended : ScrollPhase::Changed;
    }
    gesture = Gesture{positions.window, now};
    return ScrollPhase::Began;
}

// A scroll moves the content against the fingers, a natural one with them.
std::optional<double> TouchpadScrolling::way(const ScrollDevice& device, const ScrollAxis& axis,
                                             double position) {
    const auto [last, isNew] = lastPositions.try_emplace({device.id, axis.number}, position);
    const double moved = position - std::exchange(last->second, position);
    if (isNew)
        return std::nullopt;
    if (axis.increment == 0)
        return 0;
    const double notches = moved / axis.increment;
    const double points =
        notches * (device.unit == ScrollUnit::Points ? std::fabs(axis.increment) : pointsPerNotch);
    return device.direction == ScrollDirection::Natural ? -points : points;
}

} // namespace marrowfin::x11
