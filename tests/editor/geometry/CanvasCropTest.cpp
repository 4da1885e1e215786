#include "editor/CanvasCrop.h"

#include <gtest/gtest.h>

namespace marrowfin::editor {

using namespace annotation;
namespace {

class CanvasCropTest : public testing::Test {
protected:
    static constexpr QSizeF image{640, 400};
    double scale = 1.0;
    ToolState tools;
    CanvasCrop crop;

    void press(QPointF point) { crop.mouseDown(tools, point, image, scale); }
    void dragTo(QPointF point) { crop.mouseDragged(tools, point, image, scale); }
    void release() { crop.mouseUp(tools); }
    void drag(QPointF from, QPointF to) {
        press(from);
        dragTo((from + to) / 2);
        dragTo(to);
        release();
    }
    QRectF rect() const { return tools.cropRect().value_or(QRectF()); }
    template <class State>
    bool is() const {
        return std::holds_alternative<State>(crop.interaction());
    }
};

TEST_F(CanvasCropTest, AClickLeavesNothing) {
    press({100, 100});
    EXPECT_EQ(rect(), QRectF(100, 100, 0, 0));
    release();
    EXPECT_FALSE(tools.cropRect());
    EXPECT_TRUE(is<CanvasCrop::None>());
}

TEST_F(CanvasCropTest, ASliverLeavesNothingAndFourByFourStands) {
    drag({100, 100}, {103, 300});
    EXPECT_FALSE(tools.cropRect());
    drag({100, 100}, {104, 104});
    EXPECT_EQ(rect(), QRectF(100, 100, 4, 4));
}

TEST_F(CanvasCropTest, APressOutsideTheImageBeginsAtItsEdge) {
    drag({-40, 60}, {100, 160});
    EXPECT_EQ(rect(), QRectF(0, 60, 100, 100));
    tools.setCropRect(std::nullopt);
    drag({100, 100}, {900, 900});
    EXPECT_EQ(rect(), QRectF(100, 100, 540, 300));
}

TEST_F(CanvasCropTest, HandlesAreTakenSevenPointsOutside) {
    tools.setCropRect(QRectF(100, 100, 200, 120));
    press({93, 93});
    ASSERT_TRUE(is<CanvasCrop::Resizing>());
    EXPECT_EQ(std::get<CanvasCrop::Resizing>(crop.interaction()).handle, ResizeHandle::topLeft);
    release();
    EXPECT_EQ(rect(), QRectF(100, 100, 200, 120));
    press({91, 91});
    EXPECT_TRUE(is<CanvasCrop::Defining>());
    EXPECT_EQ(rect(), QRectF(91, 91, 0, 0));
}

TEST_F(CanvasCropTest, HandlesKeepTheirSizeOnScreen) {
    scale = 0.5;
    tools.setCropRect(QRectF(100, 100, 200, 120));
    press({86, 86}); // seven points of the screen
    EXPECT_TRUE(is<CanvasCrop::Resizing>());
}

TEST_F(CanvasCropTest, WhereHandlesOverlapTheFirstWins) {
    tools.setCropRect(QRectF(100, 100, 4, 4));
    press({102, 102});
    ASSERT_TRUE(is<CanvasCrop::Resizing>());
    EXPECT_EQ(std::get<CanvasCrop::Resizing>(crop.interaction()).handle, ResizeHandle::topLeft);
}

TEST_F(CanvasCropTest, MovingStopsAtTheEdgeAndTurnsBackAtOnce) {
    tools.setCropRect(QRectF(400, 100, 200, 120));
    press({500, 160});
    EXPECT_TRUE(is<CanvasCrop::Moving>());
    dragTo({700, 160});
    EXPECT_EQ(rect(), QRectF(440, 100, 200, 120));
    dragTo({680, 160});
    EXPECT_EQ(rect(), QRectF(420, 100, 200, 120));
}

TEST_F(CanvasCropTest, TheMiddleSnapsAndASlowDragFreesIt) {
    tools.setCropRect(QRectF(250, 60, 100, 80)); // its middle at 300, the image's at 320
    press({300, 100});
    dragTo({314, 100});
    EXPECT_EQ(rect(), QRectF(270, 60, 100, 80)); // six points away: on the guide
    for (int step = 1; step <= 12; ++step) {
        dragTo({314.0 + step, 100});
        EXPECT_EQ(rect(), QRectF(270, 60, 100, 80));
    }
    dragTo({327, 100});
    EXPECT_EQ(rect(), QRectF(277, 60, 100, 80)); // it rode on beneath the snap
    dragTo({313, 100});
    EXPECT_EQ(rect(), QRectF(263, 60, 100, 80));
}

TEST_F(CanvasCropTest, TheAspectHoldsFromTheFirstDrag) {
    tools.setCropAspect(CropAspect::wide);
    drag({300, 100}, {700, 180});
    EXPECT_NEAR(rect().width() / rect().height(), 16.0 / 9, 1e-9);
    EXPECT_LE(rect().right(), 640.0 + 1e-9);
}

TEST_F(CanvasCropTest, ResizingSnapsToTheGuides) {
    tools.setCropRect(QRectF(100, 100, 200, 60));
    drag({300, 130}, {323, 130});
    EXPECT_EQ(rect(), QRectF(100, 100, 220, 60));
}

TEST_F(CanvasCropTest, AResizedRectangleMayBecomeAsSmallAsItLikes) {
    tools.setCropRect(QRectF(100, 100, 200, 60));
    drag({300, 160}, {101, 101});
    EXPECT_EQ(rect(), QRectF(100, 100, 1, 1));
}

TEST_F(CanvasCropTest, ADragWithoutAPressDoesNothing) {
    tools.setCropRect(QRectF(100, 100, 200, 60));
    dragTo({10, 10});
    EXPECT_EQ(rect(), QRectF(100, 100, 200, 60));
    press({300, 160});
    tools.setCropRect(std::nullopt); // as another hand cancels it meanwhile
    dragTo({10, 10});
    EXPECT_FALSE(tools.cropRect());
}

} // namespace
} // namespace marrowfin::editor
