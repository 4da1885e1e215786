// The faint shadow that lets ink separate from a backdrop of its own colour: one for each record, of all its
// parts together, one image point down and two points of blur, at any density and through any flip of the
// painter. Its cost follows the ink, not the image.
#pragma once

#include "annotation/InkCoverage.h"
#include "annotation/ShadowBlur.h"

#include <QPainter>

namespace marrowfin::annotation {

// A layer of one record: transparent on its coverage, undefined elsewhere.
class InkLayer {
public:
    InkLayer(const QPainter& target, const InkOutline& outline);

    bool isEmpty() const { return coverage.bounds().isEmpty(); }
    QImage& pixels() { return layer; }
    // From the painter's space to the layer's pixels.
    QTransform transform() const;

    void addShadow();
    void putOnto(QPainter& target) const;

private:
    QTransform toDevice;
    ShadowBlur shadow;
    InkCoverage coverage;
    QImage layer;
};

// Runs paint(QPainter&) on a layer of its own with the painter's transform, and puts the layer with its
// shadow onto the painter. All that is painted must lie on the outline. Nothing happens where numbers end
// (isPaintable).
template <class Paint>
void paintWithInkShadow(QPainter& painter, const InkOutline& outline, Paint paint) {
    InkLayer layer(painter, outline);
    if (layer.isEmpty())
        return;
    {
        QPainter onLayer(&layer.pixels());
        onLayer.setRenderHint(QPainter::Antialiasing);
        onLayer.setTransform(layer.transform());
        paint(onLayer);
    }
    layer.addShadow();
    layer.putOnto(painter);
}

} // namespace marrowfin::annotation
