#include "panel/ScreenChoice.h"

namespace marrowfin::panel {

namespace {
// The pointer is on the pixel below and right of its point: a screen has its left and upper edges, not the
// right and lower ones. (y points up here, so the half-open test of rectangles would give it the lower edge.)
bool holdsPointer(const QRectF& frame, const QPointF& pointer) {
    return pointer.x() >= minX(frame) && pointer.x() < maxX(frame) && pointer.y() > minY(frame) &&
           pointer.y() <= maxY(frame);
}
} // namespace

std::optional<platform::Screen> screenForNewCard(platform::Screens& screens,
                                                 const Result<DesktopPoint>& pointer) {
    if (pointer)
        for (const platform::Screen& screen : screens.screens())
            if (holdsPointer(screen.frame.rect, pointer->point))
                return screen;
    return screens.mainScreen();
}

std::optional<platform::Screen> screenOf(platform::Screens& screens, std::uint32_t displayID) {
    for (const platform::Screen& screen : screens.screens())
        if (screen.displayID == displayID)
            return screen;
    return std::nullopt;
}

} // namespace marrowfin::panel
