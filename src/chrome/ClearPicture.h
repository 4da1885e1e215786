// Something to paint on aside, before it goes to the screen. Any thread.
#pragma once

#include <QImage>

namespace marrowfin::chrome {

// Transparent, of this size in points at this density (device pixels per point); a broken pixel at the right
// or lower edge counts as a whole one.
QImage clearPicture(const QSizeF& size, double density);

} // namespace marrowfin::chrome
