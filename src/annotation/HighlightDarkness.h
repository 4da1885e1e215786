// Which blend a highlight needs: whether its backdrop is a dark page. Main thread.
#pragma once

#include "base/Image.h"

#include <QRectF>
#include <optional>

namespace marrowfin {

// Looks at the base image only, inside the rectangle (image points). Nothing where there are no pixels to
// judge.
std::optional<bool> isDarkBackdrop(const Image& image, const QRectF& rect);

} // namespace marrowfin
