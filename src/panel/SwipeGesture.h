// Two fingers that flick a card away. Deltas are points in the direction of the fingers. Main thread.
#pragma once

#include <QPointF>
#include <optional>

namespace marrowfin::panel {

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

} // namespace marrowfin::panel
