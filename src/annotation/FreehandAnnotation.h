// A pen stroke: the points as the pointer gave them, smoothed only when painted. Image points, y down.
#pragma once

#include "annotation/Ink.h"

#include <QList>

class QPainter;

namespace marrowfin::annotation {

struct FreehandAnnotation : Ink {
    QList<QPointF> points;

    // The box of the raw points; the zero rectangle without any.
    QRectF boundingRect() const;
    // A stroke of one point has no segment and is never hit.
    bool hitTest(const QPointF& point, double tolerance) const;
    void translate(double dx, double dy);

    // A stroke of one point paints nothing, nor does one that no hand can have drawn.
    void draw(QPainter& painter) const;

    friend bool operator==(const FreehandAnnotation&, const FreehandAnnotation&) = default;
};

} // namespace marrowfin::annotation
