#include "editor/InlineTextEditor.h"

#include "annotation/TextAnnotation.h"
#include "annotation/TextLayout.h"
#include "base/ColorAlpha.h"
#include "base/SystemColors.h"
#include "base/SystemFonts.h"

#include <QApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QStyleHints>
#include <QTextBlock>
#include <QTextDocument>
#include <algorithm>
#include <cmath>

namespace marrowfin::editor {

using namespace annotation;

namespace {

constexpr double narrowest = 2.0;      // view points
constexpr double selectionAlpha = 0.3; // the selected letters stay readable
constexpr double caretWidth = 1.0;     // view points

bool leavesForAnotherWindow(Qt::FocusReason reason) {
    return reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason ||
           reason == Qt::MenuBarFocusReason;
}

QColor selectionColor() {
    return withAlpha(systemColor(SystemColor::blue), selectionAlpha);
}

} // namespace

InlineTextEditor::InlineTextEditor(const TextSession& session, const QString& text, QWidget* canvas)
    : QPlainTextEdit(canvas), session(session) {
    configure();
    setPlainText(text);
    moveCursor(QTextCursor::End);
    connect(this, &QPlainTextEdit::textChanged, this, &InlineTextEditor::changed);
    connect(this, &QPlainTextEdit::cursorPositionChanged, this, &InlineTextEditor::changed);
    connect(this, &QPlainTextEdit::selectionChanged, this, &InlineTextEditor::changed);
    connect(&blink, &QTimer::timeout, this, [this] {
        caretShown = !caretShown;
        if (caretDidBlink)
            caretDidBlink();
    });
}

void InlineTextEditor::configure() {
    setAccessibleName(QStringLiteral("Text on the image"));
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setLineWrapMode(QPlainTextEdit::NoWrap);
    setUndoRedoEnabled(true);
    setCursorWidth(0); // the caret on the canvas is the only one
    setAcceptDrops(false);
    document()->setDocumentMargin(0);
    setMinimumSize(0, 0);
    viewport()->setAutoFillBackground(false);
    viewport()->setAcceptDrops(false);
    setAutoFillBackground(false);
    QPalette colors = palette();
    colors.setColor(QPalette::Text, session.color);
    colors.setColor(QPalette::Base, Qt::transparent);
    setPalette(colors);
}

QString InlineTextEditor::shownText() const {
    QString text = toPlainText();
    text.insert(std::min<qsizetype>(composition.position, text.size()), composition.text);
    return text;
}

QRectF InlineTextEditor::frameAt(const CanvasFit& at) const {
    const TextLayout layout(shownText(), session.fontSize);
    const QRectF used = layout.rect();
    // Room for the caret behind the last letter.
    const double room = std::max(session.fontSize * at.scale * 0.15, 2.0);
    const QPointF baseline = at.toView(session.baseline);
    return {baseline.x(), baseline.y() + used.top() * at.scale,
            std::max(narrowest, used.width() * at.scale) + room, used.height() * at.scale};
}

void InlineTextEditor::layoutAt(const CanvasFit& at) {
    fit = at;
    if (const QFont onScreen = systemFont(session.fontSize * fit.scale, QFont::Medium); font() != onScreen)
        setFont(onScreen);
    setGeometry(frameAt(fit).toAlignedRect());
    updateMicroFocus();
}

int InlineTextEditor::caretPosition() const {
    return textCursor().position() + (composition.text.isEmpty() ? 0 : composition.caret);
}

QRectF InlineTextEditor::caretRect() const {
    return TextLayout(shownText(), session.fontSize).caretRect(caretPosition()).translated(session.baseline);
}

QRectF InlineTextEditor::inkBounds() const {
    const QRectF lines = TextLayout(shownText(), session.fontSize).rect().translated(session.baseline);
    // Accents and other scripts rise above their line, slanted letters lean out of it.
    return lines.adjusted(-session.fontSize, -session.fontSize, session.fontSize, session.fontSize);
}

void InlineTextEditor::paintBehind(QPainter& painter, int from, int to, const QColor& color) const {
    const TextLayout layout(shownText(), session.fontSize);
    for (const QRectF& rect : layout.rangeRects(from, to))
        painter.fillRect(rect.translated(session.baseline), color);
}

void InlineTextEditor::paintOn(QPainter& painter) const {
    const QTextCursor cursor = textCursor();
    if (cursor.hasSelection())
        paintBehind(painter, cursor.selectionStart(), cursor.selectionEnd(), selectionColor());
    TextAnnotation ink;
    ink.strokeColor = session.color;
    ink.position = session.baseline;
    ink.text = shownText();
    ink.fontSize = session.fontSize;
    ink.draw(painter);
    paintComposition(painter);
    paintCaret(painter);
}

void InlineTextEditor::paintComposition(QPainter& painter) const {
    if (composition.text.isEmpty())
        return;
    const TextLayout layout(shownText(), session.fontSize);
    const double thickness = std::max(1.0 / fit.scale, session.fontSize / 16);
    const int end = composition.position + static_cast<int>(composition.text.size());
    for (const QRectF& rect : layout.rangeRects(composition.position, end)) {
        const QRectF line(rect.x(), rect.bottom() - thickness, rect.width(), thickness);
        painter.fillRect(line.translated(session.baseline), session.color);
    }
}

void InlineTextEditor::paintCaret(QPainter& painter) const {
    if (!caretShown || !hasFocus() || !composition.showsCaret)
        return;
    // On whole device pixels, so that it is one sharp line at every fit.
    const QRectF caret = caretRect();
    const QTransform toDevice = painter.deviceTransform();
    const double width = std::max(1.0, std::round(caretWidth * toDevice.m11() / fit.scale));
    const QRectF device = toDevice.mapRect(caret);
    painter.save();
    painter.setTransform(toDevice.inverted(), true);
    painter.fillRect(QRectF(std::round(device.x()), device.y(), width, device.height()), session.color);
    painter.restore();
}

void InlineTextEditor::changed() {
    caretShown = true;
    if (const int time = QGuiApplication::styleHints()->cursorFlashTime(); time > 0 && hasFocus())
        blink.start(time / 2);
    if (textDidChange)
        textDidChange();
}

QVariant InlineTextEditor::inputMethodQuery(Qt::InputMethodQuery query) const {
    return inputMethodQuery(query, {});
}

QVariant InlineTextEditor::inputMethodQuery(Qt::InputMethodQuery query, const QVariant& argument) const {
    // The candidates of an input method stand by the caret that is seen, not by this widget's own.
    if (query == Qt::ImCursorRectangle || query == Qt::ImAnchorRectangle)
        return fit.toView(caretRect()).translated(-pos()).toAlignedRect();
    return QPlainTextEdit::inputMethodQuery(query, argument);
}

void InlineTextEditor::inputMethodEvent(QInputMethodEvent* event) {
    QPlainTextEdit::inputMethodEvent(event);
    composition = {};
    composition.position = textCursor().position();
    composition.text = event->preeditString();
    composition.caret = static_cast<int>(composition.text.size());
    for (const QInputMethodEvent::Attribute& attribute : event->attributes())
        if (attribute.type == QInputMethodEvent::Cursor) {
            composition.caret = std::clamp(attribute.start, 0, static_cast<int>(composition.text.size()));
            composition.showsCaret = attribute.length != 0;
        }
    changed();
}

void InlineTextEditor::keepComposition() {
    if (composition.text.isEmpty())
        return;
    QInputMethodEvent keep;
    keep.setCommitString(composition.text);
    inputMethodEvent(&keep);
    QGuiApplication::inputMethod()->reset();
}

void InlineTextEditor::keyPressEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Escape) {
        QPlainTextEdit::keyPressEvent(event);
        return;
    }
    event->accept();
    // A copy: the commit lets go of this editor and of its callbacks.
    if (const auto commit = onEscapeCommit)
        commit();
}

