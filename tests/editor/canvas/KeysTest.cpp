#include "CanvasFixture.h"

namespace marrowfin::editor {

using namespace annotation;
namespace {

class CanvasKeys : public CanvasFixture {};

TEST_F(CanvasKeys, LettersChooseTools) {
    for (const ToolType tool : allToolTypes) {
        const QChar letter = keyboardLetter(tool);
        key(letter.toUpper().unicode(), Qt::NoModifier, QString(letter));
        EXPECT_EQ(tools.currentTool(), tool) << rawValue(tool).toStdString();
        if (canvas->textEditor())
            canvas->commitTextEdit();
    }
}

TEST_F(CanvasKeys, AnyModifierMakesALetterSomethingElse) {
    key(Qt::Key_V, Qt::ShiftModifier, QStringLiteral("V"));
    key(Qt::Key_V, Qt::NoModifier, QStringLiteral("V")); // caps lock
    key(Qt::Key_V, Qt::AltModifier, QStringLiteral("v"));
    key(Qt::Key_C, Qt::ControlModifier, QStringLiteral("\x03"));
    EXPECT_EQ(tools.currentTool(), ToolType::arrow);
}

TEST_F(CanvasKeys, UndoAndRedo) {
    document.add(badge({50, 50}));
    undo();
    EXPECT_EQ(count(), 0);
    redo();
    EXPECT_EQ(count(), 1);
}

TEST_F(CanvasKeys, WhatIsNotItsOwnGoesOn) {
    struct Parent : QWidget {
        QList<int> keys;
        void keyPressEvent(QKeyEvent* event) override { keys.append(event->key()); }
    } parent;
    canvas->setParent(&parent);
    parent.show();
    canvas->show();
    canvas->setFocus();
    pressKey(*canvas, Qt::Key_S, Qt::ControlModifier);
    pressKey(*canvas, Qt::Key_Escape);
    pressKey(*canvas, Qt::Key_Return);
    pressKey(*canvas, Qt::Key_R, Qt::NoModifier, QStringLiteral("r"));
    EXPECT_EQ(parent.keys, (QList<int>{Qt::Key_S, Qt::Key_Escape, Qt::Key_Return}));
    canvas->setParent(&window);
}

TEST_F(CanvasKeys, ThePendingCropGoesWithItsTool) {
    key(Qt::Key_C, Qt::NoModifier, QStringLiteral("c"));
    tools.setCropAspect(CropAspect::square);
    drag({100, 100}, {200, 200});
    EXPECT_TRUE(tools.cropRect());
    key(Qt::Key_C, Qt::NoModifier, QStringLiteral("c"));
    EXPECT_TRUE(tools.cropRect());
    key(Qt::Key_V, Qt::NoModifier, QStringLiteral("v"));
    EXPECT_FALSE(tools.cropRect());
    key(Qt::Key_C, Qt::NoModifier, QStringLiteral("c"));
    EXPECT_FALSE(tools.cropRect());
    EXPECT_EQ(tools.cropAspect(), CropAspect::square);
}

TEST_F(CanvasKeys, ALetterInTheMiddleOfADragLeavesNoGhost) {
    for (const ToolType tool : {ToolType::crop, ToolType::select, ToolType::text}) {
        choose(ToolType::rectangle);
        press({100, 100});
        dragTo({200, 150});
        const QChar letter = keyboardLetter(tool);
        key(letter.toUpper().unicode(), Qt::NoModifier, QString(letter));
        dragTo({300, 200});
        release({300, 200});
        ASSERT_EQ(count(), 1) << rawValue(tool).toStdString();
        EXPECT_EQ(last<RectangleAnnotation>()->box(), QRectF(100, 100, 200, 100));
        EXPECT_FALSE(tools.cropRect());
        EXPECT_EQ(tools.currentTool(), tool);
        const QImage before = shot();
        undo();
        EXPECT_EQ(count(), 0);
        EXPECT_NE(shot(), before);
        EXPECT_FALSE(canvas->interaction().inProgressAnnotation());
    }
}

TEST_F(CanvasKeys, ADragWhoseReleaseWentElsewhereIsForgottenWithTheNextPress) {
    const QImage empty = shot();
    for (const ToolType tool : {ToolType::crop, ToolType::select}) {
        choose(ToolType::rectangle);
        press({100, 100});
        dragTo({200, 150});
        choose(tool);
        click({400, 300});
        EXPECT_EQ(count(), 0);
        EXPECT_EQ(shot(), empty);
    }
}

TEST_F(CanvasKeys, TheCanvasHasTheKeyboardWhenItIsShown) {
    EXPECT_EQ(window.focusWidget(), canvas);
}

} // namespace
} // namespace marrowfin::editor
