// The distances and areas that hit tests are made of. Any unit, as long as all arguments share it.
#pragma once

#include <QPointF>
#include <QRectF>

namespace marrowfin::annotation {

// From the point to the nearest point of the segment from a to b, which may have no length.
double distanceToSegment(const QPointF& point, const QPointF& a, const QPointF& b);

// Within the box grown by the tolerance on all sides.
bool hitsArea(const QRectF& box, const QPointF& point, double tolerance);
// Within the band around the box's outline; a box too small to shrink is live all over.
bool hitsOutline(const QRectF& box, const QPointF& point, double tolerance);

} // namespace marrowfin::annotation
