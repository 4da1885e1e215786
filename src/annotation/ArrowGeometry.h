// The shape of an arrow, from its two ends and its stroke. Image points, y down.
#pragma once

#include <QPointF>

namespace marrowfin::annotation {

// 4.5 times the stroke, at least 10 so that a hairline's head can be seen, at most 60% of the length.
double arrowHeadLength(double length, double strokeWidth);

struct ArrowGeometry {
    double head = 0;
    QPointF firstWing; // the head is the triangle tip, first wing, second wing: 60 degrees at the tip
    QPointF secondWing;
    QPointF shaftEnd; // inside the head
};
ArrowGeometry arrowGeometry(const QPointF& start, const QPointF& tip, double strokeWidth);

} // namespace marrowfin::annotation
