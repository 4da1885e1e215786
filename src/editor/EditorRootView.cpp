#include "editor/EditorRootView.h"

#include "annotation/ImageCompositor.h"
#include "editor/AnnotationCanvasView.h"
#include "editor/SaveSheet.h"
#include "platform/Pasteboard.h"
#include "platform/Services.h"

#include <QPointer>
#include <QShortcut>

namespace marrowfin {

namespace {
// The room that the chrome takes at each side.
constexpr QMarginsF roomForChrome(76, 56, 20, 72);
} // namespace

EditorRootView::EditorRootView(const Image& image, QWidget* parent)
    : QWidget(parent), ink(image), surface(new AnnotationCanvasView(this)) {
    surface->setDocument(&ink);
    surface->setToolState(&tools);
    surface->setContentInsets(roomForChrome);
    auto* save = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_S), this);
    save->setAutoRepeat(false);
    connect(save, &QShortcut::activated, this, &EditorRootView::savePressed);
}

EditorRootView::~EditorRootView() {
    // Before the document and the tools, which it looks at to its end.
    delete surface;
}

void EditorRootView::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    layOut();
}

void EditorRootView::layOut() {
    surface->setGeometry(rect());
}

Image EditorRootView::flattened() {
    surface->commitTextEdit();
    return ImageCompositor::composite(ink);
}

void EditorRootView::pinPressed() {
    const Image image = flattened();
    if (!image.isNull() && onPin)
        onPin(image);
}

void EditorRootView::copyPressed() {
    const Image image = flattened();
    if (image.isNull())
        return;
    platform::Pasteboard& pasteboard = platform::services().pasteboard;
    pasteboard.clearContents();
    pasteboard.writeImage(image);
    if (onCopy)
        onCopy();
}

void EditorRootView::savePressed() {
    const Image image = flattened();
    if (image.isNull())
        return;
    askWhereToSave(image, this, [view = QPointer(this)](const QString& path) {
        if (view && view->onSave)
            view->onSave(path);
    });
}

} // namespace marrowfin
