// The icon in the status area, drawn rather than loaded so that it is crisp at every size. Any thread.
#pragma once

#include <QColor>
#include <QImage>

namespace marrowfin::app {

// The 18 x 18 point drawing on a square of this many pixels, in one colour on nothing.
QImage statusIcon(int pixels, const QColor& color);

} // namespace marrowfin::app
