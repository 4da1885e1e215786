#include "annotation/CropGeometry.h"

#include "base/Geometry.h"

#include <algorithm>
#include <cmath>

namespace marrowfin::annotation {

namespace {

std::optional<double> constraint(std::optional<double> ratio) {
    return ratio && *ratio > 0 ? ratio : std::nullopt;
}

double clampedTo(double value, double limit) {
    // Not std::clamp, which has no answer when the limit is below 0.
    return std::max(0.0, std::min(value, limit));
}

double snapped(double coordinate, double extent, double threshold) {
    double result = coordinate;
    double best = threshold;
    for (const double guide : {0.0, extent / 2, extent}) {
        if (const double away = std::abs(coordinate - guide); away <= best) {
            result = guide;
            best = away;
        }
    }
    return result;
}

double snapDelta(double low, double middle, double high, double extent, double threshold) {
    double delta = 0;
    double best = threshold;
    for (const double candidate : {0 - low, extent - high, extent / 2 - middle}) {
        if (std::abs(candidate) <= best) {
            delta = candidate;
            best = std::abs(candidate);
        }
    }
    return delta;
}

// How far a length may grow in the room there is, as a factor of at most 1.
double roomFactor(double room, double length) {
    return length > 0 ? std::min(room / length, 1.0) : 1.0;
}

// A crop dragged by an edge handle on a ratio, along the axis of the drag and across it.
struct EdgeDrag {
    double along = 0;
    double across = 0;
};

// `ratio` is across over along; `middle` and `extent` are those of the axis across.
EdgeDrag edgeDrag(double along, double ratio, double middle, double extent) {
    const double across = along * ratio;
    const double factor = roomFactor(2 * std::min(middle, extent - middle), across);
    return {along * factor, across * factor};
}

QRectF edgeResized(ResizeHandle handle, const QRectF& rect, const QPointF& to, double ratio,
                   const QSizeF& image) {
    if (handle == ResizeHandle::topCenter || handle == ResizeHandle::bottomCenter) {
        const bool top = handle == ResizeHandle::topCenter;
        const double anchor = top ? maxY(rect) : minY(rect);
        const auto [h, w] = edgeDrag(std::abs(to.y() - anchor), ratio, midX(rect), image.width());
        return {midX(rect) - w / 2, top ? maxY(rect) - h : minY(rect), w, h};
    }
    const bool left = handle == ResizeHandle::leftCenter;
    const double anchor = left ? maxX(rect) : minX(rect);
    const auto [w, h] = edgeDrag(std::abs(to.x() - anchor), 1 / ratio, midY(rect), image.height());
    return {left ? maxX(rect) - w : minX(rect), midY(rect) - h / 2, w, h};
}

// The corner opposite to a corner handle; nothing for the handles of edges.
std::optional<QPointF> oppositeCorner(ResizeHandle handle, const QRectF& rect) {
    switch (handle) {
    case ResizeHandle::topLeft:
        return handleAnchor(ResizeHandle::bottomRight, rect);
    case ResizeHandle::topRight:
        return handleAnchor(ResizeHandle::bottomLeft, rect);
    case ResizeHandle::bottomLeft:
        return handleAnchor(ResizeHandle::topRight, rect);
    case ResizeHandle::bottomRight:
        return handleAnchor(ResizeHandle::topLeft, rect);
    default:
        return std::nullopt;
    }
}

} // namespace

QPointF snappedPoint(const QPointF& point, const QSizeF& image, double threshold) {
    return {snapped(point.x(), image.width(), threshold), snapped(point.y(), image.height(), threshold)};
}

SnapDelta moveSnapDelta(const QRectF& rect, const QSizeF& image, double threshold) {
    return {snapDelta(minX(rect), midX(rect), maxX(rect), image.width(), threshold),
            snapDelta(minY(rect), midY(rect), maxY(rect), image.height(), threshold)};
}

QRectF constrainedRect(const QPointF& anchor, const QPointF& point, std::optional<double> ratio,
                       const QSizeF& image) {
    const std::optional<double> r = constraint(ratio);
    if (!r)
        return rectBetween(anchor, point);
    const double dx = point.x() - anchor.x();
    const double dy = point.y() - anchor.y();
    const double demand = std::max(std::abs(dx) / *r, std::abs(dy));
    const double roomX = dx < 0 ? anchor.x() : image.width() - anchor.x();
    const double roomY = dy < 0 ? anchor.y() : image.height() - anchor.y();
    const double factor = std::min(roomFactor(roomX, demand * *r), roomFactor(roomY, demand));
    const double h = demand * factor;
    const double w = demand * *r * factor;
    return {dx < 0 ? anchor.x() - w : anchor.x(), dy < 0 ? anchor.y() - h : anchor.y(), w, h};
}

QRectF resizedCropRect(ResizeHandle handle, const QRectF& rect, const QPointF& point,
                       std::optional<double> ratio, const QSizeF& image) {
    const QPointF to(clampedTo(point.x(), image.width()), clampedTo(point.y(), image.height()));
    if (const std::optional<QPointF> anchor = oppositeCorner(handle, rect))
        return constrainedRect(*anchor, to, ratio, image);
    const std::optional<double> r = constraint(ratio);
    return r ? edgeResized(handle, rect, to, *r, image) : resizedRect(handle, rect, to);
}

QRectF fittedCropRect(const QRectF& rect, std::optional<double> ratio, const QSizeF& image) {
    const std::optional<double> r = constraint(ratio);
    const QRectF from = standardized(rect);
    if (!r || isEmpty(from))
        return rect;
    const double width = std::sqrt(from.width() * from.height() * *r);
    const double height = width / *r;
    const double factor = std::min({1.0, image.width() / width, image.height() / height});
    const QSizeF size(width * factor, height * factor);
    const QPointF middle = center(from);
    return {QPointF(clampedTo(middle.x() - size.width() / 2, std::max(image.width() - size.width(), 0.0)),
                    clampedTo(middle.y() - size.height() / 2, std::max(image.height() - size.height(), 0.0))),
            size};
}

} // namespace marrowfin::annotation
