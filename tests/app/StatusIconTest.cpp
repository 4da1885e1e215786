#include "app/StatusIcon.h"

#include <gtest/gtest.h>

using namespace marrowfin;
using namespace app;

namespace {
// Coverage of the pixel that holds this point of the 18 point drawing, y up.
int alphaAt(const QImage& icon, double x, double y) {
    const double scale = icon.width() / 18.0;
    return qAlpha(icon.pixel(static_cast<int>(x * scale), icon.height() - 1 - static_cast<int>(y * scale)));
}
} // namespace

TEST(StatusIcon, theFrameTheBracketsAndTheDotStandWhereTheyAreDrawn) {
    const QImage icon = statusIcon(180, Qt::black); // ten pixels a point
    EXPECT_EQ(icon.size(), QSize(180, 180));
    // The frame's line: 1.5 from the edge, 1.4 wide.
    EXPECT_EQ(alphaAt(icon, 9, 1.5), 255);
    EXPECT_EQ(alphaAt(icon, 9, 0.6), 0);
    EXPECT_EQ(alphaAt(icon, 9, 2.5), 0);
    // The corner is round.
    EXPECT_EQ(alphaAt(icon, 1.55, 1.55), 0);
    // The brackets: arms of 4 points at 4 points from the edge, 1.6 wide, round ends.
    for (const double end : {4.0, 14.0}) {
        EXPECT_EQ(alphaAt(icon, 6, end), 255);
        EXPECT_EQ(alphaAt(icon, end, 6), 255);
        EXPECT_EQ(alphaAt(icon, 12, end), 255);
    }
    EXPECT_EQ(alphaAt(icon, 8.6, 4), 255) << "round cap";
    EXPECT_EQ(alphaAt(icon, 9, 4), 0) << "a gap between the arms";
    // The dot: 2.5 across.
    EXPECT_EQ(alphaAt(icon, 9, 9), 255);
    EXPECT_EQ(alphaAt(icon, 10.1, 9), 255);
    EXPECT_EQ(alphaAt(icon, 10.4, 9), 0);
}

TEST(StatusIcon, itIsOneColourOnNothing) {
    const QImage icon = statusIcon(36, QColor(255, 255, 255, 217));
    for (int y = 0; y < icon.height(); ++y)
        for (int x = 0; x < icon.width(); ++x)
            if (const QColor pixel = icon.pixelColor(x, y); pixel.alpha() > 200) {
                EXPECT_GT(pixel.lightness(), 250);
            }
    EXPECT_EQ(qAlpha(icon.pixel(0, 0)), 0);
}
