// A straight line with round ends. Image points, y down.
#pragma once

#include "annotation/Ink.h"

class QPainter;

namespace marrowfin::annotation {

struct LineAnnotation : SegmentInk {
    // The box of the two ends, without the line's width.
    QRectF boundingRect() const;
    bool hitTest(const QPointF& point, double tolerance) const;

    void draw(QPainter& painter) const;

    friend bool operator==(const LineAnnotation&, const LineAnnotation&) = default;
};

} // namespace marrowfin::annotation
