// Text being typed on the canvas. The widget gives input, caret, selection and composition, and paints
// nothing: the canvas paints the text through the record's own drawing, where the ink will stand. The frame
// is in the canvas's view points, the session in image points. A child of the canvas. Main thread.
#pragma once

#include "editor/CanvasFit.h"
#include "editor/TextSession.h"

#include <QElapsedTimer>
#include <QInputMethodEvent>
#include <QPlainTextEdit>
#include <QTimer>
#include <functional>

namespace marrowfin::editor {

class InlineTextEditor : public QPlainTextEdit {
    Q_OBJECT
public:
    InlineTextEditor(const TextSession& session, const QString& text, QWidget* canvas);

    // Called on Escape, and nothing else happens then.
    std::function<void()> onEscapeCommit;
    // Called whenever what is shown has changed: text, composition, selection, caret.
    std::function<void()> textDidChange;
    // Called when the caret came or went.
    std::function<void()> caretDidBlink;
    // Called when the keyboard has gone elsewhere in this window.
    std::function<void()> textDidEndEditing;

    // The text with the composition in its place: what stands on the canvas, and what a commit keeps.
    QString shownText() const;
    // Where the ink stands at this fit, with room for the caret at the line's end.
    QRectF frameAt(const CanvasFit& fit) const;
    // Takes the place of the ink at this fit. The font is the one on the screen.
    void layoutAt(const CanvasFit& fit);
    // Paints text, selection, composition and caret. The painter's user space is image points.
    void paintOn(QPainter& painter) const;
    // The caret in image points, as high as its line, without width.
    QRectF caretRect() const;
    // Where the ink of text, selection and caret may be, in image points.
    QRectF inkBounds() const;

    QVariant inputMethodQuery(Qt::InputMethodQuery query) const override;
    // Found by name, ahead of the text widget's own.
    Q_INVOKABLE QVariant inputMethodQuery(Qt::InputMethodQuery query, const QVariant& argument) const;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    struct Composition {
        int position = 0; // in the text
        QString text;
        int caret = 0; // in the composition
        bool showsCaret = true;
    };
    void configure();
    int positionAt(const QPointF& local) const;
    int caretPosition() const;
    void paintBehind(QPainter& painter, int from, int to, const QColor& color) const;
    void paintComposition(QPainter& painter) const;
    void paintCaret(QPainter& painter) const;
    // What is composed stays as it is seen, and the input method begins anew.
    void keepComposition();
    void changed();

    TextSession session;
    CanvasFit fit;
    Composition composition;
    QTimer blink;
    QElapsedTimer lastDoubleClick;
    bool caretShown = true;
};

} // namespace marrowfin::editor
