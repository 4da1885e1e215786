// From a rectangle on the desktop to what a stream is asked for. Pure arithmetic, any thread.
#pragma once

#include "base/Coordinates.h"
#include "platform/ScreenSource.h"

#include <optional>

namespace marrowfin::capture {

// The display whose frame wholly contains the rectangle, else the first; nothing when the list is empty.
std::optional<platform::Display> displayFor(const ScreenRect& rect,
                                            const std::vector<platform::Display>& displays);

// Native pixels per point of the display's mode; 1.0 when the mode isn't known.
double displayScale(const platform::Display& display);

// Pixels per point for a window: the scale of the display that shows most of it. Without one, the main
// screen's backing scale factor; without a main screen, 2.0.
double windowScale(const platform::Window& window, const std::vector<platform::Display>& displays,
                   std::optional<double> mainBackingScale);

// No clipping: a rectangle that straddles two displays is passed on as it is.
platform::StreamConfiguration rectConfiguration(const ScreenRect& rect, const platform::Display& display);
platform::StreamConfiguration windowConfiguration(const platform::Window& window, double scale);

} // namespace marrowfin::capture
