#include "base/Coordinates.h"

namespace marrowfin {

namespace {
QRectF flipped(const QRectF& rect, double height) {
    const QRectF r = standardized(rect);
    return {r.x(), height - maxY(r), r.width(), r.height()};
}
} // namespace

ScreenRect toScreen(const DesktopRect& rect, double primaryHeight) {
    return {flipped(rect.rect, primaryHeight)};
}
DesktopRect toDesktop(const ScreenRect& rect, double primaryHeight) {
    return {flipped(rect.rect, primaryHeight)};
}

ScreenPoint toScreen(const DesktopPoint& point, double primaryHeight) {
    return {{point.point.x(), primaryHeight - point.point.y()}};
}
DesktopPoint toDesktop(const ScreenPoint& point, double primaryHeight) {
    return {{point.point.x(), primaryHeight - point.point.y()}};
}

ScreenRect takenAsScreen(const DesktopRect& rect) {
    return {rect.rect};
}
DesktopRect takenAsDesktop(const ScreenRect& rect) {
    return {rect.rect};
}

} // namespace marrowfin
