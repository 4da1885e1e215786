// The contents of an editor window: the canvas, and the chrome that floats over it. Owns one document and its
// tool state, keeps the controls in step with them and turns presses into changes of them. Points, y down;
// the arithmetic of the chrome's places is y up (chrome::place). Owned by the editor's window. Main thread.
#pragma once

#include "annotation/AnnotationDocument.h"
#include "annotation/ToolState.h"
#include "base/Image.h"

#include <QWidget>
#include <functional>

namespace marrowfin {

class AnnotationCanvasView;

class EditorRootView : public QWidget {
    Q_OBJECT
public:
    // An image without pixels stays standing: copy, save and pin do nothing then.
    explicit EditorRootView(const Image& image, QWidget* parent = nullptr);
    ~EditorRootView() override;

    AnnotationDocument* document() { return &ink; }
    ToolState* toolState() { return &tools; }
    AnnotationCanvasView* canvas() { return surface; }

    // The path of the file, once it was written; a write that failed isn't told apart.
    std::function<void(const QString& path)> onSave;
    // The annotated image is offered on the clipboard.
    std::function<void()> onCopy;
    std::function<void(const Image& image)> onPin;

    // Each ends an open edit of text first, so that what is being typed is in the picture.
    void pinPressed();
    void copyPressed();
    // Asks for a name without waiting for it; also Control and S.
    void savePressed();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    // The base image with its ink; null without pixels.
    Image flattened();
    void layOut();

    AnnotationDocument ink;
    ToolState tools;
    AnnotationCanvasView* surface;
};

} // namespace marrowfin
