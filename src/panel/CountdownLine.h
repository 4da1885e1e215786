// The thin line along a card's lower edge that drains while its time runs out. Points, the card's space (y
// up). Main thread.
#pragma once

#include "chrome/ShapeLayer.h"

namespace marrowfin::panel {

class CountdownLine {
public:
    // In front of what the parent has so far.
    CountdownLine(chrome::Layer& parent, const QRectF& card);

    void setColor(const QColor& color);
    // From its full length; it comes into sight at once, or when the arrival of a new card has settled.
    void start(double seconds, double arrivalTime);
    // Stops where it stands and fades out.
    void freeze();

    const chrome::Layer& layer() const { return line; }

private:
    chrome::ShapeLayer& line;
};

} // namespace marrowfin::panel
