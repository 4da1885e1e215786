#include "editor/AnnotationCanvasView.h"

#include "editor/CanvasDamage.h"
#include "editor/CanvasPainter.h"
#include "editor/TextClickMonitor.h"
#include "platform/Desktop.h"
#include "platform/Services.h"

#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>

namespace marrowfin::editor {

using namespace annotation;

AnnotationCanvasView::AnnotationCanvasView(QWidget* parent)
    : QWidget(parent), painting(std::make_unique<CanvasPainter>([this] { invalidate(rect()); })) {
    setAccessibleName(QStringLiteral("Canvas"));
    setAttribute(Qt::WA_OpaquePaintEvent);
    // Not by a click, which would end an edit of text before the press is judged; a press takes it by itself.
    setFocusPolicy(Qt::TabFocus);
    connect(&platform::services().appearance, &platform::Appearance::changed, this,
            &AnnotationCanvasView::everythingDidChange);
}

AnnotationCanvasView::~AnnotationCanvasView() {
    // An edit that is open now ends with the canvas; nobody may be told any more.
    clickMonitor.reset();
    if (editor) {
        editor->onEscapeCommit = editor->textDidChange = editor->caretDidBlink = editor->textDidEndEditing =
            nullptr;
        delete editor;
    }
}

void AnnotationCanvasView::setDocument(AnnotationDocument* document) {
    if (doc == document)
        return;
    commitTextEdit(); // the text belongs to the document in which it was begun
    for (const QMetaObject::Connection& connection : std::exchange(documentConnections, {}))
        disconnect(connection);
    doc = document;
    pointer.reset();
    if (doc)
        documentConnections = {
            connect(doc, &AnnotationDocument::baseImageChanged, this,
                    &AnnotationCanvasView::everythingDidChange),
            connect(doc, &AnnotationDocument::annotationsChanged, this,
                    &AnnotationCanvasView::contentsDidChange),
            connect(doc, &AnnotationDocument::selectedAnnotationIDChanged, this,
                    &AnnotationCanvasView::contentsDidChange),
        };
    everythingDidChange();
}

void AnnotationCanvasView::setToolState(ToolState* toolState) {
    if (tools == toolState)
        return;
    for (const QMetaObject::Connection& connection : std::exchange(toolConnections, {}))
        disconnect(connection);
    tools = toolState;
    if (tools)
        toolConnections = {
            connect(tools, &ToolState::changed, this, &AnnotationCanvasView::contentsDidChange),
            connect(tools, &ToolState::currentToolSet, this, &AnnotationCanvasView::commitTextEdit),
        };
    contentsDidChange();
}

void AnnotationCanvasView::setContentInsets(const QMarginsF& newInsets) {
    insets = newInsets;
    everythingDidChange();
}

QSizeF AnnotationCanvasView::imageSize() const {
    return doc ? doc->baseImage().size() : QSizeF(0, 0);
}

void AnnotationCanvasView::refit() {
    fit = CanvasFit::of(size(), insets, imageSize());
}

std::optional<QRectF> AnnotationCanvasView::visibleCrop() const {
    if (!tools || tools->currentTool() != ToolType::crop || !tools->cropRect())
        return std::nullopt;
    const QRectF& rect = *tools->cropRect();
    return rect.width() > 0 && rect.height() > 0 ? std::optional(rect) : std::nullopt;
}

AnnotationCanvasView::Shown AnnotationCanvasView::present() const {
    if (!doc)
        return {};
    return {doc->annotations(), pointer.inProgressAnnotation(), doc->selectedAnnotationID(),
            session ? session->annotationID : std::nullopt, visibleCrop()};
}

void AnnotationCanvasView::contentsDidChange() {
    const Shown now = present();
    invalidate(damageBetween(shown, now));
    shown = now;
}

QRegion AnnotationCanvasView::damageBetween(const Shown& before, const Shown& after) const {
    const auto pointTo = [](const std::optional<AnyAnnotation>& one) { return one ? &*one : nullptr; };
    const auto find = [](const Shown& in, const std::optional<QUuid>& id) -> const AnyAnnotation* {
        for (const AnyAnnotation& one : in.annotations)
            if (one.id() == id)
                return &one;
        return nullptr;
    };
    QRegion damage = inkDamage(before.annotations, after.annotations, fit);
    damage += inkDamage(pointTo(before.inProgress), pointTo(after.inProgress), fit);
    if (before.hidden != after.hidden) {
        damage += inkDamage(find(before, before.hidden), nullptr, fit);
        damage += inkDamage(nullptr, find(after, after.hidden), fit);
    }
    const AnyAnnotation* wasSelected = find(before, before.selected);
    const AnyAnnotation* isSelected = find(after, after.selected);
    if (before.selected != after.selected || (isSelected && wasSelected && *isSelected != *wasSelected))
        damage += selectionDamage(wasSelected, fit) + selectionDamage(isSelected, fit);
    damage += cropDamage(before.crop, after.crop, imageSize(), fit);
    return damage;
}

void AnnotationCanvasView::everythingDidChange() {
    refit();
    shown = present();
    layoutTextEditor();
    invalidate(rect());
}

void AnnotationCanvasView::invalidate(const QRegion& region) {
    const QRegion seen = region & rect();
    if (seen.isEmpty())
        return;
    update(seen);
    Q_EMIT contentsChanged(seen);
}

void AnnotationCanvasView::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    paintContents(painter, event->region());
}

