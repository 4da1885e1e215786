// Decorations that a window manager draws onto the screen itself, beside the windows' pictures, as KWin does
// while it blends. The picture of a frame has there what the server kept, which may be another window's.
// Native pixels of the root. Thread: the connection's.
#pragma once

#include "platform/x11/layout/WindowList.h"
#include "platform/x11/server/Connection.h"

#include <QImage>
#include <QRegion>

namespace marrowfin::x11 {

// Whether that is so now: it ends when its compositor is switched off.
bool decorationsAreDrawnApart(const Connection& connection);
// Where the window has such a decoration within the area.
QRegion decorationStrips(const WindowFacts& window, const QRect& area);
// Beyond the round corners of a decoration, where the screen shows what is behind. Their radius isn't told;
// it grows with the title bar.
QRegion outsideOfCorners(const WindowFacts& window, const QRect& area);

// Both pictures show the area. Takes the region over from the other; clears the region.
void copyInto(QImage& picture, const QImage& other, const QRegion& region, const QPoint& corner);
void clearIn(QImage& picture, const QRegion& region, const QPoint& corner);

} // namespace marrowfin::x11
