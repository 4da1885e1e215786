// The contents of an editor window: the canvas, and the chrome that floats over it. Owns one document and its
// tool state, keeps the controls in step with them and turns presses into changes of them. Points, y down.
// Owned by the editor's window. Main thread.
#pragma once

#include "annotation/AnnotationDocument.h"
#include "annotation/ToolState.h"
#include "editor/EditorChrome.h"
#include "imaging/Image.h"

#include <QWidget>
#include <functional>

namespace marrowfin::editor {

class AnnotationCanvasView;

class EditorRootView : public QWidget {
    Q_OBJECT
public:
    // An image without pixels stays standing: copy, save and pin do nothing then.
    explicit EditorRootView(const imaging::Image& image, QWidget* parent = nullptr);
    ~EditorRootView() override;

    annotation::AnnotationDocument* document() { return &ink; }
    annotation::ToolState* toolState() { return &tools; }
    AnnotationCanvasView* canvas() { return surface; }
    const EditorChrome& chrome() const { return controls; }

    // The path of the file, once it was written; a write that failed isn't told apart.
    std::function<void(const QString& path)> onSave;
    // The annotated image is offered on the clipboard.
    std::function<void()> onCopy;
    std::function<void(const imaging::Image& image)> onPin;

    void toolChosen(annotation::ToolType tool) { tools.choose(tool); }
    void swatchChosen(const QColor& color) { tools.setStrokeColor(color); }
    void widthChosen(double width) { tools.setStrokeWidth(width); }
    void customColorRequested();
    void colorPanelChanged(const QColor& color) { tools.setStrokeColor(color); }
    // A pending crop is refitted at once.
    void aspectChosen(annotation::CropAspect aspect);
    // Leaves the crop tool.
    void cropCancelPressed();
    void cropApplyPressed();
    // These end an open edit of text first, so that what is being typed is in the document.
    void undoPressed();
    void redoPressed();
    void pinPressed();
    void copyPressed();
    // Asks for a name without waiting for it; also Control and S.
    void savePressed();

protected:
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void wireControls();
    void wireBackdrop();
    void subscribe();
    // Shows the model on the controls after the current event, once for all that changed in it.
    void toolsDidChange();
    void documentDidChange();
    void synchronise();
    // The base image with its ink; null without pixels.
    imaging::Image flattened();

    annotation::AnnotationDocument ink;
    annotation::ToolState tools;
    AnnotationCanvasView* surface;
    EditorChrome controls;
    bool toolsAreShown = true;
    bool documentIsShown = true;
    bool passingKeyOn = false;
};

} // namespace marrowfin::editor
