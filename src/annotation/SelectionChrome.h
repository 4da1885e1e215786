// The frame and handles of the selected annotation, at a constant size on the screen.
#pragma once

#include "annotation/AnyAnnotation.h"
#include "base/SystemColors.h"

namespace marrowfin::annotation {

// The painter's space is image points; `scale` is the canvas scale, view points to an image point.
void drawSelectionChrome(const AnyAnnotation& annotation, double scale, QPainter& painter,
                         ColorScheme scheme = ColorScheme::Light);

} // namespace marrowfin::annotation
