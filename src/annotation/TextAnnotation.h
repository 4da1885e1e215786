// Words on the image, in the medium system font. Image points, y down. GUI thread.
#pragma once

#include "annotation/Ink.h"

#include <QString>

class QPainter;

namespace marrowfin::annotation {

struct TextAnnotation : Ink {
    QPointF position; // the left end of the first line's baseline
    QString text;     // may hold "\n"
    double fontSize = 24.0;

    QRectF boundingRect() const;
    bool hitTest(const QPointF& point, double tolerance) const;
    void translate(double dx, double dy) { position += QPointF(dx, dy); }

    void draw(QPainter& painter) const;

    friend bool operator==(const TextAnnotation&, const TextAnnotation&) = default;
};

} // namespace marrowfin::annotation
