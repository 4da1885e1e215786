// A layer that fills and strokes a path in its bounds. The stroke may end part of the way (StrokeEnd).
// Points, y up. Main thread.
#pragma once

#include "chrome/Layer.h"

#include <QPen>

namespace marrowfin::chrome {

class ShapeLayer : public Layer {
public:
    void setPath(const QPainterPath& path);
    const QPainterPath& path() const { return outline; }
    // No colour, no fill. The path's own fill rule decides what is inside.
    void setFillColor(std::optional<QColor> color);
    void setStrokeColor(std::optional<QColor> color);
    std::optional<QColor> strokeColor() const { return stroke; }
    void setLine(double width, Qt::PenCapStyle cap = Qt::FlatCap);

protected:
    void paintOwn(QPainter& painter, const Moment& moment) const override;
    QRectF ownExtent(double now) const override;
    double nextChange(const Animation& animation, double now, double density) const override;
    std::optional<QRectF> damage(const Animation& animation, double before, double now) const override;

private:
    QPainterPath outline;
    double length = 0;
    std::optional<QColor> fill = Qt::black;
    std::optional<QColor> stroke;
    double lineWidth = 1;
    Qt::PenCapStyle lineCap = Qt::FlatCap;
};

// Gives the layer a mask through which only what lies outside the outline is seen, as far around the layer as
// the margin.
void maskInside(Layer& layer, const QPainterPath& outline, double margin);

} // namespace marrowfin::chrome
