// Turns the wheel over other programs' windows. Points, ScreenPoint. Main thread.
#pragma once

#include "base/Coordinates.h"
#include "base/Outcome.h"

namespace marrowfin::platform {

class ScrollPoster {
public:
    virtual ~ScrollPoster() = default;
    // Scrolls what lies under the point by this many lines, three of which are one notch of a wheel; less
    // than 0 is towards the end. Returns at once and leaves the pointer where it was; settles when the window
    // system has taken it, perhaps after the user was asked. What then moves, and when, is the other
    // program's.
    virtual Outcome<void> scroll(const ScreenPoint& at, int lines) = 0;
};

} // namespace marrowfin::platform
