// One property of a layer on its way from one value to another. Times are media time (AnimationClock) in
// seconds. Values, copied freely. Main thread.
#pragma once

#include "chrome/Spring.h"
#include "chrome/Timing.h"

#include <QColor>
#include <QTransform>
#include <optional>
#include <variant>

namespace marrowfin::chrome {

enum class Property { Opacity, Transform, BackgroundColor, ShadowOpacity, ShadowRadius, StrokeEnd };
// Numbers, but for Transform and BackgroundColor.
using Value = std::variant<double, QTransform, QColor>;

// What is shown before the begin time.
enum class FillMode { Removed, Backwards };

struct Animation {
    Property property;
    Value from;
    Value to;
    double duration;
    std::variant<TimingFunction, Spring> curve;
    // 0: when it is added to a layer.
    double beginTime = 0;
    FillMode fillMode = FillMode::Removed;

    static Animation basic(Property property, Value from, Value to, double duration, TimingFunction timing);
    // Lasts until the spring has settled.
    static Animation spring(Property property, Value from, Value to, Spring spring);

    // Nothing when the animation has no say at this time.
    std::optional<Value> valueAt(double now) const;
    bool isOver(double now) const { return now >= beginTime + duration; }
};

Value mix(const Value& from, const Value& to, double progress);

} // namespace marrowfin::chrome
