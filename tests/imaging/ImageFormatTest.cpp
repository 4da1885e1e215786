#include "imaging/ImageFormat.h"

#include <QBuffer>
#include <QImageReader>
#include <gtest/gtest.h>

using namespace marrowfin;
using namespace imaging;

namespace {

Image slope() {
    QImage image(200, 150, QImage::Format_RGB32);
    for (int y = 0; y < 150; ++y)
        for (int x = 0; x < 200; ++x)
            image.setPixel(x, y, qRgb(x, y, (x * y) % 256));
    return Image::captured(image);
}

QByteArray formatOf(QByteArray bytes) {
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    return QImageReader::imageFormat(&buffer);
}

} // namespace

TEST(ImageFormat, namesAndExtensions) {
    EXPECT_EQ(rawValue(ImageFormat::png), "PNG");
    EXPECT_EQ(rawValue(ImageFormat::jpeg), "JPEG");
    EXPECT_EQ(fileExtension(ImageFormat::png), "png");
    EXPECT_EQ(fileExtension(ImageFormat::jpeg), "jpg");
    EXPECT_EQ(allImageFormats.front(), ImageFormat::png);
    EXPECT_EQ(allImageFormats.back(), ImageFormat::jpeg);
}

TEST(ImageFormat, unknownNamesAreNone) {
    EXPECT_EQ(imageFormat("PNG"), ImageFormat::png);
    EXPECT_EQ(imageFormat("JPEG"), ImageFormat::jpeg);
    for (const char* name : {"TIFF", "png", "jpg", "", "PNG "})
        EXPECT_EQ(imageFormat(name), std::nullopt) << name;
}

TEST(ImageFormat, pngIsTheImagesOneEncodingWhateverTheQuality) {
    const Image image = slope();
    const auto bytes = encodeImage(image, ImageFormat::png, 0.1);
    ASSERT_TRUE(bytes);
    EXPECT_EQ(bytes->constData(), image.png().constData());
    EXPECT_EQ(QImage::fromData(*bytes).convertToFormat(QImage::Format_RGB32), image.pixels());
}

TEST(ImageFormat, jpegTakesTheQuality) {
    const auto low = encodeImage(slope(), ImageFormat::jpeg, 0.1);
    const auto usual = encodeImage(slope(), ImageFormat::jpeg, 0.85);
    const auto high = encodeImage(slope(), ImageFormat::jpeg, 1.0);
    ASSERT_TRUE(low && usual && high);
    EXPECT_EQ(formatOf(*usual), "jpeg");
    EXPECT_EQ(QImage::fromData(*usual).size(), QSize(200, 150));
    EXPECT_LT(low->size(), usual->size());
    EXPECT_LT(usual->size(), high->size());
}

TEST(ImageFormat, theQualityIsExactlyThatManyHundredths) {
    // 0.29 times 100 is a little less than 29.
    for (const int hundredths : {10, 29, 57, 85, 100}) {
        QByteArray expected;
        QBuffer buffer(&expected);
        buffer.open(QIODevice::WriteOnly);
        ASSERT_TRUE(slope().pixels().save(&buffer, "JPEG", hundredths));
        EXPECT_EQ(encodeImage(slope(), ImageFormat::jpeg, hundredths / 100.0), expected) << hundredths;
    }
}

TEST(ImageFormat, aQualityOutOfRangeIsTheNearestInIt) {
    EXPECT_EQ(encodeImage(slope(), ImageFormat::jpeg, 3.0), encodeImage(slope(), ImageFormat::jpeg, 1.0));
    EXPECT_EQ(encodeImage(slope(), ImageFormat::jpeg, -1.0), encodeImage(slope(), ImageFormat::jpeg, 0.0));
}

TEST(ImageFormat, transparencyOnJpegIsOverBlackNoFailure) {
    QImage clear(20, 20, QImage::Format_ARGB32);
    clear.fill(qRgba(255, 0, 0, 0));
    EXPECT_TRUE(encodeImage(Image::captured(clear), ImageFormat::jpeg, 0.85));
}

TEST(ImageFormat, anImageWithoutPixelsGivesNothing) {
    EXPECT_EQ(encodeImage(Image(), ImageFormat::png, 0.85), std::nullopt);
    EXPECT_EQ(encodeImage(Image(), ImageFormat::jpeg, 0.85), std::nullopt);
}

TEST(ImageFormat, anImageThatIsTooLargeForJpegGivesNothing) {
    QImage wide(70000, 1, QImage::Format_RGB32);
    wide.fill(0);
    EXPECT_EQ(encodeImage(Image::captured(wide), ImageFormat::jpeg, 0.85), std::nullopt);
    EXPECT_TRUE(encodeImage(Image::captured(wide), ImageFormat::png, 0.85));
}
