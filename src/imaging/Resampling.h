// Pictures at another size. Results have 32 bits a pixel, opaque or premultiplied. Pixels; any thread.
#pragma once

#include <QImage>
#include <QSize>
#include <atomic>

namespace marrowfin::imaging {

// A picture of no more pixels than this is resampled in a few frames' time. Of a larger one the main thread
// has the copy made elsewhere (ScaledCopy).
constexpr qint64 mostPixelsAtOnce = qint64{1} << 24;
bool isLongToResample(const QImage& pixels);

// Smoothly, by the toolkit.
QImage resampled(const QImage& pixels, const QSize& size);
// A picture made smaller in both directions: each pixel is the exact average of the area that it stands for.
// It needs no memory but the result's, whatever the picture's format. Null when it was told to stop.
QImage areaAveraged(const QImage& pixels, const QSize& size, const std::atomic<bool>& stop);
// One pixel picked for each: rough, and of no cost however large the picture is.
QImage picked(const QImage& pixels, const QSize& size);

} // namespace marrowfin::imaging
