// Dragging out each record.
#include "CanvasFixture.h"

#include "base/SystemColors.h"

namespace marrowfin::editor {

using namespace annotation;
using namespace imaging;
namespace {

class CanvasDrawing : public CanvasFixture {};

TEST_F(CanvasDrawing, DragsOutABoxFromAnyCorner) {
    choose(ToolType::rectangle);
    drag({300, 200}, {100, 50});
    ASSERT_TRUE(last<RectangleAnnotation>());
    EXPECT_EQ(last<RectangleAnnotation>()->box(), QRectF(100, 50, 200, 150));
    EXPECT_EQ(document.undoStack().size(), 1);
    EXPECT_FALSE(document.selectedAnnotationID());
    EXPECT_EQ(tools.currentTool(), ToolType::rectangle);
}

TEST_F(CanvasDrawing, TheRecordWearsTheStyleOfItsPress) {
    choose(ToolType::ellipse);
    tools.setStrokeColor(QColor(0, 0, 255));
    tools.setStrokeWidth(5);
    press({10, 10});
    tools.setStrokeColor(QColor(0, 255, 0));
    tools.setStrokeWidth(8);
    dragTo({60, 40});
    release({60, 40});
    ASSERT_TRUE(last<EllipseAnnotation>());
    EXPECT_EQ(last<EllipseAnnotation>()->strokeColor, QColor(0, 0, 255));
    EXPECT_EQ(last<EllipseAnnotation>()->strokeWidth, 5);
}

TEST_F(CanvasDrawing, ArrowsAndLinesRunFromPressToRelease) {
    choose(ToolType::arrow);
    drag({10, 20}, {110, 70});
    ASSERT_TRUE(last<ArrowAnnotation>());
    EXPECT_EQ(last<ArrowAnnotation>()->startPoint, QPointF(10, 20));
    EXPECT_EQ(last<ArrowAnnotation>()->endPoint, QPointF(110, 70));
    choose(ToolType::line);
    drag({50, 50}, {20, 90});
    ASSERT_TRUE(last<LineAnnotation>());
    EXPECT_EQ(last<LineAnnotation>()->endPoint, QPointF(20, 90));
}

TEST_F(CanvasDrawing, ThePenKeepsEveryPoint) {
    choose(ToolType::pen);
    press({10, 10});
    for (int i = 1; i <= 50; ++i)
        dragTo({10.0 + i, 10.0 + i % 3});
    dragTo({60, 12}); // twice at one place is two points
    release({60, 12});
    ASSERT_TRUE(last<FreehandAnnotation>());
    EXPECT_EQ(last<FreehandAnnotation>()->points.size(), 52);
    EXPECT_EQ(document.undoStack().size(), 1);
}

TEST_F(CanvasDrawing, AClickAddsTheRecordAsItStands) {
    choose(ToolType::rectangle);
    click({40, 40});
    ASSERT_TRUE(last<RectangleAnnotation>());
    EXPECT_EQ(last<RectangleAnnotation>()->box(), QRectF(40, 40, 0, 0));
    choose(ToolType::pen);
    click({50, 50});
    ASSERT_TRUE(last<FreehandAnnotation>());
    EXPECT_EQ(last<FreehandAnnotation>()->points.size(), 1);
    choose(ToolType::arrow);
    const QImage before = shot();
    click({60, 60});
    EXPECT_EQ(shot(), before);
    EXPECT_EQ(document.undoStack().size(), 3);
}

TEST_F(CanvasDrawing, MarkersAreYellowWhateverTheStyle) {
    tools.setStrokeColor(QColor(0, 255, 0));
    choose(ToolType::highlight);
    drag({10, 10}, {100, 40});
    ASSERT_TRUE(last<HighlightAnnotation>());
    EXPECT_EQ(last<HighlightAnnotation>()->strokeColor, systemColor(SystemColor::yellow));
    EXPECT_EQ(last<HighlightAnnotation>()->strokeWidth, 3.0);
    EXPECT_FALSE(last<HighlightAnnotation>()->backdropIsDark);
}

TEST_F(CanvasDrawing, AMarkerKnowsADarkBackdropWhenItsDragEnds) {
    QImage dark(200, 100, QImage::Format_RGB32);
    dark.fill(QColor(20, 20, 30));
    AnnotationDocument night(Image::captured(dark));
    canvas->setDocument(&night);
    choose(ToolType::highlight);
    drag({10, 10}, {100, 40});
    const auto* highlight = night.annotations().last().as<HighlightAnnotation>();
    ASSERT_TRUE(highlight);
    EXPECT_TRUE(highlight->backdropIsDark);
    canvas->setDocument(&document);
}

TEST_F(CanvasDrawing, AMarkerOutsideTheImageStaysALightPages) {
    choose(ToolType::highlight);
    drag({-90, -90}, {-20, -20});
    ASSERT_TRUE(last<HighlightAnnotation>());
    EXPECT_FALSE(last<HighlightAnnotation>()->backdropIsDark);
}

TEST_F(CanvasDrawing, BadgesCountUpAndAreNeverCountedTwice) {
    choose(ToolType::number);
    click({50, 50});
    ASSERT_TRUE(last<NumberAnnotation>());
    EXPECT_EQ(last<NumberAnnotation>()->number, 1);
    EXPECT_EQ(last<NumberAnnotation>()->radius, 16.0);
    EXPECT_EQ(last<NumberAnnotation>()->zIndex, 1);
    EXPECT_EQ(document.nextZIndex(), 2);
    undo();
    EXPECT_EQ(count(), 0);
    click({90, 50});
    EXPECT_EQ(last<NumberAnnotation>()->number, 2);
}

TEST_F(CanvasDrawing, OtherButtonsDoNothing) {
    choose(ToolType::number);
    clickMouse(*canvas, {50, 50}, Qt::RightButton);
    clickMouse(*canvas, {50, 50}, Qt::MiddleButton);
    EXPECT_EQ(count(), 0);
}

TEST_F(CanvasDrawing, ADoubleClickIsTwoPressesForADrawingTool) {
    choose(ToolType::number);
    doubleClick({50, 50});
    EXPECT_EQ(count(), 2);
}

TEST_F(CanvasDrawing, ADropIsRefused) {
    EXPECT_FALSE(canvas->acceptDrops());
}

TEST_F(CanvasDrawing, NeedsADocumentAndATool) {
    canvas->setToolState(nullptr);
    drag({10, 10}, {50, 50});
    key(Qt::Key_R, Qt::NoModifier, QStringLiteral("r"));
    canvas->setToolState(&tools);
    canvas->setDocument(nullptr);
    drag({10, 10}, {50, 50});
    key(Qt::Key_C, Qt::NoModifier, QStringLiteral("c"));
    canvas->applyCrop();
    canvas->commitTextEdit();
    EXPECT_EQ(tools.currentTool(), ToolType::arrow);
    EXPECT_EQ(count(), 0);
    shot();
}

TEST_F(CanvasDrawing, OutlivesWhatItShows) {
    auto brief = std::make_unique<AnnotationDocument>(Image::captured(page(50, 50)));
    auto briefTools = std::make_unique<ToolState>();
    canvas->setDocument(brief.get());
    canvas->setToolState(briefTools.get());
    press({10, 10});
    brief.reset();
    briefTools.reset();
    dragTo({30, 30});
    release({30, 30});
    key(Qt::Key_Z, Qt::ControlModifier);
    shot();
}

} // namespace
} // namespace marrowfin::editor
