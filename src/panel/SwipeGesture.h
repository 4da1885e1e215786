// Two fingers that flick a card away. Deltas are points in the direction of the fingers. Main thread.
#pragma once

#include <QPointF>
#include <optional>

class QWheelEvent;

namespace marrowfin {

class SwipeGesture {
public:
    void begin();
    // The sign of the way the card goes, once per gesture: when the motion is far enough and clearly
    // horizontal.
    std::optional<int> move(const QPointF& delta);

private:
    QPointF total;
    bool consumed = false;
};

enum class ScrollPhase { None, Began, Changed };

// Tells where a gesture begins. Window systems that say so are believed; a touchpad without phases begins a
// gesture after a pause; a mouse wheel has none at all.
class ScrollPhases {
public:
    struct Step {
        ScrollPhase phase = ScrollPhase::None;
        QPointF delta;
    };
    Step read(const QWheelEvent& event);

private:
    std::optional<quint64> lastMilliseconds;
};

} // namespace marrowfin
