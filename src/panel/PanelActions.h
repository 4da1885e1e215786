// What a card asks of whoever put it up. Views never act themselves. Main thread.
#pragma once

#include <QImage>
#include <QPointF>
#include <QRectF>
#include <functional>

namespace marrowfin::panel {

enum class Drop { Cancelled, Completed };

// What the pointer carries: seen on the card in this frame when it was taken hold of at the grip. Points of
// the card's widget, y down.
struct DragPreview {
    QImage picture;
    QRectF frame;
    QPointF grip;
};

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
    std::function<void(Drop, const DragPreview&)> dragEnded;
};

} // namespace marrowfin::panel
