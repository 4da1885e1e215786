// The word on a button, in the button's font. Points. Main thread.
#pragma once

#include "base/SystemFonts.h"

#include <QAbstractButton>

namespace marrowfin::chrome {

double titleWidth(const QAbstractButton& button);
// What the title needs, in whole points.
QSize titleSize(const QAbstractButton& button);
// In the middle of the room, its capitals as far from the top as from the bottom.
void paintTitle(QPainter& painter, const QAbstractButton& button, const QRectF& room, const QColor& color);

} // namespace marrowfin::chrome
