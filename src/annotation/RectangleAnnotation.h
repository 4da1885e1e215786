// A box that is outlined, never filled. Image points, y down.
#pragma once

#include "annotation/Ink.h"

class QPainter;

namespace marrowfin::annotation {

struct RectangleAnnotation : BoxInk {
    // Only the band around the outline is live.
    bool hitTest(const QPointF& point, double tolerance) const;

    void draw(QPainter& painter) const;

    friend bool operator==(const RectangleAnnotation&, const RectangleAnnotation&) = default;
};

} // namespace marrowfin::annotation
