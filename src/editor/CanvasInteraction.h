// What presses, drags and releases do to the document with every tool but crop. Image points, y down; `scale`
// is the canvas scale. Owned by the canvas, which draws the record being dragged out. Main thread.
#pragma once

#include "annotation/AnnotationDocument.h"
#include "annotation/ToolState.h"
#include "editor/TextSession.h"

#include <optional>

namespace marrowfin::editor {

enum class ClickCount { Single, Double };

// The canvas is to open an edit of this text.
struct TextRequest {
    TextSession session;
    QString text;
};

struct InteractionState {
    enum class Kind { moving, resizing, idle, drawing };
    Kind kind = Kind::idle;
    annotation::ResizeHandle handle =
        annotation::ResizeHandle::topLeft; // the one that is dragged while resizing
};

class CanvasInteraction {
public:
    // The record that is being dragged out, if any.
    const std::optional<annotation::AnyAnnotation>& inProgressAnnotation() const { return inProgress; }
    const InteractionState& interaction() const { return state; }

    std::optional<TextRequest> mouseDown(annotation::AnnotationDocument& document,
                                         annotation::ToolState& tools, const QPointF& point, double scale,
                                         ClickCount clicks);
    void mouseDragged(annotation::AnnotationDocument& document, const QPointF& point);
    void mouseUp(annotation::AnnotationDocument& document);

    // What was going on is over and leaves nothing.
    void reset();

private:
    std::optional<TextRequest> pressToSelect(annotation::AnnotationDocument& document, const QPointF& point,
                                             double scale, ClickCount clicks);
    static void placeNumber(annotation::AnnotationDocument& document, const annotation::ToolState& tools,
                            const QPointF& point);
    void updateInProgress(const QPointF& point);

    InteractionState state;
    QPointF dragStart; // of the press, then of the last step of a move
    std::optional<annotation::AnyAnnotation> inProgress;
};

} // namespace marrowfin::editor
