// Which blend a highlight gets.
#include "annotation/HighlightDarkness.h"

#include <QColorSpace>
#include <cmath>
#include <gtest/gtest.h>

using namespace marrowfin;
using namespace annotation;
using namespace imaging;

namespace {

// Dark left half, light right half.
Image halves(QSizeF size = {200, 100}) {
    QImage pixels(200, 100, QImage::Format_RGB32);
    pixels.fill(QColor(30, 30, 34));
    for (int y = 0; y < 100; ++y)
        for (int x = 100; x < 200; ++x)
            pixels.setPixelColor(x, y, QColor(250, 250, 250));
    return Image::withSize(pixels, size);
}

Image gray(int value) {
    QImage pixels(50, 50, QImage::Format_RGB32);
    pixels.fill(QColor(value, value, value));
    return Image::captured(pixels);
}

} // namespace

TEST(HighlightDarkness, judgesWhatIsInTheBox) {
    EXPECT_EQ(isDarkBackdrop(halves(), {10, 10, 80, 80}), true);
    EXPECT_EQ(isDarkBackdrop(halves(), {110, 10, 80, 80}), false);
}

TEST(HighlightDarkness, theBoxIsInPointsWhateverTheDensity) {
    EXPECT_EQ(isDarkBackdrop(halves({100, 50}), {5, 5, 40, 40}), true);
    EXPECT_EQ(isDarkBackdrop(halves({100, 50}), {55, 5, 40, 40}), false);
}

TEST(HighlightDarkness, halfwayIsNotDark) {
    EXPECT_EQ(isDarkBackdrop(gray(127), {0, 0, 50, 50}), true);
    EXPECT_EQ(isDarkBackdrop(gray(128), {0, 0, 50, 50}), false);
}

TEST(HighlightDarkness, weighsTheColoursAsAnEyeDoes) {
    QImage pixels(20, 20, QImage::Format_RGB32);
    pixels.fill(QColor(0, 255, 0));
    EXPECT_EQ(isDarkBackdrop(Image::captured(pixels), {0, 0, 20, 20}), false);
    pixels.fill(QColor(255, 0, 255));
    EXPECT_EQ(isDarkBackdrop(Image::captured(pixels), {0, 0, 20, 20}), true);
}

TEST(HighlightDarkness, aSpeckOfAPixelOnAThinLineStillCounts) {
    EXPECT_EQ(isDarkBackdrop(halves(), {10, 10, 1, 1}), true);
    EXPECT_EQ(isDarkBackdrop(halves(), {-50, -50, 60, 60}), true); // the part inside the picture
}

TEST(HighlightDarkness, nothingToJudgeIsNoAnswer) {
    EXPECT_EQ(isDarkBackdrop({}, {0, 0, 50, 50}), std::nullopt);
    EXPECT_EQ(isDarkBackdrop(halves(), {0, 0, 0.9, 50}), std::nullopt);
    EXPECT_EQ(isDarkBackdrop(halves(), {0, 0, 50, 0.9}), std::nullopt);
    EXPECT_EQ(isDarkBackdrop(halves(), {500, 500, 50, 50}), std::nullopt);
    EXPECT_EQ(isDarkBackdrop(halves({0, 50}), {0, 0, 50, 50}), std::nullopt);
    EXPECT_EQ(isDarkBackdrop(halves(), {std::nan(""), 0, 50, 50}), std::nullopt);
}

TEST(HighlightDarkness, isJudgedInSRgbWhateverTheImagesSpace) {
    QImage pixels(20, 20, QImage::Format_RGB32);
    pixels.fill(QColor(100, 100, 100)); // dark as sRGB, light when the numbers are linear
    pixels.setColorSpace(QColorSpace(QColorSpace::SRgbLinear));
    EXPECT_EQ(isDarkBackdrop(Image::captured(pixels), {0, 0, 20, 20}), false);
}

TEST(HighlightDarkness, transparencyDoesNotDarkenAColour) {
    QImage pixels(20, 20, QImage::Format_ARGB32_Premultiplied);
    pixels.fill(QColor(255, 255, 255, 60));
    EXPECT_EQ(isDarkBackdrop(Image::captured(pixels), {0, 0, 20, 20}), false);
}
