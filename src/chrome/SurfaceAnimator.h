// Moves and fades a whole surface, as a window's animator does. Each change starts from where the surface is
// now. Points, DesktopRect. The surface must outlive it. Main thread.
#pragma once

#include "base/Coordinates.h"
#include "chrome/AnimationClock.h"
#include "chrome/Timing.h"

#include <functional>

namespace marrowfin::platform {
class Surface;
}

namespace marrowfin::chrome {

class SurfaceAnimator : private AnimationClock::Client {
public:
    explicit SurfaceAnimator(platform::Surface& surface);
    ~SurfaceAnimator() override;
    SurfaceAnimator(const SurfaceAnimator&) = delete;
    SurfaceAnimator& operator=(const SurfaceAnimator&) = delete;

    // At once; ends a move.
    void setFrame(const DesktopRect& frame);
    void moveTo(const DesktopRect& frame, double duration, TimingFunction timing);
    // The block runs once the surface has this opacity; not when another fade takes over.
    void fadeTo(double opacity, double duration, TimingFunction timing, std::function<void()> done = {});

    // Where the surface is, with the fractions that a window system may round away.
    DesktopRect frame() const { return current; }
    // Where it will be.
    DesktopRect target() const { return move ? move->to : current; }
    double opacity() const { return currentOpacity; }

private:
    template <class T>
    struct Track {
        T from;
        T to;
        double start;
        double duration;
        TimingFunction timing;
        double progress(double now) const { return timing.progress((now - start) / duration); }
    };
    std::optional<double> tick(double now) override;
    void stepMove(double now);
    // True when a fade has just ended.
    bool stepFade(double now);

    platform::Surface& surface;
    DesktopRect current;
    double currentOpacity = 1;
    std::optional<Track<DesktopRect>> move;
    std::optional<Track<double>> fade;
    std::function<void()> whenFaded;
};

} // namespace marrowfin::chrome
