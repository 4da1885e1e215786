// The eight handles of a box, of ink and of the crop alike. Any space with y down; the unit is the caller's.
#pragma once

#include <QPointF>
#include <QRectF>
#include <array>
#include <map>

namespace marrowfin::annotation {

enum class ResizeHandle {
    topLeft,
    topRight,
    bottomLeft,
    bottomRight,
    topCenter,
    bottomCenter,
    leftCenter,
    rightCenter,
};

inline constexpr std::array allResizeHandles{
    ResizeHandle::topLeft,   ResizeHandle::topRight,     ResizeHandle::bottomLeft, ResizeHandle::bottomRight,
    ResizeHandle::topCenter, ResizeHandle::bottomCenter, ResizeHandle::leftCenter, ResizeHandle::rightCenter,
};

using HandleRects = std::map<ResizeHandle, QRectF>;

// The point of the box that the handle stands on: a corner, or the middle of an edge.
QPointF handleAnchor(ResizeHandle handle, const QRectF& box);
// A square of this side centred on each handle's anchor.
HandleRects handleRects(const QRectF& box, double side);
// The box with the edges that the handle owns moved to the point, standardised: a handle dragged through the
// opposite edge flips the box.
QRectF resizedRect(ResizeHandle handle, const QRectF& box, const QPointF& point);

} // namespace marrowfin::annotation
