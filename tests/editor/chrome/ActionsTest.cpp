// What presses on the chrome do to the document, the clipboard and whoever pins.
#include "RootFixture.h"

#include "annotation/ImageCompositor.h"
#include "base/SystemColors.h"

#include <QDialog>

namespace marrowfin::editor {

using namespace annotation;
using namespace imaging;
namespace {

class Actions : public RootFixture {
protected:
    void typeText(QPointF at, const char* words) {
        press(ToolType::text);
        clickImage(at);
        settle();
        type(words);
    }
};

TEST_F(Actions, ASwatchColoursTheNextInk) {
    press(ToolType::rectangle);
    press(controls().swatchButtons[4]);
    press(controls().widthButtons[2]);
    dragImage({100, 100}, {200, 200});
    ASSERT_NE(last<RectangleAnnotation>(), nullptr);
    EXPECT_EQ(last<RectangleAnnotation>()->strokeColor, systemColor(SystemColor::blue));
    EXPECT_EQ(last<RectangleAnnotation>()->strokeWidth, 5.0);
    press(controls().swatchButtons[3]);
    EXPECT_EQ(last<RectangleAnnotation>()->strokeColor, systemColor(SystemColor::blue));
}

TEST_F(Actions, TextWearsTheSwatchToo) {
    press(ToolType::text);
    press(controls().swatchButtons[5]);
    clickImage({100, 100});
    type("violet");
    key(Qt::Key_Escape);
    ASSERT_NE(last<TextAnnotation>(), nullptr);
    EXPECT_EQ(last<TextAnnotation>()->strokeColor, systemColor(SystemColor::purple));
}

TEST_F(Actions, CopyPutsTheAnnotatedImageOnTheClipboard) {
    int copied = 0;
    root->onCopy = [&] {
        EXPECT_TRUE(desktop.pasteboard.image); // it is offered by then
        ++copied;
    };
    dragImage({100, 100}, {300, 200});
    press(controls().copyButton);
    EXPECT_EQ(copied, 1);
    EXPECT_EQ(desktop.pasteboard.calls,
              (std::vector<QString>{QStringLiteral("clearContents"), QStringLiteral("writeImage")}));
    EXPECT_EQ(desktop.pasteboard.image->pixels(), ImageCompositor::composite(document()).pixels());
    EXPECT_NE(desktop.pasteboard.image->pixels(), document().baseImage().pixels());
}

TEST_F(Actions, CopyDuringAnEditHasTheTypedText) {
    typeText({100, 100}, "words");
    ASSERT_EQ(count(), 0);
    press(controls().copyButton);
    ASSERT_EQ(count(), 1);
    EXPECT_EQ(last<TextAnnotation>()->text, "words");
    EXPECT_EQ(canvas().textEditor(), nullptr);
    EXPECT_EQ(desktop.pasteboard.image.value().pixels(), ImageCompositor::composite(document()).pixels());
    EXPECT_NE(desktop.pasteboard.image->pixels(), document().baseImage().pixels());
}

// Not through a press, which ends the edit by itself.
TEST_F(Actions, EveryWayOutEndsAnEditByItself) {
    double x = 0;
    const auto typedThen = [&](void (EditorRootView::*action)()) {
        typeText({x += 100, 100}, "x");
        (root.get()->*action)();
        return canvas().textEditor() == nullptr;
    };
    EXPECT_TRUE(typedThen(&EditorRootView::copyPressed));
    EXPECT_EQ(count(), 1);
    EXPECT_TRUE(typedThen(&EditorRootView::pinPressed));
    EXPECT_EQ(count(), 2);
    EXPECT_TRUE(typedThen(&EditorRootView::undoPressed)); // the text is the step that is undone
    EXPECT_EQ(count(), 2);
    EXPECT_TRUE(typedThen(&EditorRootView::redoPressed)); // and new ink leaves nothing to redo
    EXPECT_EQ(count(), 3);
}

TEST_F(Actions, PinHandsTheAnnotatedImageOver) {
    std::vector<Image> pinned;
    root->onPin = [&](const Image& image) { pinned.push_back(image); };
    dragImage({100, 100}, {300, 200});
    press(controls().pinButton);
    ASSERT_EQ(pinned.size(), 1U);
    EXPECT_EQ(pinned[0].pixels(), ImageCompositor::composite(document()).pixels());
    EXPECT_EQ(pinned[0].size(), QSizeF(640, 320));
}

TEST_F(Actions, NothingIsAskedOfAbsentCallbacks) {
    press(controls().pinButton);
    press(controls().copyButton);
    EXPECT_TRUE(desktop.pasteboard.image);
}

TEST_F(Actions, UndoAndRedoGoThroughTheDocument) {
    dragImage({100, 100}, {300, 200});
    press(controls().undoButton);
    EXPECT_EQ(count(), 0);
    press(controls().redoButton);
    EXPECT_EQ(count(), 1);
}

TEST_F(Actions, AChipRefitsThePendingCropAtOnce) {
    press(ToolType::crop);
    dragImage({100, 100}, {300, 200});
    press(CropAspect::square);
    EXPECT_EQ(tools().cropAspect(), CropAspect::square);
    const QRectF rect = tools().cropRect().value();
    EXPECT_NEAR(rect.width(), rect.height(), 1e-9);
    EXPECT_NEAR(rect.width() * rect.height(), 200 * 100, 1e-6);
    EXPECT_NEAR(rect.center().x(), 200, 1e-9);
    EXPECT_NEAR(rect.center().y(), 150, 1e-9);
    EXPECT_EQ(controls().cropSizeLabel->text(), QStringLiteral("141 × 141 px"));
    EXPECT_TRUE(controls().aspectButtons.at(CropAspect::square)->isCurrent());
    EXPECT_FALSE(controls().aspectButtons.at(CropAspect::freeform)->isCurrent());
    press(CropAspect::original);
    EXPECT_NEAR(tools().cropRect()->width() / tools().cropRect()->height(), 2.0, 1e-9);
    const QRectF before = *tools().cropRect();
    press(CropAspect::freeform);
    EXPECT_EQ(tools().cropRect(), before);
}

TEST_F(Actions, AChipWithoutACropOnlyHoldsTheNextOne) {
    press(ToolType::crop);
    press(CropAspect::wide);
    EXPECT_EQ(tools().cropRect(), std::nullopt);
    dragImage({100, 100}, {260, 110});
    EXPECT_NEAR(tools().cropRect()->width() / tools().cropRect()->height(), 16.0 / 9.0, 1e-9);
}

TEST_F(Actions, ApplyCropsAndEndsTheSession) {
    press(ToolType::crop);
    dragImage({100, 50}, {300, 200});
    press(controls().cropApplyButton);
    EXPECT_EQ(document().baseImage().size(), QSizeF(200, 150));
    EXPECT_EQ(tools().cropRect(), std::nullopt);
    EXPECT_EQ(tools().currentTool(), ToolType::select);
    EXPECT_TRUE(controls().cropBar->isHidden());
    EXPECT_EQ(controls().statusChip->text(), QStringLiteral("200 × 150 px"));
    press(controls().undoButton);
    EXPECT_EQ(document().baseImage().size(), QSizeF(640, 320));
}

TEST_F(Actions, CancelLeavesTheCropToolAtOnce) {
    press(ToolType::crop);
    dragImage({100, 50}, {300, 200});
    press(controls().cropCancelButton);
    EXPECT_EQ(tools().cropRect(), std::nullopt);
    EXPECT_EQ(tools().currentTool(), ToolType::select);
    EXPECT_EQ(document().baseImage().size(), QSizeF(640, 320));
    EXPECT_TRUE(document().undoStack().isEmpty());
}

TEST_F(Actions, AnotherToolDropsThePendingCrop) {
    press(ToolType::crop);
    dragImage({100, 50}, {300, 200});
    press(ToolType::crop);
    EXPECT_NE(tools().cropRect(), std::nullopt);
    press(ToolType::pen);
    EXPECT_EQ(tools().cropRect(), std::nullopt);
    press(ToolType::crop);
    EXPECT_EQ(controls().cropSizeLabel->text(), "Drag to crop");
}

TEST_F(Actions, TheCanvasUnderTheChipIsDrawnOn) {
    press(ToolType::pen);
    click(middleOf(controls().statusChip));
    EXPECT_EQ(count(), 1);
}

TEST_F(Actions, ASlabTakesPressesBetweenItsControls) {
    press(ToolType::pen);
    click(controls().palette->mapTo(root.get(), QPoint(3, 100)));
    click(controls().actionBar->mapTo(root.get(), QPoint(3, 17)));
    EXPECT_EQ(count(), 0);
}

class WithoutPixels : public RootFixture {
protected:
    WithoutPixels() : RootFixture(Image()) {}
};

TEST_F(WithoutPixels, TheEditorStaysStandingAndItsActionsDoNothing) {
    int told = 0;
    root->onCopy = [&] { ++told; };
    root->onPin = [&](const Image&) { ++told; };
    root->onSave = [&](const QString&) { ++told; };
    press(controls().copyButton);
    press(controls().pinButton);
    press(controls().saveButton);
    EXPECT_EQ(told, 0);
    EXPECT_EQ(desktop.pasteboard.calls.size(), 0U);
    EXPECT_EQ(root->findChildren<QDialog*>().size(), 0);
    EXPECT_EQ(controls().statusChip->text(), "");
    press(ToolType::crop);
    tools().setCropRect(QRectF(0, 0, 10, 10));
    settle();
    EXPECT_EQ(controls().cropSizeLabel->text(), "");
    press(CropAspect::square);
    EXPECT_EQ(tools().cropRect(), QRectF(0, 0, 10, 10));
    press(ToolType::text);
    press(controls().copyButton);
    EXPECT_FALSE(shot().isNull());
}

} // namespace
} // namespace marrowfin::editor
