// The numbers that the editor's chrome reads out. Image points in, pixels out. Pure.
#pragma once

#include "imaging/Image.h"

#include <QRectF>
#include <QString>

namespace marrowfin::editor {

// "1920 × 1080 px · 3"; the count only above 0. Empty for an image without pixels.
QString statusText(const imaging::Image& image, qsizetype annotations);
// "640 × 400 px" for a rectangle in image points; empty for an image without pixels or size.
QString cropSizeText(const imaging::Image& image, const QRectF& crop);

} // namespace marrowfin::editor
