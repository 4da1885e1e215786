// From a document to finished pixels, at the base image's own density and in its colour space; the screen's
// scale plays no part. A null image, or nothing, reports failure. No state; main thread.
#pragma once

#include "imaging/Image.h"
#include "imaging/ImageFormat.h"

#include <QRectF>
#include <QTransform>

namespace marrowfin::annotation {
class AnnotationDocument;
}

namespace marrowfin::annotation::ImageCompositor {

// The base image with its ink, pixel for pixel: without ink they are the base's very pixels. Selection,
// pending crop and unfinished ink are the canvas's alone.
imaging::Image composite(const AnnotationDocument& document);

// The sigma of a blur box, in image points.
constexpr double blurSigma = 12.0;
// Blurs what the pixels hold inside the box, by blurSigma of its units, and touches nothing outside of it;
// pixels on the box's edge blend. The transform leads from the box's space to pixels. On failure the pixels
// stay as they were. The format is RGB32 or ARGB32_Premultiplied.
void applyBlur(const QRectF& box, QImage& pixels, const QTransform& toPixels);

// The whole picture blurred, its edges without fading; sigma in pixels. Null on failure.
QImage blurredImage(const QImage& pixels, double sigma);

// The part of the image inside the rectangle (image points), with its edges on the nearest whole pixels.
// Pixels are copied, never scaled, and the density stays. Null below one pixel.
imaging::Image cropImage(const imaging::Image& image, const QRectF& rect);

// The bytes of a file; quality from 0.0 to 1.0 counts for JPEG alone.
std::optional<QByteArray> encodeImage(const imaging::Image& image, imaging::ImageFormat format,
                                      double quality);

} // namespace marrowfin::annotation::ImageCompositor
