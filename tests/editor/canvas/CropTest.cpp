#include "CanvasFixture.h"

#include "annotation/ImageCompositor.h"

namespace marrowfin::editor {

using namespace annotation;
using namespace imaging;
namespace {

class CanvasCropping : public CanvasFixture {
protected:
    CanvasCropping() { choose(ToolType::crop); }
};

TEST_F(CanvasCropping, ReturnAppliesAndLeavesTheTool) {
    document.add(badge({200, 150}));
    drag({100, 60}, {400, 260});
    ASSERT_EQ(tools.cropRect(), QRectF(100, 60, 300, 200));
    const Image before = document.baseImage();
    key(Qt::Key_Return);
    EXPECT_EQ(document.baseImage().size(), QSizeF(300, 200));
    EXPECT_EQ(last<NumberAnnotation>()->center, QPointF(100, 90));
    EXPECT_FALSE(tools.cropRect());
    EXPECT_EQ(tools.currentTool(), ToolType::select);
    undo();
    EXPECT_EQ(document.baseImage(), before);
    EXPECT_EQ(last<NumberAnnotation>()->center, QPointF(200, 150));
    EXPECT_EQ(tools.currentTool(), ToolType::select);
}

TEST_F(CanvasCropping, TheKeypadsEnterAppliesToo) {
    drag({100, 60}, {400, 260});
    key(Qt::Key_Enter, Qt::KeypadModifier);
    EXPECT_EQ(document.baseImage().size(), QSizeF(300, 200));
}

TEST_F(CanvasCropping, TheImageIsFittedAnew) {
    drag({100, 60}, {400, 260});
    key(Qt::Key_Return);
    EXPECT_EQ(canvas->imageRect(), QRectF(170, 100, 300, 200));
}

TEST_F(CanvasCropping, ReturnWithoutARectangleDoesNothing) {
    key(Qt::Key_Return);
    EXPECT_EQ(tools.currentTool(), ToolType::crop);
    EXPECT_EQ(document.undoStack().size(), 0);
}

TEST_F(CanvasCropping, TheWholeImageIsNoCropButLeavesTheTool) {
    drag({0, 0}, {640, 400});
    ASSERT_EQ(tools.cropRect(), QRectF(0, 0, 640, 400));
    key(Qt::Key_Return);
    EXPECT_EQ(document.undoStack().size(), 0);
    EXPECT_EQ(tools.currentTool(), ToolType::select);
}

TEST_F(CanvasCropping, EscapeHasTwoLevels) {
    drag({100, 60}, {400, 260});
    key(Qt::Key_Escape);
    EXPECT_FALSE(tools.cropRect());
    EXPECT_EQ(tools.currentTool(), ToolType::crop);
    key(Qt::Key_Escape);
    EXPECT_EQ(tools.currentTool(), ToolType::select);
}

TEST_F(CanvasCropping, SixteenToNineComesOutAsSixteenToNine) {
    tools.setCropAspect(CropAspect::wide);
    drag({40, 30}, {500, 200});
    key(Qt::Key_Return);
    const QSizeF size = document.baseImage().size();
    EXPECT_NEAR(size.width() / size.height(), 16.0 / 9, 16.0 / 9 * 0.01);
}

TEST_F(CanvasCropping, NothingHappensToTheImageBeforeItIsApplied) {
    const QImage before = ImageCompositor::composite(document).pixels();
    drag({100, 60}, {400, 260});
    EXPECT_EQ(ImageCompositor::composite(document).pixels(), before);
    EXPECT_EQ(document.undoStack().size(), 0);
}

TEST_F(CanvasCropping, EverythingElseIsDimmed) {
    const QImage before = shot();
    drag({100, 60}, {400, 260});
    const QImage after = shot();
    EXPECT_EQ(after.pixelColor(150, 80), before.pixelColor(150, 80));
    const QColor was = before.pixelColor(600, 390);
    const QColor is = after.pixelColor(600, 390);
    EXPECT_NEAR(is.red(), was.red() * 0.55, 1.5);
    key(Qt::Key_Escape);
    EXPECT_EQ(shot(), before);
}

TEST_F(CanvasCropping, WithoutAnImageAPressIsIgnored) {
    AnnotationDocument empty{Image()};
    canvas->setDocument(&empty);
    drag({100, 60}, {400, 260});
    EXPECT_FALSE(tools.cropRect());
    key(Qt::Key_Return);
    canvas->setDocument(&document);
}

} // namespace
} // namespace marrowfin::editor
