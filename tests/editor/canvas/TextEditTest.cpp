// Typing on the canvas.
#include "CanvasFixture.h"

#include "annotation/ImageCompositor.h"
#include "support/LoopWatch.h"

#include <QClipboard>
#include <QDropEvent>
#include <QMimeData>
#include <QPushButton>

namespace marrowfin::editor {

using namespace annotation;
using namespace imaging;
namespace {

class TextEdit : public CanvasFixture {
protected:
    TextEdit() { choose(ToolType::text); }
    InlineTextEditor* editor() { return canvas->textEditor(); }
    QUuid addText(const QString& words) {
        const TextAnnotation record = text({100, 100}, words);
        document.add(record);
        return record.id;
    }
};

TEST_F(TextEdit, TwoLinesBecomeOneText) {
    click({100, 100});
    ASSERT_TRUE(editor());
    EXPECT_EQ(window.focusWidget(), editor());
    type(QStringLiteral("one"));
    EXPECT_EQ(count(), 0);
    key(Qt::Key_Return, Qt::NoModifier, QStringLiteral("\r"));
    type(QStringLiteral("two"));
    key(Qt::Key_Escape);
    EXPECT_FALSE(editor());
    ASSERT_TRUE(last<TextAnnotation>());
    EXPECT_EQ(last<TextAnnotation>()->text, QStringLiteral("one\ntwo"));
    EXPECT_EQ(last<TextAnnotation>()->position, QPointF(100, 100));
    EXPECT_EQ(last<TextAnnotation>()->strokeWidth, 3.0);
    EXPECT_EQ(last<TextAnnotation>()->fontSize, 24.0);
    EXPECT_FALSE(document.selectedAnnotationID());
    EXPECT_EQ(document.undoStack().size(), 1);
    EXPECT_EQ(window.focusWidget(), canvas);
}

TEST_F(TextEdit, NothingTypedIsNothing) {
    const QImage before = shot();
    click({100, 100});
    key(Qt::Key_Escape);
    EXPECT_EQ(count(), 0);
    EXPECT_EQ(document.undoStack().size(), 0);
    EXPECT_EQ(shot(), before);
}

TEST_F(TextEdit, BlanksAreNothingAndThePressThatEndsThemStartsNothing) {
    click({100, 100});
    type(QStringLiteral("  \n "));
    drag({400, 300}, {500, 350});
    EXPECT_FALSE(editor());
    EXPECT_EQ(count(), 0);
    choose(ToolType::rectangle);
    choose(ToolType::text);
    click({100, 100});
    type(QStringLiteral("x"));
    click({400, 300});
    EXPECT_FALSE(editor());
    EXPECT_EQ(count(), 1);
}

TEST_F(TextEdit, SpacesAroundWordsAreKept) {
    click({100, 100});
    type(QStringLiteral("  a "));
    canvas->commitTextEdit();
    ASSERT_TRUE(last<TextAnnotation>());
    EXPECT_EQ(last<TextAnnotation>()->text, QStringLiteral("  a "));
}

TEST_F(TextEdit, AnotherToolEndsIt) {
    click({100, 100});
    type(QStringLiteral("word"));
    choose(ToolType::arrow);
    EXPECT_FALSE(editor());
    EXPECT_EQ(count(), 1);
    choose(ToolType::text);
    click({300, 300});
    type(QStringLiteral("word"));
    tools.setCurrentTool(ToolType::text); // chosen once more
    EXPECT_FALSE(editor());
    EXPECT_EQ(count(), 2);
}

TEST_F(TextEdit, LettersAreTypedAndChooseNoTool) {
    click({100, 100});
    type(QStringLiteral("vcr"));
    EXPECT_EQ(tools.currentTool(), ToolType::text);
    EXPECT_EQ(editor()->toPlainText(), QStringLiteral("vcr"));
    key(Qt::Key_Backspace);
    EXPECT_EQ(editor()->toPlainText(), QStringLiteral("vc"));
}

TEST_F(TextEdit, UndoInsideIsOfTheTyping) {
    document.add(badge({300, 300}));
    click({100, 100});
    type(QStringLiteral("abc"));
    undo();
    EXPECT_EQ(count(), 1);
    EXPECT_EQ(editor()->toPlainText(), QString());
    undo(); // nothing more to undo here, and none of the document's
    EXPECT_EQ(count(), 1);
    redo();
    EXPECT_EQ(editor()->toPlainText(), QStringLiteral("abc"));
}

TEST_F(TextEdit, OneClickOpensATextWithItsToolTwoWithSelect) {
    const QUuid id = addText(QStringLiteral("words"));
    click({120, 95});
    ASSERT_TRUE(editor());
    EXPECT_EQ(canvas->textSession()->annotationID, id);
    EXPECT_EQ(editor()->toPlainText(), QStringLiteral("words"));
    EXPECT_EQ(editor()->textCursor().position(), 5);
    EXPECT_FALSE(editor()->textCursor().hasSelection());
    key(Qt::Key_Escape);
    choose(ToolType::select);
    click({120, 95});
    EXPECT_FALSE(editor());
    EXPECT_EQ(document.selectedAnnotationID(), id);
    doubleClick({120, 95});
    ASSERT_TRUE(editor());
    EXPECT_FALSE(document.selectedAnnotationID());
}

TEST_F(TextEdit, NewWordsKeepTheRecord) {
    const QUuid id = addText(QStringLiteral("old words"));
    click({120, 95});
    key(Qt::Key_A, Qt::ControlModifier);
    type(QStringLiteral("NEW WORDS"));
    EXPECT_EQ(last<TextAnnotation>()->text, QStringLiteral("old words"));
    key(Qt::Key_Escape);
    EXPECT_EQ(count(), 1);
    EXPECT_EQ(last<TextAnnotation>()->id, id);
    EXPECT_EQ(last<TextAnnotation>()->text, QStringLiteral("NEW WORDS"));
    EXPECT_FALSE(document.selectedAnnotationID());
    undo();
    EXPECT_EQ(last<TextAnnotation>()->text, QStringLiteral("old words"));
}

TEST_F(TextEdit, UnchangedWordsAreNoStep) {
    addText(QStringLiteral("same"));
    click({120, 95});
    key(Qt::Key_Escape);
    EXPECT_EQ(document.undoStack().size(), 1);
}

TEST_F(TextEdit, WipedWordsAreRemoved) {
    const QImage before = shot();
    addText(QStringLiteral("gone"));
    click({120, 95});
    key(Qt::Key_A, Qt::ControlModifier);
    key(Qt::Key_Backspace);
    key(Qt::Key_Escape);
    EXPECT_EQ(count(), 0);
    EXPECT_EQ(document.undoStack().size(), 2);
    EXPECT_EQ(shot(), before);
    undo();
    EXPECT_EQ(count(), 1);
}

TEST_F(TextEdit, APressOnTheChromeEndsItAndIsDelivered) {
    auto* button = new QPushButton(&window);
    button->setFocusPolicy(Qt::NoFocus);
    button->setGeometry(0, 0, 60, 20);
    button->show();
    int clicks = 0;
    QObject::connect(button, &QPushButton::clicked, [&] { ++clicks; });
    click({100, 100});
    type(QStringLiteral("x"));
    clickMouse(*button, {5, 5});
    EXPECT_FALSE(editor());
    EXPECT_EQ(count(), 1);
    EXPECT_EQ(clicks, 1);
}

TEST_F(TextEdit, APressInAnotherWindowDoesNot) {
    QWidget other;
    other.show();
    click({100, 100});
    type(QStringLiteral("x"));
    clickMouse(other, {5, 5});
    EXPECT_TRUE(editor());
}

void loseFocus(QWidget& widget, Qt::FocusReason reason) {
    QFocusEvent event(QEvent::FocusOut, reason);
    QApplication::sendEvent(&widget, &event);
}

TEST_F(TextEdit, LosingTheKeyboardWithinTheWindowEndsIt) {
    click({100, 100});
    type(QStringLiteral("x"));
    loseFocus(*editor(), Qt::TabFocusReason);
    EXPECT_FALSE(editor());
    EXPECT_EQ(count(), 1);
}

TEST_F(TextEdit, AControlThatTakesTheKeyboardEndsItAndTheCanvasHasItAgain) {
    auto* field = new QPushButton(&window);
    field->setFocusPolicy(Qt::StrongFocus);
    field->setGeometry(0, 0, 60, 20);
    field->show();
    click({100, 100});
    type(QStringLiteral("x"));
    field->setFocus();
    EXPECT_FALSE(editor());
    EXPECT_EQ(count(), 1);
    EXPECT_EQ(window.focusWidget(), canvas);
}

TEST_F(TextEdit, AnotherDocumentGetsNothingOfIt) {
    AnnotationDocument other(Image::captured(page(300, 200)));
    click({100, 100});
    type(QStringLiteral("x"));
    canvas->setDocument(&other);
    EXPECT_FALSE(editor());
    EXPECT_EQ(count(), 1);
    EXPECT_TRUE(other.annotations().isEmpty());
    canvas->setDocument(&document);
}

TEST_F(TextEdit, AnotherWindowAPopupOrAMenuDoesNot) {
    click({100, 100});
    type(QStringLiteral("x"));
    for (const auto reason : {Qt::ActiveWindowFocusReason, Qt::PopupFocusReason, Qt::MenuBarFocusReason}) {
        loseFocus(*editor(), reason);
        EXPECT_TRUE(editor());
    }
}

TEST_F(TextEdit, SelectionAndCaretFollowTheMouse) {
    click({100, 100});
    type(QStringLiteral("hello wide world"));
    const TextAnnotation ink = text({100, 100}, editor()->toPlainText());
    const QRectF box = ink.boundingRect();
    const QPointF localStart(1, 10);
    const QPointF localEnd(box.width() + 20, 10);
    pressMouse(*editor()->viewport(), localStart);
    EXPECT_EQ(editor()->textCursor().position(), 0);
    moveMouse(*editor()->viewport(), localEnd);
    EXPECT_EQ(editor()->textCursor().selectedText(), QStringLiteral("hello wide world"));
    releaseMouse(*editor()->viewport(), localEnd);
    sendMouse(*editor()->viewport(), QEvent::MouseButtonDblClick, localStart, Qt::LeftButton, Qt::LeftButton);
    EXPECT_EQ(editor()->textCursor().selectedText(), QStringLiteral("hello"));
    EXPECT_TRUE(editor());
}

TEST_F(TextEdit, MovingTheWindowsSizeMovesTheEditWithTheImage) {
    click({100, 100});
    type(QStringLiteral("word"));
    const QRect before = editor()->geometry();
    canvas->resize(840, 500);
    EXPECT_EQ(editor()->geometry(), before.translated(100, 50));
}

TEST_F(TextEdit, DropsAreRefused) {
    click({100, 100});
    EXPECT_FALSE(editor()->acceptDrops());
    EXPECT_FALSE(editor()->viewport()->acceptDrops());
}

TEST_F(TextEdit, PastedTextIsPlain) {
    auto* rich = new QMimeData;
    rich->setHtml(QStringLiteral("<b>bold</b>"));
    rich->setText(QStringLiteral("bold"));
    QGuiApplication::clipboard()->setMimeData(rich);
    click({100, 100});
    key(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(editor()->toPlainText(), QStringLiteral("bold"));
    key(Qt::Key_Escape);
    EXPECT_EQ(last<TextAnnotation>()->text, QStringLiteral("bold"));
}

TEST_F(TextEdit, TheCopyThatTheChromeMakesHoldsTheInk) {
    const QImage without = ImageCompositor::composite(document).pixels();
    click({100, 100});
    type(QStringLiteral("ink"));
    canvas->commitTextEdit();
    EXPECT_FALSE(editor());
    EXPECT_NE(ImageCompositor::composite(document).pixels(), without);
    canvas->commitTextEdit(); // without an edit it does nothing
    EXPECT_EQ(count(), 1);
}

TEST_F(TextEdit, ClosingDuringAnEditIsSafe) {
    click({100, 100});
    type(QStringLiteral("dropped"));
    delete canvas;
    QCoreApplication::processEvents();
    EXPECT_EQ(count(), 0);
}

TEST_F(TextEdit, ADocumentThatGoesDuringAnEditTakesTheTextWithIt) {
    auto brief = std::make_unique<AnnotationDocument>(Image::captured(page(640, 400)));
    canvas->setDocument(brief.get());
    click({100, 100});
    type(QStringLiteral("x"));
    brief.reset();
    canvas->commitTextEdit();
    EXPECT_FALSE(editor());
}

TEST_F(TextEdit, NoLoopRunsInsideAnEdit) {
    const LoopWatch watch;
    click({100, 100});
    type(QStringLiteral("one\ntwo"));
    clickMouse(*editor()->viewport(), {3, 3});
    clickMouse(*editor()->viewport(), {3, 3}, Qt::RightButton);
    dragMouse(*editor()->viewport(), {1, 8}, {60, 8});
    dragMouse(*editor()->viewport(), {20, 8}, {200, 200}); // selected text isn't dragged out
    QContextMenuEvent menu(QContextMenuEvent::Mouse, {3, 3}, editor()->mapToGlobal(QPoint(3, 3)));
    QApplication::sendEvent(editor()->viewport(), &menu);
    key(Qt::Key_Escape);
    EXPECT_EQ(watch.nested(), 0);
    EXPECT_FALSE(QApplication::activeModalWidget());
    EXPECT_FALSE(QApplication::activePopupWidget());
}

class HalvedTextEdit : public CanvasFixture {
protected:
    HalvedTextEdit() : CanvasFixture(page(1280, 800), {640, 400}) { choose(ToolType::text); }
};

TEST_F(HalvedTextEdit, IsTypedInTheSizeItWillHave) {
    click({200, 200});
    ASSERT_TRUE(canvas->textEditor());
    const QFont font = canvas->textEditor()->font();
    EXPECT_EQ(font.pixelSize() > 0 ? font.pixelSize() : font.pointSizeF() * 96 / 72, 12);
}

} // namespace
} // namespace marrowfin::editor
