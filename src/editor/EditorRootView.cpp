#include "editor/EditorRootView.h"

#include "annotation/CropGeometry.h"
#include "annotation/ImageCompositor.h"
#include "chrome/EditorChipButton.h"
#include "chrome/EditorGlyphButton.h"
#include "chrome/EditorLabelButton.h"
#include "chrome/EditorSlabView.h"
#include "chrome/EditorSwatchButton.h"
#include "chrome/EditorWidthButton.h"
#include "editor/AnnotationCanvasView.h"
#include "editor/ColorPanel.h"
#include "editor/SaveSheet.h"
#include "editor/StatusChipView.h"
#include "platform/Clipboard.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QPointer>
#include <QShortcut>

namespace marrowfin::editor {

using namespace annotation;
using namespace imaging;

namespace {

// The room that the chrome takes at each side.
constexpr QMarginsF roomForChrome(76, 56, 20, 72);

AnnotationCanvasView* makeCanvas(EditorRootView& root) {
    auto* canvas = new AnnotationCanvasView(&root);
    canvas->setDocument(root.document());
    canvas->setToolState(root.toolState());
    canvas->setContentInsets(roomForChrome);
    // The keyboard is the canvas's; what is given to the view as a whole goes to it.
    root.setFocusProxy(canvas);
    return canvas;
}

} // namespace

EditorRootView::EditorRootView(const Image& image, QWidget* parent)
    : QWidget(parent), ink(image), surface(makeCanvas(*this)), controls(*this) {
    wireControls();
    wireBackdrop();
    subscribe();
    controls.showTool(tools);
    controls.showStyle(tools);
    controls.showHistory(ink);
    controls.showStatus(ink);
    controls.showCrop(tools, ink);
}

EditorRootView::~EditorRootView() {
    // Before the document and the tools, which it looks at to its end.
    delete surface;
}

void EditorRootView::wireControls() {
    const auto onPress = [this](const chrome::EditorButton* button, auto act) {
        connect(button, &QAbstractButton::clicked, this, act);
    };
    for (const auto& [tool, button] : controls.toolButtons)
        onPress(button, [this, tool = tool] { toolChosen(tool); });
    for (const chrome::EditorSwatchButton* swatch : controls.swatchButtons)
        onPress(swatch, [this, swatch] { swatchChosen(swatch->swatchColor()); });
    for (const chrome::EditorWidthButton* width : controls.widthButtons)
        onPress(width, [this, width] { widthChosen(width->value()); });
    for (const auto& [aspect, chip] : controls.aspectButtons)
        onPress(chip, [this, aspect = aspect] { aspectChosen(aspect); });
    onPress(controls.customColorButton, &EditorRootView::customColorRequested);
    onPress(controls.undoButton, &EditorRootView::undoPressed);
    onPress(controls.redoButton, &EditorRootView::redoPressed);
    onPress(controls.pinButton, &EditorRootView::pinPressed);
    onPress(controls.copyButton, &EditorRootView::copyPressed);
    onPress(controls.saveButton, &EditorRootView::savePressed);
    onPress(controls.cropCancelButton, &EditorRootView::cropCancelPressed);
    onPress(controls.cropApplyButton, &EditorRootView::cropApplyPressed);
    auto* save = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_S), this);
    save->setAutoRepeat(false);
    connect(save, &QShortcut::activated, this, &EditorRootView::savePressed);
    QWidget* before = surface;
    for (chrome::EditorButton* button : controls.buttons()) {
        setTabOrder(before, button);
        before = button;
    }
}

void EditorRootView::wireBackdrop() {
    for (chrome::EditorSlabView* slab : controls.slabs()) {
        slab->setBackdrop(*surface, [this](QPainter& painter, const QRect& part) {
            surface->paintContents(painter, part);
        });
        connect(surface, &AnnotationCanvasView::contentsChanged, slab,
                &chrome::EditorSlabView::backdropChanged);
    }
}

void EditorRootView::subscribe() {
    connect(&tools, &ToolState::changed, this, &EditorRootView::toolsDidChange);
    connect(&ink, &AnnotationDocument::annotationsChanged, this, &EditorRootView::documentDidChange);
    connect(&ink, &AnnotationDocument::baseImageChanged, this, &EditorRootView::documentDidChange);
    connect(&ink, &AnnotationDocument::undoStateChanged, this, &EditorRootView::documentDidChange);
}

void EditorRootView::toolsDidChange() {
    if (toolsAreShown && documentIsShown)
        QMetaObject::invokeMethod(this, &EditorRootView::synchronise, Qt::QueuedConnection);
    toolsAreShown = false;
}

void EditorRootView::documentDidChange() {
    if (toolsAreShown && documentIsShown)
        QMetaObject::invokeMethod(this, &EditorRootView::synchronise, Qt::QueuedConnection);
    documentIsShown = false;
}

void EditorRootView::synchronise() {
    if (!std::exchange(toolsAreShown, true)) {
        controls.showTool(tools);
        controls.showStyle(tools);
        controls.showCrop(tools, ink);
    }
    if (!std::exchange(documentIsShown, true)) {
        controls.showHistory(ink);
        controls.showStatus(ink);
    }
}

void EditorRootView::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    surface->setGeometry(rect());
    controls.layOut();
}

void EditorRootView::keyPressEvent(QKeyEvent* event) {
    // Tool letters, undo and the crop's keys work wherever in the chrome the keyboard is.
    const QWidget* focused = window()->focusWidget();
    const bool onCanvas = focused && (focused == surface || surface->isAncestorOf(focused));
    if (onCanvas || std::exchange(passingKeyOn, true)) {
        QWidget::keyPressEvent(event);
        return;
    }
    QCoreApplication::sendEvent(surface, event);
    passingKeyOn = false;
}

void EditorRootView::customColorRequested() {
    ColorPanel::shared().show(tools.strokeColor(), *this,
                              [this](const QColor& color) { colorPanelChanged(color); });
}

void EditorRootView::aspectChosen(CropAspect aspect) {
    tools.setCropAspect(aspect);
    if (!tools.cropRect() || ink.baseImage().isNull())
        return;
    const QSizeF image = ink.baseImage().size();
    tools.setCropRect(fittedCropRect(*tools.cropRect(), aspectRatio(aspect, image), image));
}

void EditorRootView::cropCancelPressed() {
    tools.setCropRect(std::nullopt);
    toolChosen(ToolType::select);
}

void EditorRootView::cropApplyPressed() {
    surface->applyCrop();
}

void EditorRootView::undoPressed() {
    surface->commitTextEdit();
    ink.undo();
}

void EditorRootView::redoPressed() {
    surface->commitTextEdit();
    ink.redo();
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
    platform::copyToClipboard(image);
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

} // namespace marrowfin::editor
