// A box that is outlined, never filled. Image points, y down.
#pragma once

#include "annotation/Ink.h"

namespace marrowfin {

struct RectangleAnnotation : BoxInk {
    // Only the band around the outline is live.
    bool hitTest(const QPointF& point, double tolerance) const;

    friend bool operator==(const RectangleAnnotation&, const RectangleAnnotation&) = default;
};

} // namespace marrowfin
