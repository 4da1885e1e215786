// The numbers that the editor's chrome reads out. Image points in, pixels out. Pure.
#pragma once

#include "base/Image.h"

#include <QRectF>
#include <QString>

namespace marrowfin {

// "1920 × 1080 px · 3"; the count only above 0. Empty for an image without pixels.
QString statusText(const Image& image, qsizetype annotations);
// "640 × 400 px" for a rectangle in image points; empty for an image without pixels or size.
QString cropSizeText(const Image& image, const QRectF& crop);

} // namespace marrowfin
