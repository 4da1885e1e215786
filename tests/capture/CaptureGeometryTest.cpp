#include "capture/CaptureGeometry.h"

#include <gtest/gtest.h>

using namespace marrowfin;
using namespace capture;
using namespace marrowfin::platform;

namespace {
Display display(std::uint32_t id, const QRectF& frame, int pixelsPerPoint = 1) {
    return {id, ScreenRect{frame}, static_cast<int>(frame.width()),
            static_cast<int>(frame.width()) * pixelsPerPoint};
}
Window window(const QRectF& frame) {
    return {7, 1, ScreenRect{frame}, {}};
}
} // namespace

TEST(CaptureGeometry, theFirstDisplayThatWhollyHoldsTheRectangleIsChosen) {
    const std::vector displays{display(1, {0, 0, 1000, 800}), display(2, {1000, 0, 800, 600})};
    EXPECT_EQ(displayFor({{1000, 0, 800, 600}}, displays)->displayID, 2u);
    EXPECT_EQ(displayFor({{10, 10, 20, 20}}, displays)->displayID, 1u);
}

TEST(CaptureGeometry, aRectangleAcrossTwoDisplaysGoesToTheFirstOfTheList) {
    const std::vector displays{display(2, {1000, 0, 800, 600}), display(1, {0, 0, 1000, 800})};
    EXPECT_EQ(displayFor({{900, 10, 200, 20}}, displays)->displayID, 2u);
    EXPECT_FALSE(displayFor({{900, 10, 200, 20}}, {}).has_value());
}

TEST(CaptureGeometry, sourceRectIsDisplayLocalInPointsAndSizesAreRoundedPixels) {
    const Display second = display(2, {1440, -100, 1440, 900}, 2);
    const StreamConfiguration made = rectConfiguration({{1500, 0, 400, 300}}, second);
    EXPECT_EQ(made.sourceRect, QRectF(60, 100, 400, 300));
    EXPECT_EQ(made.width, 800);
    EXPECT_EQ(made.height, 600);
    EXPECT_TRUE(made.showsCursor);
    EXPECT_EQ(made.captureResolution, CaptureResolution::Automatic);
}

TEST(CaptureGeometry, sizesAreRoundedToTheNearestPixelHalvesAwayFromZero) {
    const StreamConfiguration made = rectConfiguration({{0, 0, 10.5, 10.4}}, display(1, {0, 0, 100, 100}));
    EXPECT_EQ(made.width, 11);
    EXPECT_EQ(made.height, 10);
}

TEST(CaptureGeometry, aRectangleBeyondItsDisplayIsNotClipped) {
    const StreamConfiguration made = rectConfiguration({{900, 10, 200, 20}}, display(1, {0, 0, 1000, 800}));
    EXPECT_EQ(made.sourceRect, QRectF(900, 10, 200, 20));
    EXPECT_EQ(made.width, 200);
}

TEST(CaptureGeometry, aDisplayWithoutAModeCountsAsScaleOne) {
    Display unknown = display(1, {0, 0, 1000, 800}, 2);
    unknown.modeWidth = 0;
    EXPECT_EQ(displayScale(unknown), 1.0);
}

TEST(CaptureGeometry, aWindowTakesTheScaleOfTheDisplayThatShowsMostOfIt) {
    const std::vector displays{display(1, {0, 0, 1000, 800}, 1), display(2, {1000, 0, 1000, 800}, 2)};
    EXPECT_EQ(windowScale(window({900, 0, 300, 100}), displays, 3.0), 2.0);
    EXPECT_EQ(windowScale(window({800, 0, 300, 100}), displays, 3.0), 1.0);
}

TEST(CaptureGeometry, theEarlierDisplayWinsATie) {
    const std::vector displays{display(1, {0, 0, 1000, 800}, 1), display(2, {1000, 0, 1000, 800}, 2)};
    EXPECT_EQ(windowScale(window({900, 0, 200, 100}), displays, 3.0), 1.0);
}

TEST(CaptureGeometry, aWindowOnNoDisplayTakesTheMainScreensScaleAndWithoutOneTwo) {
    const std::vector displays{display(1, {0, 0, 1000, 800}, 1)};
    EXPECT_EQ(windowScale(window({5000, 0, 200, 100}), displays, 3.0), 3.0);
    EXPECT_EQ(windowScale(window({5000, 0, 200, 100}), displays, std::nullopt), 2.0);
    EXPECT_EQ(windowScale(window({0, 0, 200, 100}), {}, 1.5), 1.5);
}

TEST(CaptureGeometry, aWindowIsAskedForWholeAtItsPixelSizeWithoutTheCursor) {
    const StreamConfiguration made = windowConfiguration(window({10, 20, 640, 400}), 2);
    EXPECT_EQ(made.width, 1280);
    EXPECT_EQ(made.height, 800);
    EXPECT_FALSE(made.showsCursor);
    EXPECT_FALSE(made.sourceRect.has_value());
    EXPECT_EQ(made.captureResolution, CaptureResolution::Best);
}
