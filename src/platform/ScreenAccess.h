// Whether this desktop lets us see the screen. X11 always does; a portal may ask. Main thread.
#pragma once

#include "base/Outcome.h"

namespace marrowfin::platform {

class ScreenAccess {
public:
    virtual ~ScreenAccess() = default;
    // What is known now, without asking anybody.
    virtual bool preflight() = 0;
    // Puts up the desktop's prompt when the permission was never decided.
    virtual Outcome<bool> request() = 0;
};

} // namespace marrowfin::platform
