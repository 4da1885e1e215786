#include "platform/x11/capture/Pixels.h"

#include <gtest/gtest.h>

using namespace marrowfin::x11;

namespace {

CursorPicture cursorOf(const QPoint& corner, std::uint32_t pixel, const QSize& size = {2, 2}) {
    CursorPicture cursor;
    cursor.pixels = QImage(size, QImage::Format_ARGB32_Premultiplied);
    cursor.pixels.fill(pixel);
    cursor.corner = corner;
    return cursor;
}

QImage canvas(QRgb color) {
    QImage image(4, 4, QImage::Format_RGB32);
    image.fill(color);
    return image;
}

} // namespace

TEST(PixelLayout, CountsItsLinesWithTheirPad) {
    PixelLayout layout;
    EXPECT_EQ(layout.bytesPerLine(5), 20);
    layout.bitsPerPixel = 16;
    EXPECT_EQ(layout.bytesPerLine(5), 12);
    layout.bitsPerPixel = 24;
    EXPECT_EQ(layout.bytesPerLine(5), 16);
}

TEST(PixelLayout, IsImageMemoryOnlyInTheUsualOrder) {
    PixelLayout layout;
    EXPECT_TRUE(layout.isImageMemory());
    layout.depth = 30;
    EXPECT_FALSE(layout.isImageMemory());
    PixelLayout swapped;
    swapped.red = 0xFF;
    swapped.blue = 0xFF0000;
    EXPECT_FALSE(swapped.isImageMemory());
    PixelLayout foreign;
    foreign.byteOrder = PixelLayout::ByteOrder::MostFirst;
    EXPECT_FALSE(foreign.isImageMemory());
}

TEST(ConvertedPixels, StretchFiveAndSixBits) {
    PixelLayout layout;
    layout.depth = layout.bitsPerPixel = 16;
    layout.red = 0xF800;
    layout.green = 0x07E0;
    layout.blue = 0x001F;
    const std::uint8_t pixels[] = {0xFF, 0xFF, 0x00, 0x00, 0x00, 0xF8, 0, 0}; // white, black, red, pad
    const QImage image = convertedPixels(pixels, {3, 1}, layout);
    EXPECT_EQ(image.pixel(0, 0), qRgb(255, 255, 255));
    EXPECT_EQ(image.pixel(1, 0), qRgb(0, 0, 0));
    EXPECT_EQ(image.pixel(2, 0), qRgb(255, 0, 0));
}

TEST(ConvertedPixels, ReadTheOtherByteOrderAndTenBits) {
    PixelLayout layout;
    layout.byteOrder = PixelLayout::ByteOrder::MostFirst;
    const std::uint8_t foreign[] = {0x00, 10, 20, 30};
    EXPECT_EQ(convertedPixels(foreign, {1, 1}, layout).pixel(0, 0), qRgb(10, 20, 30));
    PixelLayout deep;
    deep.depth = 30;
    deep.red = 0x3FF00000;
    deep.green = 0xFFC00;
    deep.blue = 0x3FF;
    const std::uint8_t tens[] = {0xFF, 0x03, 0x00, 0x20}; // red 512, green 0, blue 1023
    EXPECT_EQ(convertedPixels(tens, {1, 1}, deep).pixel(0, 0), qRgb(128, 0, 255));
}

TEST(UndefinedAlpha, IsFilledAndNothingElse) {
    std::uint8_t pixels[] = {1, 2, 3, 0, 4, 5, 6, 77, 7, 8, 9, 255};
    fillUndefinedAlpha(pixels, sizeof pixels);
    const std::uint8_t expected[] = {1, 2, 3, 255, 4, 5, 6, 255, 7, 8, 9, 255};
    EXPECT_TRUE(std::equal(std::begin(pixels), std::end(pixels), std::begin(expected)));
}

TEST(Cursor, CoversWhereItIsOpaqueAndLeavesWhereItIsClear) {
    QImage picture = canvas(qRgb(10, 20, 30));
    blendCursor(picture, {100, 50}, cursorOf({101, 51}, 0xFF804020));
    EXPECT_EQ(picture.pixel(1, 1), qRgb(0x80, 0x40, 0x20));
    EXPECT_EQ(picture.pixel(2, 2), qRgb(0x80, 0x40, 0x20));
    EXPECT_EQ(picture.pixel(0, 0), qRgb(10, 20, 30));
    EXPECT_EQ(picture.pixel(3, 3), qRgb(10, 20, 30));
    blendCursor(picture, {100, 50}, cursorOf({101, 51}, 0));
    EXPECT_EQ(picture.pixel(1, 1), qRgb(0x80, 0x40, 0x20));
}

TEST(Cursor, MixesItsEdgeWithWhatIsBehind) {
    QImage picture = canvas(qRgb(100, 100, 255));
    blendCursor(picture, {0, 0}, cursorOf({0, 0}, 0x80000000)); // half a black
    // 100 x 127 / 255 = 49.8, 255 x 127 / 255 = 127
    EXPECT_EQ(picture.pixel(0, 0), qRgb(50, 50, 127));
}

TEST(Cursor, AtTheEdgeIsClipped) {
    for (const QPoint& corner : {QPoint(-1, -1), QPoint(3, 3)}) {
        QImage picture = canvas(qRgb(0, 0, 0));
        blendCursor(picture, {0, 0}, cursorOf(corner, 0xFFFFFFFF));
        int drawn = 0;
        for (int i = 0; i < 16; ++i)
            drawn += picture.pixel(i % 4, i / 4) == qRgb(255, 255, 255) ? 1 : 0;
        EXPECT_EQ(drawn, 1);
    }
    QImage picture = canvas(qRgb(1, 2, 3));
    const QImage before = picture;
    blendCursor(picture, {0, 0}, cursorOf({40, 40}, 0xFFFFFFFF));
    blendCursor(picture, {0, 0}, {});
    EXPECT_EQ(picture, before);
}
