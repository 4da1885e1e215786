// A line whose head is at its end point. Image points, y down.
#pragma once

#include "annotation/Ink.h"

class QPainter;

namespace marrowfin::annotation {

struct ArrowAnnotation : SegmentInk {
    // Has room for the head at either end.
    QRectF boundingRect() const;
    // The shaft from end to end; the head has no area of its own.
    bool hitTest(const QPointF& point, double tolerance) const;

    // An arrow of half a point or less paints nothing.
    void draw(QPainter& painter) const;

    friend bool operator==(const ArrowAnnotation&, const ArrowAnnotation&) = default;
};

} // namespace marrowfin::annotation
