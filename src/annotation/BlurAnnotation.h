// A box whose content is made unreadable. Image points, y down.
#pragma once

#include "annotation/Ink.h"

namespace marrowfin {

struct BlurAnnotation : BoxInk {
    // The whole box is live.
    bool hitTest(const QPointF& point, double tolerance) const;

    friend bool operator==(const BlurAnnotation&, const BlurAnnotation&) = default;
};

} // namespace marrowfin
