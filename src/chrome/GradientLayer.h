// A layer filled with a linear gradient between two points of its bounds, in parts of its size, y up. Main
// thread.
#pragma once

#include "chrome/Layer.h"

namespace marrowfin::chrome {

class GradientLayer : public Layer {
public:
    void setColors(const QColor& start, const QColor& end);
    QColor startColor() const { return first; }
    void setPoints(const QPointF& start, const QPointF& end);

protected:
    void paintOwn(QPainter& painter, const Moment& moment) const override;

private:
    QColor first;
    QColor last;
    QPointF from{0.5, 0};
    QPointF to{0.5, 1};
};

} // namespace marrowfin::chrome
