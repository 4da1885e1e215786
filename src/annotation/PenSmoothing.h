// From the points that a hand gave to the curve that is painted. Linear in the number of points. Image
// points.
#pragma once

#include <QList>
#include <QPainterPath>
#include <QPointF>

namespace marrowfin::annotation {

// Whether a hand can have drawn this: at most a million points long, so that the number of steps along it
// stays within reason. Other strokes are not smoothed and not painted.
bool isHandsStroke(const QList<QPointF>& points);

// Points at equal steps along the polyline; the last point is always among them.
QList<QPointF> resampled(const QList<QPointF>& points, double spacing);
// Resampled and averaged twice; both ends stay where the hand put them. Unchanged below three points.
QList<QPointF> smoothedPoints(const QList<QPointF>& points);
// A Catmull-Rom spline through the points as they are, all of cubic curves. Empty below two points.
QPainterPath curveThrough(const QList<QPointF>& points);
// The painted curve of a pen stroke.
QPainterPath smoothedPath(const QList<QPointF>& points);

} // namespace marrowfin::annotation
