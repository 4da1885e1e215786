// A painter seen from its pixels: where it can paint at all, and painting without its transform. Painting of
// records is refused far off, where the rasteriser's numbers end.
#pragma once

#include <QRectF>
#include <QTransform>

class QPainter;

namespace marrowfin::annotation {

// The part of the painter's current space that its device and its clip let through; empty when nothing.
QRectF paintableRect(const QPainter& painter);
// The same in device pixels.
QRectF paintableDeviceRect(const QPainter& painter);

// Makes one unit of the painter one pixel of its device, origin at the device's top left. The clip stays.
void enterDeviceSpace(QPainter& painter);

// Numbers all, and none beyond a million.
bool isPaintable(const QRectF& rect);

} // namespace marrowfin::annotation
