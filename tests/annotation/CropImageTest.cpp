// Cutting a base image down, pixel for pixel.
#include "annotation/ImageCompositor.h"

#include <QColorSpace>
#include <gtest/gtest.h>
#include <limits>

using namespace marrowfin;
using namespace annotation;
using namespace imaging;

namespace {

// Every pixel says where it was.
QImage coordinates(int width, int height) {
    QImage pixels(width, height, QImage::Format_RGB32);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            pixels.setPixel(x, y, qRgb(x & 255, y & 255, (x >> 8) * 16 + (y >> 8)));
    return pixels;
}

} // namespace

TEST(CropImage, takesThePixelsAtItsOffset) {
    const QImage source = coordinates(640, 400);
    const Image cut = ImageCompositor::cropImage(Image::captured(source), {60, 40, 300, 200});
    EXPECT_EQ(cut.size(), QSizeF(300, 200));
    EXPECT_EQ(cut.pixels(), source.copy(60, 40, 300, 200));
}

TEST(CropImage, keepsTheDensity) {
    const QImage source = coordinates(640, 400);
    const Image cut = ImageCompositor::cropImage(Image::withSize(source, {320, 200}), {10, 20, 120, 75});
    EXPECT_EQ(cut.size(), QSizeF(120, 75));
    EXPECT_EQ(cut.pixels(), source.copy(20, 40, 240, 150));
}

TEST(CropImage, roundsEachEdgeByItself) {
    const QImage source = coordinates(100, 100);
    const Image cut = ImageCompositor::cropImage(Image::captured(source), {10.5, 10.4, 10, 10.2});
    EXPECT_EQ(cut.pixels(), source.copy(11, 10, 10, 11)); // 10.5 to 20.5, halves away; 10.4 to 20.6
}

TEST(CropImage, neighboursShareTheirEdge) {
    const QImage source = coordinates(101, 10);
    const Image whole = Image::captured(source);
    const Image left = ImageCompositor::cropImage(whole, {0, 0, 33.3, 10});
    const Image right = ImageCompositor::cropImage(whole, {33.3, 0, 67.7, 10});
    EXPECT_EQ(left.pixels().width() + right.pixels().width(), 101);
}

TEST(CropImage, keepsColourSpaceAndFormat) {
    QImage source = coordinates(20, 20).convertToFormat(QImage::Format_ARGB32);
    source.setColorSpace(QColorSpace(QColorSpace::DisplayP3));
    const Image cut = ImageCompositor::cropImage(Image::captured(source), {5, 5, 10, 10});
    EXPECT_EQ(cut.pixels().colorSpace(), QColorSpace(QColorSpace::DisplayP3));
    EXPECT_EQ(cut.pixels().format(), QImage::Format_ARGB32);
}

TEST(CropImage, refusesWhatHasNoPixels) {
    const Image image = Image::captured(coordinates(20, 20));
    constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
    constexpr double huge = 1e300;
    EXPECT_TRUE(ImageCompositor::cropImage({}, {0, 0, 10, 10}).isNull());
    EXPECT_TRUE(ImageCompositor::cropImage(image, {5, 5, 0.3, 10}).isNull());
    EXPECT_TRUE(ImageCompositor::cropImage(image, {30, 5, 10, 10}).isNull());
    EXPECT_TRUE(ImageCompositor::cropImage(image, {notANumber, 5, 10, 10}).isNull());
    EXPECT_TRUE(ImageCompositor::cropImage(image, {huge, huge, huge, huge}).isNull());
    EXPECT_TRUE(
        ImageCompositor::cropImage(Image::withSize(coordinates(20, 20), {0, 20}), {0, 0, 5, 5}).isNull());
    EXPECT_EQ(ImageCompositor::cropImage(image, {-huge, -huge, 2 * huge, 2 * huge}).size(), QSizeF(20, 20));
}
