// X11 lets every client see the screen: there is nothing to ask for. Main thread.
#pragma once

#include "platform/ScreenAccess.h"

namespace marrowfin::x11 {

class X11ScreenAccess final : public platform::ScreenAccess {
public:
    Outcome<bool> preflight() override { return settled<bool>(true); }
    Outcome<bool> request() override { return settled<bool>(true); }
};

} // namespace marrowfin::x11
