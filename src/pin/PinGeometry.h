// How large a pin is, which edge the pointer has hold of, and what a drag of it makes of the frame. Points;
// frames are DesktopRect (y up). Any thread.
#pragma once

#include "base/Coordinates.h"

#include <QSizeF>
#include <Qt>

namespace marrowfin::pin {

// At most 600 by 500, never enlarged, whole points. Nothing (empty) for an image without a size.
QSizeF pinSize(const QSizeF& imageSize);

// Where a pin comes up; the user moves it.
constexpr QPointF pinOrigin{100, 100};
// The smallest side that a pin can be made, if it doesn't come up smaller.
constexpr double smallestPinSide = 24;
// How far from an edge the pointer takes hold of it.
constexpr double pinEdgeReach = 6;

// The edges at this point of a pin of this size, y up; none in its middle.
Qt::Edges pinEdgesAt(const QSizeF& size, const QPointF& point);

// The frame after the held edges moved by the delta. It keeps the image's shape; edges that aren't held stay,
// and where only one is held the other direction grows about its middle.
DesktopRect resizedPin(const DesktopRect& frame, Qt::Edges held, const QPointF& delta,
                       const QSizeF& imageSize);

} // namespace marrowfin::pin
