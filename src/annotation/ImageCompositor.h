// From a document to finished pixels, at the base image's own density and in its colour space; the screen's
// scale plays no part. A null image, or nothing, reports failure. No state; main thread.
#pragma once

#include "base/Image.h"

#include <QRectF>

namespace marrowfin::ImageCompositor {

// The part of the image inside the rectangle (image points), with its edges on the nearest whole pixels.
// Pixels are copied, never scaled, and the density stays. Null below one pixel.
Image cropImage(const Image& image, const QRectF& rect);

} // namespace marrowfin::ImageCompositor
