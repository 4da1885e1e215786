// Painting tall things with this thread alone. The toolkit hands fills of many spans to threads of its own
// and waits for them; at the size of a card waking them takes longer than painting, and they may be busy with
// something else. Rectangles are pixels of the painter's device. Any thread.
#pragma once

#include <QImage>
#include <QPainterPath>
#include <QPen>
#include <QRect>
#include <functional>
#include <vector>

class QPainter;

namespace marrowfin::chrome {

// Of a filled rectangle: cut off at whole pixels, a row is one span; blended into the pixels beside, three.
enum class Edges { Whole, Blended };

// What is seen of a rectangle in the painter's space.
QRect onDevice(const QPainter& painter, const QRectF& rect, const QRectF& deviceClip);
// The largest whole pixels within it.
QRect insideOnDevice(const QPainter& painter, const QRectF& rect);

// Bands that cover the rectangle without the hole, each low enough to be filled by this thread.
std::vector<QRect> strips(const QRect& device, const QRect& hole, Edges edges);

// Draws once for each strip, clipped to it: a scaled picture or a gradient.
void paintInStrips(QPainter& painter, const QRect& device, const QRect& hole, Edges edges,
                   const std::function<void()>& draw);

// A picture of this part of the device, painted with the same axes.
QImage paintedAside(const QPainter& like, const QRect& device, const std::function<void(QPainter&)>& draw);
// Pixel for pixel, whatever the painter's axes.
void drawOnDevice(QPainter& painter, const QPoint& at, const QImage& image);

// Of one colour, with a solid pen. The device's part is all of it that is wanted.
void fillPath(QPainter& painter, const QPainterPath& path, const QColor& color, const QRect& device);
void strokePath(QPainter& painter, const QPainterPath& path, const QPen& pen, const QRect& device);

// Multiplies the picture, which has its place on the device, by the alpha of what is drawn there.
void keepOnly(QImage& image, const QPainter& like, const QRect& device,
              const std::function<void(QPainter&)>& draw);

} // namespace marrowfin::chrome
