#include "annotation/ImageCompositor.h"

#include "base/Geometry.h"

#include <algorithm>

namespace marrowfin::ImageCompositor {

namespace {

bool hasArea(const QSizeF& size) {
    return size.width() > 0 && size.height() > 0;
}

} // namespace

Image cropImage(const Image& image, const QRectF& rect) {
    const std::optional<QSize> pixelSize = realPixelSize(image);
    if (!pixelSize || !hasArea(image.size()) || !isFinite(rect))
        return {};
    const double sx = pixelSize->width() / image.size().width();
    const double sy = pixelSize->height() / image.size().height();
    // Each edge by itself: neighbouring crops share theirs and leave no gap.
    const auto edge = [](double pixels, int limit) { return std::clamp(roundedToInt(pixels), 0, limit); };
    const int left = edge(sx * minX(rect), pixelSize->width());
    const int right = edge(sx * maxX(rect), pixelSize->width());
    const int top = edge(sy * minY(rect), pixelSize->height());
    const int bottom = edge(sy * maxY(rect), pixelSize->height());
    const QRect cut(left, top, right - left, bottom - top);
    if (cut.isEmpty())
        return {};
    QImage pixels = image.pixels().copy(cut);
    return Image::withSize(std::move(pixels), {cut.width() / sx, cut.height() / sy});
}

} // namespace marrowfin::ImageCompositor
