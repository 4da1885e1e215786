// Who has the keyboard, and what assistive technology is told.
#include "RootFixture.h"

#include <QAccessible>
#include <QDialog>

namespace marrowfin::editor {

using namespace annotation;
namespace {

class Keyboard : public RootFixture {
protected:
    QWidget* owner() { return root->focusWidget(); }
    QWidget* save() { return root->findChild<QDialog*>(QStringLiteral("save")); }
};

TEST_F(Keyboard, IsTheCanvasesFromTheStart) {
    EXPECT_TRUE(canvas().hasFocus());
    type("r");
    EXPECT_EQ(tools().currentTool(), ToolType::rectangle);
}

TEST_F(Keyboard, StaysWithTheCanvasThroughPressesOnTheChrome) {
    press(ToolType::rectangle);
    dragImage({100, 100}, {200, 200});
    for (const chrome::EditorButton* button : controls().buttons()) {
        if (!button->isVisible() || !button->isEnabled() || button == controls().saveButton ||
            button == controls().undoButton || button == controls().customColorButton)
            continue;
        press(button);
        EXPECT_TRUE(canvas().hasFocus()) << button->accessibleName().toStdString();
        if (tools().currentTool() != ToolType::rectangle)
            press(ToolType::rectangle);
    }
    key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(count(), 0);
}

TEST_F(Keyboard, TabGoesThroughEveryControlFromTheCanvasAndBack) {
    dragImage({100, 100}, {200, 200});
    dragImage({100, 100}, {200, 200});
    press(controls().undoButton); // so that undo and redo are both there
    QList<QWidget*> visited;
    do {
        key(Qt::Key_Tab);
        visited.append(owner());
    } while (owner() != &canvas() && visited.size() < 100);
    QList<QWidget*> wanted;
    for (chrome::EditorButton* button : controls().buttons())
        if (button->isVisible())
            wanted.append(button);
    wanted.append(&canvas());
    EXPECT_EQ(visited.size(), 11 + 8 + 1 + 4 + 5 + 1);
    EXPECT_EQ(visited, wanted);
}

TEST_F(Keyboard, SpacePressesAndTheCanvasesKeysStillWork) {
    dragImage({100, 100}, {200, 200});
    while (owner() != controls().toolButtons.at(ToolType::pen))
        key(Qt::Key_Tab);
    key(Qt::Key_Space);
    EXPECT_EQ(tools().currentTool(), ToolType::pen);
    EXPECT_EQ(owner(), controls().toolButtons.at(ToolType::pen));
    type("e");
    EXPECT_EQ(tools().currentTool(), ToolType::ellipse);
    key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(count(), 0);
    key(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(count(), 1);
}

TEST_F(Keyboard, ACropIsAppliedFromAnyChip) {
    press(ToolType::crop);
    dragImage({100, 50}, {300, 200});
    controls().aspectButtons.at(CropAspect::freeform)->setFocus(Qt::TabFocusReason);
    key(Qt::Key_Return);
    EXPECT_EQ(document().baseImage().size(), QSizeF(200, 150));
    EXPECT_TRUE(canvas().hasFocus()); // the bar with the chip has gone
}

TEST_F(Keyboard, EscapeOnAChipIsTheCanvases) {
    press(ToolType::crop);
    dragImage({100, 50}, {300, 200});
    controls().aspectButtons.at(CropAspect::freeform)->setFocus(Qt::TabFocusReason);
    key(Qt::Key_Escape);
    EXPECT_EQ(tools().cropRect(), std::nullopt);
    EXPECT_EQ(tools().currentTool(), ToolType::crop);
    key(Qt::Key_Escape);
    EXPECT_EQ(tools().currentTool(), ToolType::select);
}

TEST_F(Keyboard, AControlThatIsDisabledGivesItBack) {
    dragImage({100, 100}, {200, 200});
    controls().undoButton->setFocus(Qt::TabFocusReason);
    key(Qt::Key_Space);
    EXPECT_EQ(count(), 0);
    EXPECT_TRUE(canvas().hasFocus());
    key(Qt::Key_Space); // which must not redo
    EXPECT_EQ(count(), 0);
    controls().widthButtons[1]->setFocus(Qt::TabFocusReason);
    type("t");
    EXPECT_TRUE(canvas().hasFocus());
}

TEST_F(Keyboard, APressOnTheChromeEndsAnEditOfText) {
    for (const bool onControl : {true, false}) {
        press(ToolType::text);
        clickImage({onControl ? 100.0 : 300.0, 100});
        type("abc");
        ASSERT_NE(canvas().textEditor(), nullptr);
        if (onControl)
            press(controls().swatchButtons[2]);
        else
            click(controls().palette->mapTo(root.get(), QPoint(3, 100)));
        EXPECT_EQ(canvas().textEditor(), nullptr);
        EXPECT_EQ(last<TextAnnotation>()->text, "abc");
        EXPECT_TRUE(canvas().hasFocus());
    }
    EXPECT_EQ(count(), 2);
}

TEST_F(Keyboard, LettersTypedIntoATextAreNoTools) {
    press(ToolType::text);
    clickImage({100, 100});
    type("vcreal");
    EXPECT_EQ(tools().currentTool(), ToolType::text);
    EXPECT_EQ(canvas().textEditor()->shownText(), "vcreal");
}

TEST_F(Keyboard, ControlAndSSaves) {
    key(Qt::Key_S, Qt::ControlModifier);
    EXPECT_NE(save(), nullptr);
}

TEST_F(Keyboard, ControlAndSSavesDuringAnEditOfText) {
    press(ToolType::text);
    clickImage({100, 100});
    type("abc");
    key(Qt::Key_S, Qt::ControlModifier);
    EXPECT_NE(save(), nullptr);
    EXPECT_EQ(count(), 1);
}

TEST_F(Keyboard, ControlAndSSavesFromTheChrome) {
    controls().pinButton->setFocus(Qt::TabFocusReason);
    key(Qt::Key_S, Qt::ControlModifier);
    EXPECT_NE(save(), nullptr);
}

TEST_F(Keyboard, OtherModifiersWithSFallThrough) {
    key(Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier);
    key(Qt::Key_S, Qt::ControlModifier | Qt::AltModifier);
    key(Qt::Key_S, Qt::MetaModifier);
    key(Qt::Key_S);
    EXPECT_EQ(save(), nullptr);
}

TEST_F(Keyboard, AssistiveTechnologyFindsTheGroupsAndTheirControls) {
    QStringList names;
    for (const auto* slab : controls().slabs())
        names.append(QAccessible::queryAccessibleInterface(const_cast<chrome::EditorSlabView*>(slab))
                         ->text(QAccessible::Name));
    EXPECT_EQ(names.join(u' '), "Tools Style Actions Crop");
    names.clear();
    for (chrome::EditorButton* button : controls().buttons())
        names.append(QAccessible::queryAccessibleInterface(button)->text(QAccessible::Name));
    EXPECT_EQ(names, (QStringList{QStringLiteral("Select"),       QStringLiteral("Crop"),
                                  QStringLiteral("Rectangle"),    QStringLiteral("Ellipse"),
                                  QStringLiteral("Arrow"),        QStringLiteral("Line"),
                                  QStringLiteral("Pen"),          QStringLiteral("Highlight"),
                                  QStringLiteral("Blur"),         QStringLiteral("Text"),
                                  QStringLiteral("Number"),       QStringLiteral("Red"),
                                  QStringLiteral("Orange"),       QStringLiteral("Yellow"),
                                  QStringLiteral("Green"),        QStringLiteral("Blue"),
                                  QStringLiteral("Purple"),       QStringLiteral("White"),
                                  QStringLiteral("Black"),        QStringLiteral("Custom Color"),
                                  QStringLiteral("Thin — 2 pt"),  QStringLiteral("Regular — 3 pt"),
                                  QStringLiteral("Thick — 5 pt"), QStringLiteral("Heavy — 8 pt"),
                                  QStringLiteral("Free"),         QStringLiteral("Original"),
                                  QStringLiteral("1:1"),          QStringLiteral("16:9"),
                                  QStringLiteral("4:3"),          QStringLiteral("3:2"),
                                  QStringLiteral("Cancel"),       QStringLiteral("Apply"),
                                  QStringLiteral("Undo"),         QStringLiteral("Redo"),
                                  QStringLiteral("Pin"),          QStringLiteral("Copy"),
                                  QStringLiteral("Save…")}));
    const auto isChecked = [](QWidget* button) {
        return bool(QAccessible::queryAccessibleInterface(button)->state().checked);
    };
    EXPECT_TRUE(isChecked(controls().toolButtons.at(ToolType::arrow)));
    EXPECT_FALSE(isChecked(controls().toolButtons.at(ToolType::pen)));
    EXPECT_TRUE(isChecked(controls().swatchButtons[0]));
}

} // namespace
} // namespace marrowfin::editor
