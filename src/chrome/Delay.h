// A block that runs once, some seconds from now, unless it is stopped before. On the animation clock, so that
// a test that steps the clock steps this too. Main thread.
#pragma once

#include "chrome/AnimationClock.h"

#include <functional>

namespace marrowfin::chrome {

class Delay : private AnimationClock::Client {
public:
    Delay() = default;
    ~Delay() override { stop(); }
    Delay(const Delay&) = delete;
    Delay& operator=(const Delay&) = delete;

    // Replaces a block that is waiting. The block may destroy this object.
    void start(double seconds, std::function<void()> block);
    void stop();
    bool isRunning() const { return block != nullptr; }

private:
    std::optional<double> tick(double now) override;

    std::function<void()> block;
    double due = 0;
};

} // namespace marrowfin::chrome
