// Turns the scroll axes of input devices into gestures. An axis stands at a number that only grows and
// shrinks; what a step is worth depends on the driver. Points in the direction of the fingers, milliseconds
// of the server. Any thread.
#pragma once

#include "platform/ScrollGestures.h"

#include <Qt>
#include <cstdint>
#include <map>
#include <optional>
#include <vector>

namespace marrowfin::x11 {

enum class ScrollSource { Touchpad, Wheel };
enum class ScrollDirection { Traditional, Natural };
// What the numbers of an axis are.
enum class ScrollUnit { Points, DeviceUnits };

struct ScrollAxis {
    std::uint16_t number = 0;
    Qt::Orientation orientation = Qt::Vertical;
    // One notch of a wheel to the right or down; negative where the axis runs the other way.
    double increment = 0;

    friend bool operator==(const ScrollAxis&, const ScrollAxis&) = default;
};

struct ScrollDevice {
    std::uint16_t id = 0;
    ScrollSource source = ScrollSource::Wheel;
    ScrollDirection direction = ScrollDirection::Traditional;
    ScrollUnit unit = ScrollUnit::DeviceUnits;
    std::vector<ScrollAxis> axes;

    friend bool operator==(const ScrollDevice&, const ScrollDevice&) = default;
};

// Where some of a device's axes stand after a movement over a window.
struct AxisPositions {
    std::uint32_t window = 0;
    std::uint16_t device = 0;
    std::uint32_t milliseconds = 0;
    std::map<std::uint16_t, double> values;

    friend bool operator==(const AxisPositions&, const AxisPositions&) = default;
};

class TouchpadScrolling {
public:
    void setDevices(std::vector<ScrollDevice> devices);
    // The pointer has come from elsewhere: where the axes went meanwhile is no movement over us.
    void pointerCame();
    // Nothing for a movement without a scroll axis, for a wheel, and for the rest of a gesture that began
    // over another window: windows that move away under resting fingers don't pass it on.
    std::optional<platform::ScrollStep> read(const AxisPositions& positions);

private:
    // The fingers' way along the axis since it was last seen; nothing when it never was.
    std::optional<double> way(const ScrollDevice& device, const ScrollAxis& axis, double position);
    platform::ScrollPhase phaseAt(const AxisPositions& positions, bool stands);

    std::vector<ScrollDevice> known;
    std::map<std::pair<std::uint16_t, std::uint16_t>, double> lastPositions;
    struct Gesture {
        std::uint32_t window;
        std::uint32_t lastMilliseconds;
    };
    std::optional<Gesture> gesture;
};

} // namespace marrowfin::x11
