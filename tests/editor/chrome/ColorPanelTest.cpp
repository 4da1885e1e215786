// The colour picker, which all editors share.
#include "RootFixture.h"

#include "base/SystemColors.h"

#include <QColorDialog>
#include <QWindow>

namespace marrowfin::editor {

using namespace annotation;
namespace {

class Colors : public RootFixture {
protected:
    QColorDialog* picker() {
        QColorDialog* found = nullptr;
        for (QWidget* window : QApplication::topLevelWidgets())
            if (auto* dialog = qobject_cast<QColorDialog*>(window)) {
                EXPECT_EQ(found, nullptr) << "there is only one";
                found = dialog;
            }
        return found;
    }
    void open() {
        press(controls().customColorButton);
        ASSERT_NE(picker(), nullptr);
        ASSERT_TRUE(picker()->isVisible());
    }
    std::unique_ptr<EditorRootView> otherEditor() {
        auto other = std::make_unique<EditorRootView>(document().baseImage());
        other->resize(760, 520);
        other->show();
        return other;
    }
};

TEST_F(Colors, ThePickerShowsTheInksColourAndHasNeitherAlphaNorButtons) {
    press(controls().swatchButtons[4]);
    open();
    EXPECT_EQ(picker()->currentColor(), systemColor(SystemColor::blue));
    EXPECT_FALSE(picker()->testOption(QColorDialog::ShowAlphaChannel));
    EXPECT_TRUE(picker()->testOption(QColorDialog::NoButtons));
    EXPECT_EQ(picker()->windowModality(), Qt::NonModal);
}

TEST_F(Colors, OpeningItChangesNoColour) {
    tools().setStrokeColor(QColor::fromRgbF(0.12345F, 0.2F, 0.3F));
    const QColor before = tools().strokeColor();
    open();
    EXPECT_EQ(tools().strokeColor(), before);
}

TEST_F(Colors, EachChangeReachesTheInkAndLightsTheCustomButton) {
    open();
    picker()->setCurrentColor(QColor(12, 34, 56));
    settle();
    EXPECT_EQ(tools().strokeColor(), QColor(12, 34, 56));
    EXPECT_TRUE(controls().customColorButton->isSelectedTool());
    EXPECT_FALSE(controls().swatchButtons[0]->isCurrent());
    picker()->setCurrentColor(systemColor(SystemColor::blue));
    settle();
    EXPECT_FALSE(controls().customColorButton->isSelectedTool());
    EXPECT_TRUE(controls().swatchButtons[4]->isCurrent());
    dragImage({100, 100}, {200, 200});
    EXPECT_EQ(last<ArrowAnnotation>()->strokeColor, systemColor(SystemColor::blue));
}

TEST_F(Colors, TheLastEditorThatOpenedItGetsTheChanges) {
    const auto other = otherEditor();
    open();
    other->customColorRequested();
    EXPECT_EQ(tools().strokeColor(), systemColor(SystemColor::red));
    picker()->setCurrentColor(QColor(1, 2, 3));
    EXPECT_EQ(tools().strokeColor(), systemColor(SystemColor::red));
    EXPECT_EQ(other->toolState()->strokeColor(), QColor(1, 2, 3));
    root->customColorRequested();
    EXPECT_EQ(picker()->currentColor(), systemColor(SystemColor::red));
    EXPECT_EQ(other->toolState()->strokeColor(), QColor(1, 2, 3));
    picker()->setCurrentColor(QColor(4, 5, 6));
    EXPECT_EQ(tools().strokeColor(), QColor(4, 5, 6));
    EXPECT_EQ(other->toolState()->strokeColor(), QColor(1, 2, 3));
}

TEST_F(Colors, ThePickerGoesWithItsEditorAndComesBackForAnother) {
    auto other = otherEditor();
    other->customColorRequested();
    ASSERT_TRUE(picker()->isVisible());
    other.reset();
    EXPECT_FALSE(picker()->isVisible());
    picker()->setCurrentColor(QColor(1, 2, 3));
    EXPECT_EQ(tools().strokeColor(), systemColor(SystemColor::red));
    open();
    picker()->setCurrentColor(QColor(7, 8, 9));
    EXPECT_EQ(tools().strokeColor(), QColor(7, 8, 9));
}

TEST_F(Colors, ThePickerGoesWithAnEditorThatIsClosedButKept) {
    auto other = otherEditor();
    other->customColorRequested();
    other->close();
    EXPECT_FALSE(picker()->isVisible());
}

TEST_F(Colors, AnotherEditorsEndLeavesThePickerUp) {
    auto other = otherEditor();
    other->customColorRequested();
    open();
    other.reset();
    EXPECT_TRUE(picker()->isVisible());
}

TEST_F(Colors, ThePickerAsksForNoKeyboardAndStaysAboveItsEditor) {
    open();
    EXPECT_TRUE(picker()->testAttribute(Qt::WA_ShowWithoutActivating));
    EXPECT_EQ(picker()->windowHandle()->transientParent(), root->windowHandle());
    const auto other = otherEditor();
    other->customColorRequested();
    EXPECT_EQ(picker()->windowHandle()->transientParent(), other->windowHandle());
}

} // namespace
} // namespace marrowfin::editor
