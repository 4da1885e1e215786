#include "editor/CanvasFit.h"

#include <gtest/gtest.h>

namespace marrowfin::editor {
namespace {

TEST(CanvasFit, ShowsASmallImageAtItsOwnSizeInTheMiddle) {
    const CanvasFit fit = CanvasFit::of({800, 600}, {}, {300, 200});
    EXPECT_EQ(fit.scale, 1.0);
    EXPECT_EQ(fit.imageRect, QRectF(250, 200, 300, 200));
}

TEST(CanvasFit, ShowsALargeImageWhole) {
    const CanvasFit fit = CanvasFit::of({800, 600}, {}, {1600, 1200});
    EXPECT_EQ(fit.scale, 0.5);
    EXPECT_EQ(fit.imageRect, QRectF(0, 0, 800, 600));
}

TEST(CanvasFit, LeavesTheChromeItsSpace) {
    const QMarginsF insets(76, 56, 20, 72);
    const CanvasFit fit = CanvasFit::of({1096, 728}, insets, {2000, 1000});
    EXPECT_EQ(fit.scale, 0.5);
    EXPECT_EQ(fit.imageRect, QRectF(76, 106, 1000, 500));
}

TEST(CanvasFit, KeepsASmallSquareWhereTheChromeLeavesNothing) {
    EXPECT_EQ(availableRect({400, 300}, {200, 140, 180, 130}), QRectF(175, 125, 50, 50));
    const CanvasFit fit = CanvasFit::of({400, 300}, {200, 140, 180, 130}, {500, 250});
    EXPECT_EQ(fit.imageRect, QRectF(175, 137.5, 50, 25));
}

TEST(CanvasFit, FiftyPointsAreEnough) {
    EXPECT_EQ(availableRect({150, 150}, {50, 50, 50, 50}), QRectF(50, 50, 50, 50));
    EXPECT_EQ(availableRect({150, 150}, {50, 50, 51, 50}), QRectF(50, 50, 50, 50));
    EXPECT_EQ(availableRect({149, 150}, {50, 50, 50, 50}), QRectF(49.5, 50, 50, 50));
}

TEST(CanvasFit, WithoutAnImageIsTheViewItself) {
    const CanvasFit fit = CanvasFit::of({400, 300}, {10, 10, 10, 10}, {0, 0});
    EXPECT_EQ(fit.scale, 1.0);
    EXPECT_EQ(fit.imageRect, QRectF(0, 0, 400, 300));
    EXPECT_EQ(displayScale({0, 10}, {5, 5}), 1.0);
    EXPECT_EQ(displayScale({10, 10}, {5, -5}), 1.0);
}

TEST(CanvasFit, MapsPointsBothWays) {
    const CanvasFit fit = CanvasFit::of({800, 600}, {}, {1600, 1000});
    EXPECT_EQ(fit.toImage({400, 300}), QPointF(800, 500));
    EXPECT_EQ(fit.toView(QPointF(0, 0)), fit.imageRect.topLeft());
    EXPECT_EQ(fit.toView(QRectF(0, 0, 1600, 1000)), fit.imageRect);
}

TEST(CanvasFit, PaintsOnWholePixels) {
    const CanvasFit fit = CanvasFit::of({801, 601}, {}, {300, 200});
    EXPECT_EQ(fit.imageRect.topLeft(), QPointF(250.5, 200.5));
    EXPECT_EQ(fit.paintTransform(1).map(QPointF(0, 0)), QPointF(251, 201));
    EXPECT_EQ(fit.paintTransform(2).map(QPointF(0, 0)), QPointF(250.5, 200.5));
}

} // namespace
} // namespace marrowfin::editor
