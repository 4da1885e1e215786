// The arithmetic of the crop tool, free of any view: guides, aspect and edges. Image points, y down; `image`
// is the base image's size. A ratio is width over height; none, or one not above 0, doesn't constrain. Pure.
#pragma once

#include "annotation/ResizeHandle.h"

#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <optional>

namespace marrowfin::annotation {

// A freshly drawn rectangle below this on either axis is discarded.
constexpr double minimumDefinedCrop = 4.0;
// Below this on either axis nothing is cut.
constexpr double minimumCommittedCrop = 1.0;
// The reach of the guides: 6 view points at any canvas scale.
constexpr double cropSnapThreshold(double scale) {
    return 6.0 / scale;
}

// Each axis by itself onto the image's edges and centre. At the threshold it still snaps, and of two guides
// as near the later one wins: near edge, centre, far edge.
QPointF snappedPoint(const QPointF& point, const QSizeF& image, double threshold);

struct SnapDelta {
    double dx = 0;
    double dy = 0;
};
// How far to move the rectangle so that its edges or its middle stand on a guide. Per axis in this order, the
// later one on a tie: its near edge on the image's, its far edge on the image's, its middle on the centre.
SnapDelta moveSnapDelta(const QRectF& rect, const QSizeF& image, double threshold);

// The rectangle from an anchor to a point. With a ratio it covers the larger of the two demands, and stops on
// its aspect at the image's edge.
QRectF constrainedRect(const QPointF& anchor, const QPointF& point, std::optional<double> ratio,
                       const QSizeF& image);

// The crop with this handle dragged to the point. An edge handle on a ratio keeps the far edge and the
// middle. Dragged through its far edge, such a rectangle may leave the image.
QRectF resizedCropRect(ResizeHandle handle, const QRectF& rect, const QPointF& point,
                       std::optional<double> ratio, const QSizeF& image);

// The rectangle refitted to a ratio: same area, same middle, as far as the image has room.
QRectF fittedCropRect(const QRectF& rect, std::optional<double> ratio, const QSizeF& image);

} // namespace marrowfin::annotation
