// A box whose content is made unreadable. Image points, y down.
#pragma once

#include "annotation/Ink.h"

class QPainter;

namespace marrowfin::annotation {

struct BlurAnnotation : BoxInk {
    // The whole box is live.
    bool hitTest(const QPointF& point, double tolerance) const;

    // A grey plate, for painters without pixels to blur. The canvas and the compositor blur instead.
    void draw(QPainter& painter) const;

    friend bool operator==(const BlurAnnotation&, const BlurAnnotation&) = default;
};

} // namespace marrowfin::annotation
