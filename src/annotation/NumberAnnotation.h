// A numbered badge: white digits on a disc. Image points, y down.
#pragma once

#include "annotation/Ink.h"

class QPainter;

namespace marrowfin::annotation {

struct NumberAnnotation : Ink {
    QPointF center;
    qint64 number = 0;
    double radius = 16.0;

    QRectF boundingRect() const;
    bool hitTest(const QPointF& point, double tolerance) const;
    void translate(double dx, double dy) { center += QPointF(dx, dy); }

    void draw(QPainter& painter) const;

    friend bool operator==(const NumberAnnotation&, const NumberAnnotation&) = default;
};

} // namespace marrowfin::annotation
