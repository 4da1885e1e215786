// How ordinary windows look: Fusion with a palette of our system colours that follows the appearance, live.
// Main thread.
#pragma once

#include "base/SystemColors.h"

#include <QPalette>

namespace marrowfin::app {

QPalette applicationPalette(ColorScheme scheme);
// Sets style, font and palette, and keeps the palette in step with the desktop's appearance. After the
// services are installed.
void installApplicationStyle();

} // namespace marrowfin::app
