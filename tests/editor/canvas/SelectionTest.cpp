// Selecting, moving, resizing and deleting.
#include "CanvasFixture.h"

namespace marrowfin::editor {

using namespace annotation;
namespace {

class CanvasSelection : public CanvasFixture {
protected:
    QUuid addBox() {
        const auto record = box<RectangleAnnotation>(100, 100, 120, 80);
        document.add(record);
        choose(ToolType::select);
        return record.id;
    }
    QRectF boxNow() const { return document.annotations().first().boundingRect(); }
};

TEST_F(CanvasSelection, APressOnInkSelectsItAndOneBesideLetsGo) {
    const QUuid id = addBox();
    click({100, 140});
    EXPECT_EQ(document.selectedAnnotationID(), id);
    click({160, 140}); // inside an outline is beside it
    EXPECT_FALSE(document.selectedAnnotationID());
}

TEST_F(CanvasSelection, ADragOnTheBodyMovesAndIsNoStepOfUndo) {
    addBox();
    drag({100, 140}, {130, 160});
    EXPECT_EQ(boxNow(), QRectF(130, 120, 120, 80));
    EXPECT_EQ(document.undoStack().size(), 1);
    undo();
    EXPECT_EQ(count(), 0);
    redo();
    EXPECT_EQ(boxNow(), QRectF(130, 120, 120, 80));
}

TEST_F(CanvasSelection, ADragOnAHandleResizesInOneStep) {
    addBox();
    click({100, 140});
    press({220, 180});
    dragTo({240, 190});
    dragTo({260, 200});
    release({260, 200});
    EXPECT_EQ(boxNow(), QRectF(100, 100, 160, 100));
    EXPECT_EQ(document.undoStack().size(), 2);
    undo();
    EXPECT_EQ(boxNow(), QRectF(100, 100, 120, 80));
}

TEST_F(CanvasSelection, AHandleIsHitWhereItIsDrawn) {
    addBox();
    click({100, 140});
    press({216, 176});
    EXPECT_EQ(canvas->interaction().interaction().kind, InteractionState::Kind::resizing);
    EXPECT_EQ(canvas->interaction().interaction().handle, ResizeHandle::bottomRight);
    release({216, 176});
    press({224.5, 184.5}); // outside the square, and within reach of nothing
    EXPECT_NE(canvas->interaction().interaction().kind, InteractionState::Kind::resizing);
}

TEST_F(CanvasSelection, ADragFromNothingDoesNothing) {
    addBox();
    drag({400, 300}, {100, 140});
    EXPECT_EQ(boxNow(), QRectF(100, 100, 120, 80));
    EXPECT_FALSE(document.selectedAnnotationID());
}

TEST_F(CanvasSelection, HandlesGoBeforeWhatLiesOnThem) {
    const QUuid id = addBox();
    document.add(badge({220, 180}));
    click({100, 140});
    ASSERT_EQ(document.selectedAnnotationID(), id);
    drag({220, 180}, {250, 200});
    EXPECT_EQ(document.selectedAnnotationID(), id);
    EXPECT_EQ(boxNow(), QRectF(100, 100, 150, 100));
}

TEST_F(CanvasSelection, DeleteTakesTheSelection) {
    addBox();
    click({100, 140});
    key(Qt::Key_C, Qt::NoModifier, QStringLiteral("c"));
    key(Qt::Key_V, Qt::NoModifier, QStringLiteral("v"));
    key(Qt::Key_Delete);
    EXPECT_EQ(count(), 0);
    undo();
    EXPECT_EQ(count(), 1);
    EXPECT_FALSE(document.selectedAnnotationID());
    key(Qt::Key_Backspace);
    EXPECT_EQ(count(), 1);
}

class HalvedCanvas : public CanvasFixture {
protected:
    HalvedCanvas() : CanvasFixture(page(1280, 800), {640, 400}) {}
};

TEST_F(HalvedCanvas, ReachAndHandlesKeepTheirSizeOnScreen) {
    ASSERT_EQ(canvas->displayScale(), 0.5);
    document.add(box<RectangleAnnotation>(200, 200, 400, 300));
    choose(ToolType::select);
    click({190, 350}); // five points of the screen away
    ASSERT_TRUE(document.selectedAnnotationID());
    press({607, 507}); // three and a half points of the screen from the corner
    EXPECT_EQ(canvas->interaction().interaction().kind, InteractionState::Kind::resizing);
    release({607, 507});
    click({186, 350}); // seven points
    EXPECT_FALSE(document.selectedAnnotationID());
}

TEST_F(HalvedCanvas, DragsGoAsFarInTheImageAsOnTheScreen) {
    choose(ToolType::rectangle);
    dragMouse(*canvas, {10, 20}, {60, 90});
    ASSERT_TRUE(last<RectangleAnnotation>());
    EXPECT_EQ(last<RectangleAnnotation>()->box(), QRectF(20, 40, 100, 140));
}

} // namespace
} // namespace marrowfin::editor
