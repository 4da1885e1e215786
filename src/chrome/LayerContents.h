// A layer's picture. Drawn small it is taken from a copy of half, a quarter... of its size, so that thin
// lines don't sparkle while the layer shrinks. Main thread.
#pragma once

#include <QImage>
#include <QRectF>
#include <vector>

class QPainter;

namespace marrowfin::chrome {

class LayerContents {
public:
    void set(const QImage& image);
    bool isNull() const { return levels.empty(); }
    QImage image() const { return levels.empty() ? QImage() : levels.front(); }
    // Fills the rectangle, upright in a space whose y points up. Outside of the clip, in pixels of the
    // device, nothing is wanted.
    void paint(QPainter& painter, const QRectF& rect, const QRectF& deviceClip);

private:
    // The first is the image, each further one half of the one before; made when first needed.
    std::vector<QImage> levels;
};

} // namespace marrowfin::chrome
