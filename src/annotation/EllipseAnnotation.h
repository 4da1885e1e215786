// The outlined ellipse inscribed in its box. Image points, y down.
#pragma once

#include "annotation/Ink.h"

class QPainter;

namespace marrowfin::annotation {

struct EllipseAnnotation : BoxInk {
    // The live band is proportional to the ellipse, so the tolerance plays no part: unlike a rectangle's band
    // it stays the same share of the shape at every size. An ellipse without an axis is never hit.
    bool hitTest(const QPointF& point, double tolerance) const;

    void draw(QPainter& painter) const;

    friend bool operator==(const EllipseAnnotation&, const EllipseAnnotation&) = default;
};

} // namespace marrowfin::annotation
