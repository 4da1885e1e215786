#include "panel/PanelLayout.h"

namespace marrowfin::panel {

DesktopRect windowFrame(const DesktopRect& card) {
    return {card.rect.adjusted(-haloLeft, -haloBottom, haloRight, haloTop)};
}

DesktopRect cardFrame(const DesktopRect& window) {
    return {window.rect.adjusted(haloLeft, haloBottom, -haloRight, -haloTop)};
}

std::vector<DesktopRect> stackFrames(const DesktopRect& visibleFrame, int count) {
    std::vector<DesktopRect> frames;
    const double x = minX(visibleFrame.rect) + edgeInset;
    double y = minY(visibleFrame.rect) + edgeInset;
    for (int row = 0; row < count; ++row) {
        frames.push_back(windowFrame({QRectF(QPointF(x, y), cardSize)}));
        y += cardSize.height() + cardGap;
    }
    return frames;
}

bool stackHasRoom(const DesktopRect& visibleFrame, int standing, double incomingHeight) {
    const double budget = visibleFrame.rect.height() - 2 * edgeInset;
    return budget >= incomingHeight + standing * (cardGap + cardSize.height());
}

DesktopRect departureFrame(const DesktopRect& window, double offset) {
    if (offset != 0)
        return {window.rect.translated(offset, 0)};
    return {inset(window.rect, window.rect.width() * 0.03, window.rect.height() * 0.03)};
}

} // namespace marrowfin::panel
