// Where cards stand: arithmetic on constants alone, whatever the captures look like. Points, DesktopRect
// (y up). Any thread.
#pragma once

#include "base/Coordinates.h"

#include <vector>

namespace marrowfin::panel {

// The card's fixed footprint.
constexpr QSizeF cardSize{240, 160};
// The window around it, with room for the shadow.
constexpr double haloLeft = 18;
constexpr double haloRight = 18;
constexpr double haloBottom = 22;
constexpr double haloTop = 12;
constexpr QSizeF windowSize{haloLeft + 240 + haloRight, haloBottom + 160 + haloTop};
// From the visible frame's edges to the card, and between two cards.
constexpr double edgeInset = 24;
constexpr double cardGap = 14;
constexpr int maximumCardsPerDisplay = 4;

// The window of this card.
DesktopRect windowFrame(const DesktopRect& card);
// The card in this window.
DesktopRect cardFrame(const DesktopRect& window);

// The windows of a column of cards, the newest (lowest) first.
std::vector<DesktopRect> stackFrames(const DesktopRect& visibleFrame, int count);
// True when a card of this height still fits above as many standing ones.
bool stackHasRoom(const DesktopRect& visibleFrame, int standing, double incomingHeight);
// Where a card's window goes as it fades: shrunk a little on the spot, or moved sideways by the offset.
DesktopRect departureFrame(const DesktopRect& window, double offset);
// How far a swipe throws a card, clear of its column.
constexpr double swipeDistance = windowSize.width() + cardGap + 2 * edgeInset;

} // namespace marrowfin::panel
