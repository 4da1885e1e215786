// What a press, a drag and a release do to the pending crop, which lives in the tool state. Image points, y
// down; `scale` is the canvas scale. Owned by the canvas. Main thread.
#pragma once

#include "annotation/ResizeHandle.h"
#include "annotation/ToolState.h"

#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <variant>

namespace marrowfin {

class CanvasCrop {
public:
    struct Defining {
        QPointF anchor;
    };
    struct Moving {
        QPointF pointer;
        QRectF unsnapped; // what rides on, so that a snap isn't cumulative and a continued drag leaves it
    };
    struct Resizing {
        ResizeHandle handle;
    };
    struct None {};
    using CropInteraction = std::variant<Defining, Moving, Resizing, None>;

    const CropInteraction& interaction() const { return state; }

    void mouseDown(ToolState& tools, const QPointF& point, const QSizeF& image, double scale);
    void mouseDragged(ToolState& tools, const QPointF& point, const QSizeF& image, double scale);
    void mouseUp(ToolState& tools);

private:
    void move(ToolState& tools, const QPointF& point, const QSizeF& image, double scale, Moving moving);

    CropInteraction state = None{};
};

} // namespace marrowfin
