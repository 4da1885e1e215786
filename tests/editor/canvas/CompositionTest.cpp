// Input methods: what is composed stands in the text, and what is committed is what was seen.
#include "CanvasFixture.h"

#include "annotation/TextLayout.h"

namespace marrowfin::editor {

using namespace annotation;
namespace {

class Composition : public CanvasFixture {
protected:
    Composition() {
        choose(ToolType::text);
        click({100, 100});
    }
    InlineTextEditor& editor() { return *canvas->textEditor(); }
    void compose(const QString& text, std::optional<int> caret = {}) {
        QList<QInputMethodEvent::Attribute> attributes;
        if (caret)
            attributes.append({QInputMethodEvent::Cursor, *caret, 1, {}});
        QInputMethodEvent event(text, attributes);
        QApplication::sendEvent(&editor(), &event);
    }
    void commit(const QString& text) {
        QInputMethodEvent event;
        event.setCommitString(text);
        QApplication::sendEvent(&editor(), &event);
    }
    QRectF caretAt(const QString& text, int position) {
        return TextLayout(text, 24).caretRect(position).translated(100, 100);
    }
    QString typed() {
        canvas->commitTextEdit();
        const auto* record = last<TextAnnotation>();
        return record ? record->text : QString();
    }
};

TEST_F(Composition, AccentsComeByComposing) {
    compose(QStringLiteral("´"));
    EXPECT_EQ(editor().shownText(), QStringLiteral("´"));
    compose({});
    commit(QStringLiteral("é"));
    EXPECT_EQ(typed(), QStringLiteral("é"));
}

TEST_F(Composition, StandsInTheMiddleOfTheText) {
    type(QStringLiteral("ab"));
    key(Qt::Key_Left);
    compose(QStringLiteral("にほん"), 2);
    EXPECT_EQ(editor().shownText(), QStringLiteral("aにほんb"));
    EXPECT_EQ(editor().caretRect(), caretAt(QStringLiteral("aにほんb"), 3));
    EXPECT_EQ(editor().toPlainText(), QStringLiteral("ab"));
    compose({});
    commit(QStringLiteral("日本"));
    EXPECT_EQ(editor().shownText(), QStringLiteral("a日本b"));
    EXPECT_EQ(editor().caretRect(), caretAt(QStringLiteral("a日本b"), 3));
    EXPECT_EQ(typed(), QStringLiteral("a日本b"));
}

TEST_F(Composition, TakesTheSelectionsPlace) {
    type(QStringLiteral("abc"));
    key(Qt::Key_A, Qt::ControlModifier);
    compose(QStringLiteral("한"));
    EXPECT_EQ(editor().shownText(), QStringLiteral("한"));
    compose({});
    EXPECT_EQ(editor().shownText(), QString());
}

TEST_F(Composition, AnAbandonedOneLeavesTheText) {
    type(QStringLiteral("keep"));
    compose(QStringLiteral("x"));
    compose({});
    EXPECT_EQ(typed(), QStringLiteral("keep"));
}

TEST_F(Composition, WhatIsSeenWhenTheEditEndsIsKept) {
    type(QStringLiteral("to"));
    compose(QStringLiteral("東京"));
    EXPECT_EQ(typed(), QStringLiteral("to東京"));
}

TEST_F(Composition, RightToLeftTextBeginsAtTheBaselinesEnd) {
    commit(QStringLiteral("שלום"));
    EXPECT_EQ(editor().caretRect(), caretAt(QStringLiteral("שלום"), 4));
    EXPECT_NEAR(editor().caretRect().x(), 100, 0.5); // its end is at the left
    commit(QStringLiteral(" abc"));
    EXPECT_EQ(typed(), QStringLiteral("שלום abc"));
}

TEST_F(Composition, CandidatesStandByTheCaret) {
    commit(QStringLiteral("ab\ncd"));
    const QRectF caret = canvas->imageRect().topLeft().isNull()
                             ? editor().caretRect()
                             : editor().caretRect().translated(canvas->imageRect().topLeft());
    QInputMethodQueryEvent query(Qt::ImCursorRectangle);
    QApplication::sendEvent(&editor(), &query);
    const QRect told = query.value(Qt::ImCursorRectangle).toRect().translated(editor().pos());
    EXPECT_EQ(told, caret.toAlignedRect());
    QVariant byName;
    QMetaObject::invokeMethod(&editor(), "inputMethodQuery", Q_RETURN_ARG(QVariant, byName),
                              Q_ARG(Qt::InputMethodQuery, Qt::ImCursorRectangle),
                              Q_ARG(QVariant, QVariant()));
    EXPECT_EQ(byName.toRect().translated(editor().pos()), told);
}

TEST_F(Composition, APressInTheTextKeepsWhatWasComposed) {
    type(QStringLiteral("a"));
    compose(QStringLiteral("語"));
    pressMouse(*editor().viewport(), {1, 5});
    EXPECT_EQ(editor().toPlainText(), QStringLiteral("a語"));
    EXPECT_EQ(editor().textCursor().position(), 0);
}

TEST_F(Composition, IsUnderlinedInItsPlace) {
    type(QStringLiteral("ab"));
    const QImage before = shot();
    compose(QStringLiteral("語"));
    const QRectF line = canvas->imageRect();
    const QRectF second = caretAt(QStringLiteral("ab語"), 3).translated(line.topLeft());
    const QImage after = shot();
    EXPECT_NE(after.copy(second.toAlignedRect().adjusted(-20, 0, -2, 0)),
              before.copy(second.toAlignedRect().adjusted(-20, 0, -2, 0)));
}

} // namespace
} // namespace marrowfin::editor
