// Two fingers that scroll on a touchpad, as gestures: where one begins, how far the fingers went, where it
// ends. A mouse wheel is no gesture and is never told. Points in the direction of the fingers, x to the
// right, y down. Main thread.
#pragma once

#include <QPointF>
#include <functional>
#include <memory>

class QWidget;

namespace marrowfin::platform {

enum class ScrollPhase { Began, Changed, Ended };

struct ScrollStep {
    ScrollPhase phase = ScrollPhase::Began;
    // Of the fingers since the step before.
    QPointF delta;

    friend bool operator==(const ScrollStep&, const ScrollStep&) = default;
};

// Listens as long as it lives.
class ScrollWatch {
public:
    virtual ~ScrollWatch() = default;
};

class ScrollGestures {
public:
    using Handler = std::function<void(const ScrollStep&)>;

    virtual ~ScrollGestures() = default;
    // The gestures over this widget's window. The handler may destroy the widget and the watch.
    virtual std::unique_ptr<ScrollWatch> watch(QWidget& widget, Handler handler) = 0;
};

} // namespace marrowfin::platform
