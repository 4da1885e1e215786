#include "chrome/Rise.h"

#include "platform/Desktop.h"
#include "platform/Services.h"

#include <QWidget>

namespace marrowfin::chrome {

namespace {
constexpr Spring revealSpring{1, 420, 26};
constexpr double hideSeconds = 0.14;
constexpr double revealFadeSeconds = 0.16;
constexpr double hideFadeSeconds = 0.14;
} // namespace

Motion currentMotion() {
    return platform::services().appearance.reduceMotion() ? Motion::Reduced : Motion::Full;
}

namespace {
Animation fadeAtOnce(double alpha) {
    return Animation::basic(Property::Opacity, alpha, alpha, 0, TimingFunction::linear());
}
} // namespace

Rise::Rise(QWidget& view, double from, double resting, Start start)
    : distance(from), restingOffset(resting), shown(start == Start::Shown),
      fade(fadeAtOnce(start == Start::Shown ? 1 : 0)) {
    takeAlong(view);
}

void Rise::takeAlong(QWidget& view) {
    effects.emplace_back(new PoseEffect(view, distance + 2));
    apply();
}

void Rise::hideNow() {
    shown = false;
    movement.reset();
    fade = fadeAtOnce(0);
    AnimationClock::shared().cancel(*this);
    apply();
}

Rise::~Rise() {
    AnimationClock::shared().cancel(*this);
}

void Rise::setShown(bool show, Motion motion) {
    AnimationClock& clock = AnimationClock::shared();
    const double now = clock.now();
    const bool moving = movement && !movement->isOver(now);
    const double start = moving ? offset() : (show ? -distance : 0.0);
    const double startAlpha = alpha();
    shown = show;
    movement.reset();
    if (motion == Motion::Full) {
        movement = show ? Animation::spring(Property::Transform, start, 0.0, revealSpring)
                        : Animation::basic(Property::Transform, start, -distance, hideSeconds,
                                           TimingFunction::easeIn());
        movement->beginTime = now;
    }
    fade = Animation::basic(Property::Opacity, startAlpha, show ? 1.0 : 0.0,
                            show ? revealFadeSeconds : hideFadeSeconds, TimingFunction::easeInEaseOut());
    fade.beginTime = now;
    apply();
    clock.schedule(*this, clock.nextFrame());
}

double Rise::offset() const {
    if (movement)
        if (const auto value = movement->valueAt(AnimationClock::shared().now()))
            return std::get<double>(*value);
    return shown ? 0 : restingOffset;
}

double Rise::alpha() const {
    return std::get<double>(fade.valueAt(AnimationClock::shared().now()).value_or(fade.to));
}

void Rise::apply() {
    for (const QPointer<PoseEffect>& effect : effects)
        if (effect)
            effect->setPose({QPointF(0, offset()), alpha()});
}

std::optional<double> Rise::tick(double now) {
    apply();
    const bool still = fade.isOver(now) && (!movement || movement->isOver(now));
    return still ? std::nullopt : std::optional(AnimationClock::shared().nextFrame());
}

} // namespace marrowfin::chrome
