// The desktop's two spaces as types, so that no rectangle is ever flipped twice or not at all. Both are in
// points. Native pixels never leave a backend. The primary display's top left corner is the origin of
// ScreenRect; its y flips against the primary display's height.
#pragma once

#include "base/Geometry.h"

namespace marrowfin {

// Global, origin at the bottom left of the primary display, y up: rect.y() is the lower edge.
struct DesktopRect {
    QRectF rect;
    friend bool operator==(const DesktopRect&, const DesktopRect&) = default;
};
struct DesktopPoint {
    QPointF point;
    friend bool operator==(const DesktopPoint&, const DesktopPoint&) = default;
};

// Global, origin at the top left of the primary display, y down: rect.y() is the upper edge.
struct ScreenRect {
    QRectF rect;
    friend bool operator==(const ScreenRect&, const ScreenRect&) = default;
};
struct ScreenPoint {
    QPointF point;
    friend bool operator==(const ScreenPoint&, const ScreenPoint&) = default;
};

ScreenRect toScreen(const DesktopRect& rect, double primaryHeight);
DesktopRect toDesktop(const ScreenRect& rect, double primaryHeight);
ScreenPoint toScreen(const DesktopPoint& point, double primaryHeight);
DesktopPoint toDesktop(const ScreenPoint& point, double primaryHeight);

// The same four numbers read in the other space, for the places where that is the settled behaviour.
ScreenRect takenAsScreen(const DesktopRect& rect);
DesktopRect takenAsDesktop(const ScreenRect& rect);

} // namespace marrowfin
