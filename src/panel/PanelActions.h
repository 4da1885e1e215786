// What a card asks of whoever put it up. Views never act themselves.
#pragma once

#include <functional>

namespace marrowfin {

enum class Drop { Cancelled, Completed };

struct PanelActions {
    std::function<void()> copy;
    std::function<void()> save;
    // Annotate, and a click on the card.
    std::function<void()> openEditor;
    std::function<void()> pin;
    std::function<void()> close;
    // Thrown off sideways by this many points.
    std::function<void(double)> swipe;
    // The pointer came to the card, or left it.
    std::function<void(bool)> hoverChanged;
    std::function<void()> dragBegan;
    std::function<void(Drop)> dragEnded;
};

} // namespace marrowfin