void AnnotationCanvasView::paintContents(QPainter& painter, const QRegion& region) {
    CanvasPainter::Scene scene;
    scene.backdrop.view = size();
    scene.backdrop.fit = fit;
    scene.backdrop.scheme = platform::services().appearance.colorScheme();
    if (doc)
        scene.backdrop.base = doc->baseImage();
    scene.annotations = shown.annotations;
    scene.inProgress = shown.inProgress;
    scene.selected = shown.selected;
    scene.hidden = shown.hidden;
    scene.crop = shown.crop;
    painting->paint(painter, region, std::move(scene));
    if (editor)
        paintTextEditor(painter);
}

void AnnotationCanvasView::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    everythingDidChange();
}

void AnnotationCanvasView::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    if (!window()->focusWidget())
        setFocus();
}

void AnnotationCanvasView::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton)
        mouseDown(event->position(), ClickCount::Single);
    else
        QWidget::mousePressEvent(event);
}

void AnnotationCanvasView::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton)
        mouseDown(event->position(), ClickCount::Double);
    else
        QWidget::mouseDoubleClickEvent(event);
}

void AnnotationCanvasView::mouseDown(const QPointF& viewPoint, ClickCount clicks) {
    if (!doc || !tools)
        return;
    if (session) {
        commitTextEdit(); // that press only ends the edit
        return;
    }
    setFocus(Qt::MouseFocusReason);
    const QPointF point = fit.toImage(viewPoint);
    if (tools->currentTool() == ToolType::crop) {
        pointer.reset();
        contentsDidChange();
        if (!doc->baseImage().isNull())
            crop.mouseDown(*tools, point, imageSize(), fit.scale);
        return;
    }
    const auto request = pointer.mouseDown(*doc, *tools, point, fit.scale, clicks);
    contentsDidChange();
    if (request)
        beginTextEdit(request->session, request->text);
}

// A key may choose the crop tool in the middle of a drag: what was begun with another tool is ended with it.
bool AnnotationCanvasView::isCropping() const {
    return tools->currentTool() == ToolType::crop &&
           pointer.interaction().kind == InteractionState::Kind::idle;
}

void AnnotationCanvasView::mouseMoveEvent(QMouseEvent* event) {
    if (!doc || !tools || !(event->buttons() & Qt::LeftButton))
        return;
    const QPointF point = fit.toImage(event->position());
    if (isCropping()) {
        crop.mouseDragged(*tools, point, imageSize(), fit.scale);
        return;
    }
    pointer.mouseDragged(*doc, point);
    contentsDidChange();
}

void AnnotationCanvasView::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || !doc || !tools)
        return;
    if (isCropping()) {
        crop.mouseUp(*tools);
        return;
    }
    pointer.mouseUp(*doc);
    contentsDidChange();
}

} // namespace marrowfin::editor
