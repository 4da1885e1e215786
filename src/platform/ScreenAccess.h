// Whether this desktop lets us see the screen. X11 always does; a portal may ask. Main thread.
#pragma once

#include "base/Outcome.h"

namespace marrowfin::platform {

class ScreenAccess {
public:
    virtual ~ScreenAccess() = default;
    // Whether the screen may be seen, as far as the desktop knows without asking the user.
    virtual Outcome<bool> preflight() = 0;
    // Puts up the desktop's prompt when the permission was never decided; settles with the user's answer.
    virtual Outcome<bool> request() = 0;
};

} // namespace marrowfin::platform
