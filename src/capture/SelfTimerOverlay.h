// Dims the main screen and counts down, while clicks go through to the windows beneath. Where nothing blends
// windows the digits alone are there, so that the user goes on seeing a living screen. One overlay serves one
// countdown. Main thread.
#pragma once

#include "base/Flow.h"
#include "capture/OverlayWindow.h"
#include "chrome/Delay.h"

#include <memory>

namespace marrowfin::capture {

class SelfTimerOverlay {
public:
    SelfTimerOverlay();
    ~SelfTimerOverlay();

    // Returns when the countdown is over; at once without a main screen.
    Flow<> run(int seconds);

private:
    Outcome<void> secondPassed();

    std::unique_ptr<OverlayWindow> window;
    chrome::Delay pause; // between two digits
};

} // namespace marrowfin::capture
