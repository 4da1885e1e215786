// What a press, a drag and a release do to the pending crop, which lives in the tool state. Image points, y
// down; `scale` is the canvas scale. Owned by the canvas. Main thread.
#pragma once

#include "annotation/ResizeHandle.h"
#include "annotation/ToolState.h"

#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <variant>

namespace marrowfin::editor {

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
        annotation::ResizeHandle handle;
    };
    struct None {};
    using CropInteraction = std::variant<Defining, Moving, Resizing, None>;

    const CropInteraction& interaction() const { return state; }

    void mouseDown(annotation::ToolState& tools, const QPointF& point, const QSizeF& image, double scale);
    void mouseDragged(annotation::ToolState& tools, const QPointF& point, const QSizeF& image, double scale);
    void mouseUp(annotation::ToolState& tools);

private:
    void move(annotation::ToolState& tools, const QPointF& point, const QSizeF& image, double scale,
              Moving moving);

    CropInteraction state = None{};
};

} // namespace marrowfin::editor
