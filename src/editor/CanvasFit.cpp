#include "editor/CanvasFit.h"

#include "base/Geometry.h"

#include <algorithm>

namespace marrowfin::editor {

namespace {
constexpr double smallestAvailable = 50.0;

QRectF centred(const QSizeF& size, const QRectF& within) {
    const QPointF middle = center(within);
    return {middle.x() - size.width() / 2, middle.y() - size.height() / 2, size.width(), size.height()};
}
bool isPositive(const QSizeF& size) {
    return size.width() > 0 && size.height() > 0;
}
} // namespace

QRectF availableRect(const QSizeF& view, const QMarginsF& insets) {
    const QRectF free(insets.left(), insets.top(), view.width() - insets.left() - insets.right(),
                      view.height() - insets.top() - insets.bottom());
    if (free.width() >= smallestAvailable && free.height() >= smallestAvailable)
        return free;
    return centred({smallestAvailable, smallestAvailable}, {QPointF(0, 0), view});
}

double displayScale(const QSizeF& available, const QSizeF& image) {
    if (!isPositive(available) || !isPositive(image))
        return 1.0;
    return std::min({available.width() / image.width(), available.height() / image.height(), 1.0});
}

CanvasFit CanvasFit::of(const QSizeF& view, const QMarginsF& insets, const QSizeF& image) {
    if (!isPositive(image))
        return {QRectF(QPointF(0, 0), view), 1.0};
    const QRectF available = availableRect(view, insets);
    const double scale = displayScale(available.size(), image);
    return {centred(image * scale, available), scale};
}

QTransform CanvasFit::paintTransform(double density) const {
    const double x = rounded(imageRect.x() * density) / density;
    const double y = rounded(imageRect.y() * density) / density;
    return {scale, 0, 0, scale, x, y};
}

} // namespace marrowfin::editor
