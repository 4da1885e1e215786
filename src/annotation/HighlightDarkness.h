// Which blend a highlight needs: whether its backdrop is a dark page. Main thread.
#pragma once

#include "imaging/Image.h"

#include <QRectF>
#include <optional>

namespace marrowfin::annotation {

// Looks at the base image only, inside the rectangle (image points). Nothing where there are no pixels to
// judge.
std::optional<bool> isDarkBackdrop(const imaging::Image& image, const QRectF& rect);

} // namespace marrowfin::annotation
