// The keys of the canvas.
#include "editor/AnnotationCanvasView.h"

#include "annotation/CropGeometry.h"

#include <QKeyEvent>

namespace marrowfin::editor {

using namespace annotation;

namespace {
bool isUndoKey(const QKeyEvent& event) {
    return event.modifiers() & Qt::ControlModifier && event.key() == Qt::Key_Z;
}
} // namespace

void AnnotationCanvasView::keyPressEvent(QKeyEvent* event) {
    // What the text being typed leaves over is the window's.
    if (!doc || !tools || (editor && editor->hasFocus())) {
        QWidget::keyPressEvent(event);
        return;
    }
    if (tools->currentTool() == ToolType::crop && cropKey(event->key()))
        return;
    if (isUndoKey(*event)) {
        event->modifiers() & Qt::ShiftModifier ? doc->redo() : doc->undo();
        return;
    }
    if (event->key() == Qt::Key_Backspace || event->key() == Qt::Key_Delete) {
        doc->deleteSelected();
        return;
    }
    const auto tool = event->modifiers() == Qt::NoModifier ? toolForLetter(event->text()) : std::nullopt;
    if (tool)
        tools->choose(*tool);
    else
        QWidget::keyPressEvent(event);
}

bool AnnotationCanvasView::cropKey(int key) {
    if (key == Qt::Key_Return || key == Qt::Key_Enter)
        applyCrop();
    else if (key == Qt::Key_Escape)
        cancelCrop();
    else
        return false;
    return true;
}

void AnnotationCanvasView::applyCrop() {
    if (!doc || !tools || !tools->cropRect())
        return;
    const QRectF rect = *tools->cropRect();
    if (rect.width() < minimumCommittedCrop || rect.height() < minimumCommittedCrop)
        return;
    doc->crop(rect);
    tools->setCropRect(std::nullopt);
    tools->choose(ToolType::select);
}

void AnnotationCanvasView::cancelCrop() {
    if (!tools)
        return;
    // Two levels: first the rectangle goes, then the tool.
    if (tools->cropRect())
        tools->setCropRect(std::nullopt);
    else
        tools->choose(ToolType::select);
}

} // namespace marrowfin::editor
