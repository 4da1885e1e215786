#include "chrome/SurfaceAnimator.h"

#include "platform/SurfaceHost.h"

#include <utility>

namespace marrowfin::chrome {

namespace {
double mix(double from, double to, double progress) {
    return progress >= 1 ? to : from + (to - from) * progress;
}

DesktopRect mix(const DesktopRect& from, const DesktopRect& to, double progress) {
    return {QRectF(mix(from.rect.x(), to.rect.x(), progress), mix(from.rect.y(), to.rect.y(), progress),
                   mix(from.rect.width(), to.rect.width(), progress),
                   mix(from.rect.height(), to.rect.height(), progress))};
}
} // namespace

SurfaceAnimator::SurfaceAnimator(platform::Surface& animated)
    : surface(animated), current(animated.frame()) {}

SurfaceAnimator::~SurfaceAnimator() {
    AnimationClock::shared().cancel(*this);
}

void SurfaceAnimator::setFrame(const DesktopRect& frame) {
    move.reset();
    current = frame;
    surface.setFrame(frame);
}

void SurfaceAnimator::moveTo(const DesktopRect& frame, double duration, TimingFunction timing) {
    if (frame == target())
        return;
    AnimationClock& clock = AnimationClock::shared();
    move.emplace(Track<DesktopRect>{current, frame, clock.now(), duration, timing});
    clock.schedule(*this, clock.nextFrame());
}

void SurfaceAnimator::fadeTo(double opacity, double duration, TimingFunction timing,
                             std::function<void()> done) {
    AnimationClock& clock = AnimationClock::shared();
    fade.emplace(Track<double>{currentOpacity, opacity, clock.now(), duration, timing});
    whenFaded = std::move(done);
    clock.schedule(*this, clock.nextFrame());
}

std::optional<double> SurfaceAnimator::tick(double now) {
    stepMove(now);
    const bool faded = stepFade(now);
    const bool moving = move || fade;
    const double next = AnimationClock::shared().nextFrame();
    if (faded && whenFaded)
        std::exchange(whenFaded, nullptr)();
    return moving ? std::optional(next) : std::nullopt;
}

void SurfaceAnimator::stepMove(double now) {
    if (!move)
        return;
    current = mix(move->from, move->to, move->progress(now));
    if (now >= move->start + move->duration)
        move.reset();
    surface.setFrame(current);
}

bool SurfaceAnimator::stepFade(double now) {
    if (!fade)
        return false;
    currentOpacity = mix(fade->from, fade->to, fade->progress(now));
    const bool ended = now >= fade->start + fade->duration;
    if (ended)
        fade.reset();
    surface.setOpacity(currentOpacity);
    return ended;
}

} // namespace marrowfin::chrome
