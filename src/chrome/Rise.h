// Shows and hides a small view: it comes up on a spring and fades in, and sinks and fades out. A reversal
// starts from where the view stands. Alpha 0 paints nothing; hiding the widget itself is its owner's choice.
// Main thread.
#pragma once

#include "chrome/Animation.h"
#include "chrome/AnimationClock.h"
#include "chrome/PoseEffect.h"

#include <QPointer>
#include <vector>

namespace marrowfin::chrome {

enum class Motion {
    Full,
    Reduced, // fades only
};

// The user's wish, from the desktop's appearance.
Motion currentMotion();

class Rise : private AnimationClock::Client {
public:
    enum class Start { Hidden, Shown };
    // Distance: how far below its place the view comes from. Resting: where the hidden view is once the
    // movement is over (0: at its place, -distance: below it).
    Rise(QWidget& view, double distance, double restingOffset, Start start = Start::Hidden);
    ~Rise() override;
    Rise(const Rise&) = delete;
    Rise& operator=(const Rise&) = delete;

    // Another view that moves and fades with the first; it may go earlier.
    void takeAlong(QWidget& companion);

    void setShown(bool shown, Motion motion);
    // At once, wherever it stands.
    void hideNow();
    bool isShown() const { return shown; }
    // As on the screen: points above the view's place, and alpha.
    double offset() const;
    double alpha() const;

private:
    std::optional<double> tick(double now) override;
    void apply();

    std::vector<QPointer<PoseEffect>> effects; // the views'
    double distance;
    double restingOffset;
    bool shown = false;
    std::optional<Animation> movement;
    Animation fade;
};

} // namespace marrowfin::chrome
