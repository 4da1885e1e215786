#include "base/Coordinates.h"

#include <gtest/gtest.h>
#include <random>

using namespace marrowfin;

TEST(Coordinates, aRectangleFlipsAgainstThePrimaryHeight) {
    EXPECT_EQ(toScreen(DesktopRect{{10, 20, 30, 40}}, 1000), (ScreenRect{{10, 940, 30, 40}}));
    EXPECT_EQ(toDesktop(ScreenRect{{10, 940, 30, 40}}, 1000), (DesktopRect{{10, 20, 30, 40}}));
}

TEST(Coordinates, aPointFlipsAgainstThePrimaryHeight) {
    EXPECT_EQ(toScreen(DesktopPoint{{10, 20}}, 1000), (ScreenPoint{{10, 980}}));
    EXPECT_EQ(toDesktop(ScreenPoint{{10, 980}}, 1000), (DesktopPoint{{10, 20}}));
}

TEST(Coordinates, displaysAboveAndBelowThePrimaryHaveNegativeAndLargeCoordinates) {
    // A display of 500 points above the primary one of 1000.
    EXPECT_EQ(toDesktop(ScreenRect{{0, -500, 800, 500}}, 1000), (DesktopRect{{0, 1000, 800, 500}}));
    // One below it.
    EXPECT_EQ(toDesktop(ScreenRect{{0, 1000, 800, 500}}, 1000), (DesktopRect{{0, -500, 800, 500}}));
}

TEST(Coordinates, negativeSidesAreStandardisedByTheFlip) {
    EXPECT_EQ(toScreen(DesktopRect{{40, 60, -30, -40}}, 1000), (ScreenRect{{10, 940, 30, 40}}));
}

TEST(Coordinates, thereAndBackIsTheSame) {
    std::mt19937 random(1);
    const auto number = [&random] { return static_cast<double>(random() % 8000) / 4 - 1000; };
    for (int i = 0; i < 300; ++i) {
        const DesktopRect rect{{number(), number(), static_cast<double>(random() % 2000) / 4,
                                static_cast<double>(random() % 2000) / 4}};
        EXPECT_EQ(toDesktop(toScreen(rect, 1000), 1000), rect);
        const ScreenPoint point{{number(), number()}};
        EXPECT_EQ(toScreen(toDesktop(point, 1000), 1000), point);
    }
}

TEST(Coordinates, takenAsItStandsNothingIsFlipped) {
    EXPECT_EQ(takenAsScreen(DesktopRect{{10, 20, 30, 40}}), (ScreenRect{{10, 20, 30, 40}}));
    EXPECT_EQ(takenAsDesktop(ScreenRect{{10, 20, 30, 40}}), (DesktopRect{{10, 20, 30, 40}}));
}
