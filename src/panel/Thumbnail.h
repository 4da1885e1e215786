// The capture as its card shows it: fitted sharp, and blurred behind, each rendered once and small.
// Rectangles are in points of the area they are fitted into. Any thread.
#pragma once

#include "imaging/Image.h"

#include <QColor>
#include <QRectF>
#include <optional>

namespace marrowfin::panel {

// The image, centred on the bounds, shrunk to fit, never enlarged; on whole points. The bounds for an image
// without a size.
QRectF fitRect(const QSizeF& imageSize, const QRectF& bounds);
// The image, centred on the bounds, filling them; on whole points. The bounds for an image without a size.
QRectF fillRect(const QSizeF& imageSize, const QRectF& bounds);

struct Thumbnail {
    QRectF fit;
    // Twice the fitted size in pixels, whatever the screen; null for an image without pixels.
    QImage sharp;
    // What is behind it in the bounds; null likewise.
    QImage backdrop;
    // A calmed average colour of the capture.
    std::optional<QColor> tint;
};

Thumbnail renderThumbnail(const imaging::Image& image, const QRectF& bounds);

// The average of the pixels, its saturation at most 0.5 and its brightness from 0.35 to 0.75.
std::optional<QColor> tintOf(const QImage& pixels);
// A Gaussian whose edge pixels go on beyond the edges.
QImage blurredClamped(const QImage& pixels, double sigma);

} // namespace marrowfin::panel