void InlineTextEditor::focusInEvent(QFocusEvent* event) {
    QPlainTextEdit::focusInEvent(event);
    changed();
}

void InlineTextEditor::focusOutEvent(QFocusEvent* event) {
    QPlainTextEdit::focusOutEvent(event);
    blink.stop();
    if (caretDidBlink)
        caretDidBlink();
    if (const auto ended = textDidEndEditing; ended && !leavesForAnotherWindow(event->reason()))
        ended();
}

int InlineTextEditor::positionAt(const QPointF& local) const {
    const QPointF point = fit.toImage(QPointF(pos()) + local) - session.baseline;
    return TextLayout(toPlainText(), session.fontSize).positionAt(point);
}

void InlineTextEditor::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton)
        return;
    keepComposition();
    QTextCursor cursor = textCursor();
    if (lastDoubleClick.isValid() &&
        lastDoubleClick.elapsed() < QGuiApplication::styleHints()->mouseDoubleClickInterval()) {
        cursor.select(QTextCursor::LineUnderCursor);
        lastDoubleClick.invalidate();
    } else {
        cursor.setPosition(positionAt(event->position()), event->modifiers() & Qt::ShiftModifier
                                                              ? QTextCursor::KeepAnchor
                                                              : QTextCursor::MoveAnchor);
    }
    setTextCursor(cursor);
}

void InlineTextEditor::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton)
        return;
    QTextCursor cursor = textCursor();
    cursor.setPosition(positionAt(event->position()));
    cursor.select(QTextCursor::WordUnderCursor);
    setTextCursor(cursor);
    lastDoubleClick.start();
}

void InlineTextEditor::mouseMoveEvent(QMouseEvent* event) {
    if (!(event->buttons() & Qt::LeftButton))
        return;
    QTextCursor cursor = textCursor();
    cursor.setPosition(positionAt(event->position()), QTextCursor::KeepAnchor);
    setTextCursor(cursor);
}

// The rest of what a text widget does with the mouse has no place here: dragging text out and menus run loops
// of their own, and there is nothing to scroll.
void InlineTextEditor::mouseReleaseEvent(QMouseEvent*) {}
void InlineTextEditor::contextMenuEvent(QContextMenuEvent* event) {
    event->ignore();
}
void InlineTextEditor::wheelEvent(QWheelEvent* event) {
    event->ignore();
}
void InlineTextEditor::paintEvent(QPaintEvent*) {}

} // namespace marrowfin::editor
