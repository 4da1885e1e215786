// A box in marker colour. Image points, y down.
#pragma once

#include "annotation/Ink.h"

class QPainter;

namespace marrowfin::annotation {

struct HighlightAnnotation : BoxInk {
    // A light page is multiplied, which keeps its text; a dark page is screened, because multiplying would
    // leave a near-black block.
    bool backdropIsDark = false;

    // The whole box is live.
    bool hitTest(const QPointF& point, double tolerance) const;

    void draw(QPainter& painter) const;

    friend bool operator==(const HighlightAnnotation&, const HighlightAnnotation&) = default;
};

} // namespace marrowfin::annotation
