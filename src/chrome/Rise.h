// Shows and hides a small view: it comes up on a spring and fades in, and sinks and fades out. A reversal
// starts from where the view stands. Alpha 0 paints nothing; hiding the widget itself is its owner's choice.
// Main thread.
#pragma once

#include "chrome/Animation.h"
#include "chrome/AnimationClock.h"
#include "chrome/PoseEffect.h"

#include <functional>

namespace marrowfin::chrome {

enum class Motion {
    Full,
    Reduced, // fades only
};

// The user's wish, from the desktop's appearance.
Motion currentMotion();

class Rise : private AnimationClock::Client {
public:
    // Starts hidden. Distance: how far below its place the view comes from. Resting: where the hidden view is
    // once the movement is over (0: at its place, -distance: below it).
    Rise(QWidget& view, double distance, double restingOffset);
    ~Rise() override;
    Rise(const Rise&) = delete;
    Rise& operator=(const Rise&) = delete;

    void setShown(bool shown, Motion motion);
    bool isShown() const { return shown; }
    // As on the screen: points above the view's place, and alpha.
    double offset() const;
    double alpha() const;

private:
    std::optional<double> tick(double now) override;
    void apply();

    PoseEffect* effect; // the view's
    double distance;
    double restingOffset;
    bool shown = false;
    std::optional<Animation> movement;
    Animation fade;
};

} // namespace marrowfin::chrome
