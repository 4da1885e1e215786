#include "chrome/Animation.h"

#include "base/Invariant.h"

namespace marrowfin::chrome {

namespace {
double mixed(double from, double to, double progress) {
    return from + (to - from) * progress;
}

QTransform mixed(const QTransform& from, const QTransform& to, double p) {
    return {mixed(from.m11(), to.m11(), p), mixed(from.m12(), to.m12(), p), mixed(from.m21(), to.m21(), p),
            mixed(from.m22(), to.m22(), p), mixed(from.dx(), to.dx(), p),   mixed(from.dy(), to.dy(), p)};
}

// Premultiplied, so that a colour that comes out of nothing doesn't pass through black.
QColor mixed(const QColor& from, const QColor& to, double p) {
    const float alpha = static_cast<float>(mixed(from.alphaF(), to.alphaF(), p));
    if (alpha <= 0)
        return Qt::transparent;
    const auto channel = [&](float a, float b) {
        return static_cast<float>(mixed(a * from.alphaF(), b * to.alphaF(), p)) / alpha;
    };
    return QColor::fromRgbF(channel(from.redF(), to.redF()), channel(from.greenF(), to.greenF()),
                            channel(from.blueF(), to.blueF()), alpha);
}
} // namespace

Value mix(const Value& from, const Value& to, double progress) {
    MARROWFIN_INVARIANT(from.index() == to.index());
    return std::visit(
        [&](const auto& start) -> Value {
            return mixed(start, std::get<std::decay_t<decltype(start)>>(to), progress);
        },
        from);
}

Animation Animation::basic(Property property, Value from, Value to, double duration, TimingFunction timing) {
    return {property, std::move(from), std::move(to), duration, timing};
}

Animation Animation::spring(Property property, Value from, Value to, Spring spring) {
    return {property, std::move(from), std::move(to), spring.settlingDuration(), spring};
}

std::optional<Value> Animation::valueAt(double now) const {
    const double elapsed = now - beginTime;
    if (elapsed < 0)
        return fillMode == FillMode::Backwards ? std::optional(from) : std::nullopt;
    if (isOver(now))
        return std::nullopt;
    if (const Spring* spring = std::get_if<Spring>(&curve))
        return mix(from, to, spring->progress(elapsed));
    return mix(from, to, std::get<TimingFunction>(curve).progress(elapsed / duration));
}

} // namespace marrowfin::chrome
