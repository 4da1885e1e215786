// Where a frame of the desktop is for the toolkit, whose global coordinates begin at its primary screen's own
// corner. Points. Main thread.
#pragma once

#include "base/Coordinates.h"

#include <QRect>

class QScreen;

namespace marrowfin::x11 {

// The size is rounded on its own, so that a move doesn't change it.
QRect qtRect(const DesktopRect& frame);
// Each screen keeps its origin in native pixels; only distances within it are scaled. Empty when no screen
// shows the middle of it.
QRect qtRectOfNative(const QRect& native);
// The other way, for a place where the toolkit says that the pointer is.
DesktopPoint desktopPoint(const QPointF& qtGlobal);
QPoint qtPoint(const DesktopPoint& point);
// The screen that shows most of it; the primary when none does.
QScreen* screenShowing(const QRect& rect);

} // namespace marrowfin::x11
