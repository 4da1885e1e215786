// The keys of the canvas.
#include "editor/AnnotationCanvasView.h"

#include <QKeyEvent>

namespace marrowfin {

namespace {
constexpr double smallestCommittedCrop = 1.0;

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
        chooseTool(*tool);
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

void AnnotationCanvasView::chooseTool(ToolType tool) {
    const ToolType previous = tools->currentTool();
    tools->setCurrentTool(tool);
    tools->toolDidChange(previous);
}

void AnnotationCanvasView::applyCrop() {
    if (!doc || !tools || !tools->cropRect())
        return;
    const QRectF rect = *tools->cropRect();
    if (rect.width() < smallestCommittedCrop || rect.height() < smallestCommittedCrop)
        return;
    doc->crop(rect);
    tools->setCropRect(std::nullopt);
    chooseTool(ToolType::select);
}

void AnnotationCanvasView::cancelCrop() {
    if (!tools)
        return;
    // Two levels: first the rectangle goes, then the tool.
    if (tools->cropRect())
        tools->setCropRect(std::nullopt);
    else
        chooseTool(ToolType::select);
}

} // namespace marrowfin
