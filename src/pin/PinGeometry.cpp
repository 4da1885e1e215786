#include "pin/PinGeometry.h"

#include <algorithm>
#include <cmath>

namespace marrowfin::pin {

QSizeF pinSize(const QSizeF& imageSize) {
    const double width = imageSize.width();
    const double height = imageSize.height();
    if (!(width > 0) || !(height > 0))
        return {};
    const double scale = std::min({600 / width, 500 / height, 1.0});
    // A line of pixels still needs a window.
    return {std::max(1.0, rounded(width * scale)), std::max(1.0, rounded(height * scale))};
}

Qt::Edges pinEdgesAt(const QSizeF& size, const QPointF& point) {
    // On a tiny pin the middle third stays free for moving it.
    const double across = std::min(pinEdgeReach, size.width() / 3);
    const double along = std::min(pinEdgeReach, size.height() / 3);
    Qt::Edges edges;
    edges.setFlag(Qt::LeftEdge, point.x() < across);
    edges.setFlag(Qt::RightEdge, point.x() >= size.width() - across);
    edges.setFlag(Qt::BottomEdge, point.y() < along);
    edges.setFlag(Qt::TopEdge, point.y() >= size.height() - along);
    return edges;
}

DesktopRect resizedPin(const DesktopRect& frame, Qt::Edges held, const QPointF& delta,
                       const QSizeF& imageSize) {
    const QRectF& r = frame.rect;
    const bool horizontal = held & (Qt::LeftEdge | Qt::RightEdge);
    const bool vertical = held & (Qt::TopEdge | Qt::BottomEdge);
    if ((!horizontal && !vertical) || imageSize.isEmpty())
        return frame;
    const double aspect = imageSize.width() / imageSize.height();
    const double width = r.width() + (held & Qt::LeftEdge ? -delta.x() : horizontal ? delta.x() : 0);
    const double height = r.height() + (held & Qt::BottomEdge ? -delta.y() : vertical ? delta.y() : 0);
    double scaled = horizontal ? width : height * aspect;
    if (horizontal && vertical) // the farther way of the pointer decides
        scaled =
            std::fabs(width - r.width()) >= std::fabs(height - r.height()) * aspect ? width : height * aspect;
    // One that comes up thinner than that isn't made larger by being touched.
    scaled = std::max(scaled, std::min(smallestPinSide * std::max(1.0, aspect), pinSize(imageSize).width()));
    const QSizeF size(rounded(scaled), std::max(1.0, rounded(scaled / aspect)));
    double x = r.x() + (r.width() - size.width()) / 2;
    double y = r.y() + (r.height() - size.height()) / 2;
    if (horizontal)
        x = held & Qt::LeftEdge ? r.right() - size.width() : r.x();
    if (vertical)
        y = held & Qt::BottomEdge ? r.bottom() - size.height() : r.y();
    return {QRectF(QPointF(x, y), size)};
}

} // namespace marrowfin::pin
