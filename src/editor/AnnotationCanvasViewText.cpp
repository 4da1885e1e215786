// The open edit of text: how it begins, where it stands, and what its end leaves in the document.
#include "editor/AnnotationCanvasView.h"

#include "base/ColorAlpha.h"
#include "base/Geometry.h"
#include "base/SystemColors.h"
#include "editor/TextClickMonitor.h"
#include "platform/Desktop.h"
#include "platform/Services.h"

#include <QGuiApplication>
#include <QInputMethod>
#include <QPainter>

namespace marrowfin::editor {

using namespace annotation;

namespace {
constexpr double outlineReachX = 3.0;
constexpr double outlineReachY = 2.0;
constexpr double outlineAlpha = 0.8;
constexpr double textStrokeWidth = 3.0;

bool isBlank(const QString& text) {
    return text.trimmed().isEmpty();
}

AnyAnnotation textRecord(const TextSession& session, const QString& text) {
    TextAnnotation record;
    record.strokeColor = session.color;
    record.strokeWidth = textStrokeWidth;
    record.position = session.baseline;
    record.text = text;
    record.fontSize = session.fontSize;
    return record;
}
} // namespace

void AnnotationCanvasView::beginTextEdit(const TextSession& newSession, const QString& text) {
    commitTextEdit();
    doc->setSelectedAnnotationID(std::nullopt);
    session = newSession;
    editor = new InlineTextEditor(newSession, text, this);
    editor->onEscapeCommit = editor->textDidEndEditing = [this] { commitTextEdit(); };
    editor->textDidChange = [this] { layoutTextEditor(); };
    editor->caretDidBlink = [this] { invalidate(textEditorRegion()); };
    layoutTextEditor();
    editor->show();
    editor->setFocus();
    clickMonitor = std::make_unique<TextClickMonitor>(this, [this] { commitTextEdit(); });
    contentsDidChange();
}

void AnnotationCanvasView::layoutTextEditor() {
    if (!editor)
        return;
    editor->layoutAt(fit);
    const QRegion now = textEditorRegion();
    invalidate(now + std::exchange(editorShownIn, now));
}

QRegion AnnotationCanvasView::textEditorRegion() const {
    const QRectF outline = inset(editor->frameAt(fit), -outlineReachX - 1, -outlineReachY - 1);
    const QRectF ink = fit.toView(editor->inkBounds());
    return QRegion(unionOf(outline, ink).toAlignedRect().adjusted(-1, -1, 1, 1));
}

void AnnotationCanvasView::paintTextEditor(QPainter& painter) const {
    const QColor blue = systemColor(SystemColor::blue, platform::services().appearance.colorScheme());
    QPen dashed(withAlpha(blue, outlineAlpha), 1.0, Qt::CustomDashLine, Qt::FlatCap, Qt::MiterJoin);
    dashed.setDashPattern({4.0, 3.0});
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(dashed);
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(inset(editor->frameAt(fit), -outlineReachX, -outlineReachY));
    painter.setTransform(fit.paintTransform(painter.deviceTransform().m11()), true);
    editor->paintOn(painter);
}

void AnnotationCanvasView::commitTextEdit() {
    if (!session || !editor)
        return;
    const QString typed = editor->shownText();
    const TextSession ended = *std::exchange(session, std::nullopt);
    InlineTextEditor* closing = std::exchange(editor, nullptr);
    clickMonitor.reset();
    closing->onEscapeCommit = closing->textDidChange = closing->caretDidBlink = closing->textDidEndEditing =
        nullptr;
    // Whatever is being composed is in the text now, and must not be put anywhere a second time.
    if (closing->hasFocus())
        QGuiApplication::inputMethod()->reset();
    if (!hasFocus())
        setFocus();
    closing->hide();
    closing->deleteLater(); // this may be one of its own events
    storeTyped(ended, typed);
    invalidate(std::exchange(editorShownIn, {}));
    contentsDidChange();
}

void AnnotationCanvasView::storeTyped(const TextSession& ended, const QString& typed) {
    if (!doc)
        return;
    if (ended.annotationID && isBlank(typed))
        doc->deleteAnnotation(*ended.annotationID);
    else if (ended.annotationID)
        doc->updateText(*ended.annotationID, typed);
    else if (!isBlank(typed))
        doc->add(textRecord(ended, typed));
    doc->setSelectedAnnotationID(std::nullopt); // whichever way it ended, the text isn't left selected
}

} // namespace marrowfin::editor
