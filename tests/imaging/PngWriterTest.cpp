#include "imaging/PngWriter.h"

#include "imaging/PlainPng.h"

#include <QBuffer>
#include <QColorSpace>
#include <QImageReader>
#include <gtest/gtest.h>
#include <libdeflate.h>
#include <random>

using namespace marrowfin;
using namespace imaging;

using test::PlainPng;
using test::readPlainPng;

namespace {

QImage noise(QSize size, QImage::Format format = QImage::Format_RGB32) {
    std::mt19937 random(11);
    QImage image(size, QImage::Format_ARGB32);
    for (int y = 0; y < size.height(); ++y)
        for (int x = 0; x < size.width(); ++x)
            reinterpret_cast<QRgb*>(image.scanLine(y))[x] = random();
    return image.convertToFormat(format);
}

// Flat areas with hard edges, like windows, beside slopes with grain, like a photograph.
QImage mixture(QSize size, QImage::Format format = QImage::Format_RGB32) {
    std::mt19937 random(5);
    QImage image(size, QImage::Format_RGB32);
    for (int y = 0; y < size.height(); ++y)
        for (int x = 0; x < size.width(); ++x) {
            const bool isPhoto = y > size.height() / 3 && x > size.width() / 4;
            const int grain = static_cast<int>(random() % 5);
            reinterpret_cast<QRgb*>(image.scanLine(y))[x] =
                isPhoto ? qRgb((x / 3 + grain) % 256, (y / 4 + grain) % 256, ((x + y) / 7 + grain) % 256)
                        : ((x / 9 + y / 13) % 7 == 0 ? 0xff202428U : 0xfff4f6f8U);
        }
    return image.convertToFormat(format);
}

// Rows that run on smoothly, each at a height of its own.
QImage sidewaysSlope(QSize size) {
    std::mt19937 random(6);
    QImage image(size, QImage::Format_RGB32);
    for (int y = 0; y < size.height(); ++y) {
        const int height = static_cast<int>(random() % 100);
        for (int x = 0; x < size.width(); ++x)
            reinterpret_cast<QRgb*>(image.scanLine(y))[x] =
                qRgb(height + x % 101 / 2, height + x % 133 / 2, (height * 2 + x / 9) % 256);
    }
    return image;
}

QImage decoded(const QByteArray& file) {
    QImageReader::setAllocationLimit(0);
    return QImage::fromData(file, "PNG").convertToFormat(QImage::Format_ARGB32);
}

// The same pixels through the toolkit and through our own plain reader.
void expectDecodesTo(const QByteArray& file, QImage expected) {
    expected.setColorSpace({}); // equality counts it, and has a test of its own
    const PlainPng plain = readPlainPng(file);
    ASSERT_EQ(plain.trouble, QString());
    EXPECT_EQ(plain.pixels, expected);
    QImage toolkits = decoded(file);
    toolkits.setColorSpace({});
    EXPECT_EQ(toolkits, expected);
}

} // namespace

TEST(PngWriter, givesNothingForAnImageWithoutPixels) {
    EXPECT_TRUE(encodePng(QImage()).isEmpty());
}

TEST(PngWriter, everyFormatDecodesToItsPixels) {
    for (int format = QImage::Format_Mono; format < QImage::NImageFormats; ++format) {
        SCOPED_TRACE(format);
        const QImage image = mixture({61, 37}, static_cast<QImage::Format>(format));
        ASSERT_FALSE(image.isNull());
        expectDecodesTo(encodePng(image), image.convertToFormat(QImage::Format_ARGB32));
    }
}

TEST(PngWriter, everyFormatWithTransparencyDecodesToItsPixels) {
    for (int format = QImage::Format_Mono; format < QImage::NImageFormats; ++format) {
        SCOPED_TRACE(format);
        const QImage image = noise({61, 37}, static_cast<QImage::Format>(format));
        if (image.hasAlphaChannel())
            expectDecodesTo(encodePng(image), image.convertToFormat(QImage::Format_ARGB32));
    }
}

TEST(PngWriter, hasNoAlphaChannelWhenEveryPixelIsOpaque) {
    for (const auto format : {QImage::Format_RGB32, QImage::Format_ARGB32,
                              QImage::Format_ARGB32_Premultiplied, QImage::Format_RGBA8888})
        EXPECT_EQ(readPlainPng(encodePng(mixture({40, 30}, format))).colorType, 2) << format;
}

TEST(PngWriter, keepsTheAlphaChannelForOneTransparentPixel) {
    QImage image = mixture({40, 30}, QImage::Format_ARGB32);
    image.setPixel(39, 29, qRgba(10, 20, 30, 254));
    EXPECT_EQ(readPlainPng(encodePng(image)).colorType, 6);
    expectDecodesTo(encodePng(image), image);
}

TEST(PngWriter, keepsTheColourUnderFullTransparency) {
    QImage image(2, 1, QImage::Format_ARGB32);
    image.setPixel(0, 0, qRgba(200, 100, 50, 0));
    image.setPixel(1, 0, qRgba(1, 2, 3, 128));
    expectDecodesTo(encodePng(image), image);
}

TEST(PngWriter, ignoresTheUnusedByteOfOpaqueFormats) {
    QImage image(8, 8, QImage::Format_RGB32);
    image.fill(0x00123456U);
    QImage expected(8, 8, QImage::Format_ARGB32);
    expected.fill(0xff123456U);
    expectDecodesTo(encodePng(image), expected);
}

TEST(PngWriter, greyStaysGrey) {
    const QImage image = mixture({300, 200}, QImage::Format_Grayscale8);
    const QByteArray file = encodePng(image);
    EXPECT_EQ(readPlainPng(file).colorType, 0);
    expectDecodesTo(file, image.convertToFormat(QImage::Format_ARGB32));
}

TEST(PngWriter, joinsManyBandsIntoOneStream) {
    expectDecodesTo(encodePng(mixture({1920, 1080})), mixture({1920, 1080}, QImage::Format_ARGB32));
    expectDecodesTo(encodePng(noise({1277, 733})), noise({1277, 733}).convertToFormat(QImage::Format_ARGB32));
    expectDecodesTo(encodePng(noise({1277, 733}, QImage::Format_ARGB32)),
                    noise({1277, 733}, QImage::Format_ARGB32));
    expectDecodesTo(encodePng(mixture({2000, 1300}, QImage::Format_Grayscale8)),
                    mixture({2000, 1300}, QImage::Format_Grayscale8).convertToFormat(QImage::Format_ARGB32));
}

TEST(PngWriter, picturesThatAreSmoothSideways) {
    expectDecodesTo(encodePng(sidewaysSlope({1500, 900})),
                    sidewaysSlope({1500, 900}).convertToFormat(QImage::Format_ARGB32));
    QByteArray plainRows = encodePng(noise({1500, 900}));
    EXPECT_LT(encodePng(sidewaysSlope({1500, 900})).size() * 5, plainRows.size());
}

TEST(PngWriter, aDarkPhotographOverSeveralBands) {
    // So dark that its rows are near a black one too: what stands before a band's first row must be the real
    // one.
    std::mt19937 random(8);
    QImage image(1500, 1000, QImage::Format_RGB32);
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            reinterpret_cast<QRgb*>(image.scanLine(y))[x] =
                qRgb(static_cast<int>(random() % 9), static_cast<int>(random() % 9),
                     static_cast<int>(random() % 9));
    expectDecodesTo(encodePng(image), image.convertToFormat(QImage::Format_ARGB32));
}

TEST(PngWriter, everyCaptureGivesTheSameBytes) {
    const QImage image = mixture({1920, 1080});
    const QByteArray first = encodePng(image);
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(encodePng(image), first);
}

TEST(PngWriter, thinAndLargePictures) {
    for (const QSize size : {QSize(1, 1), QSize(1, 30000), QSize(30000, 1), QSize(2, 3), QSize(16384, 40)}) {
        SCOPED_TRACE(size.width());
        expectDecodesTo(encodePng(mixture(size)), mixture(size, QImage::Format_ARGB32));
    }
}

TEST(PngWriter, theLargestPictureThatIsRead) {
    QImage image(16384, 16384, QImage::Format_Grayscale8);
    image.fill(70);
    image.setPixel(16383, 16383, qRgb(9, 9, 9));
    const QByteArray file = encodePng(image);
    EXPECT_LT(file.size(), 1'000'000);
    QImageReader::setAllocationLimit(0);
    EXPECT_EQ(QImage::fromData(file, "PNG"), image);
}

TEST(PngWriter, aPartOfAPictureThatSharesItsRows) {
    const QImage whole = mixture({200, 100});
    const QImage part(whole.constScanLine(10) + 4 * 30, 101, 50, whole.bytesPerLine(), QImage::Format_RGB32);
    expectDecodesTo(encodePng(part), whole.copy(30, 10, 101, 50).convertToFormat(QImage::Format_ARGB32));
}

TEST(PngWriter, saysTheColourSpace) {
    QImage image = mixture({64, 64});
    EXPECT_EQ(readPlainPng(encodePng(image)).chunks, QStringList({"IHDR", "IDAT", "IEND"}));

    image.setColorSpace(QColorSpace::SRgb);
    EXPECT_EQ(readPlainPng(encodePng(image)).chunks, QStringList({"IHDR", "sRGB", "IDAT", "IEND"}));
    EXPECT_EQ(QImage::fromData(encodePng(image)).colorSpace(), QColorSpace(QColorSpace::SRgb));

    image.setColorSpace(QColorSpace::DisplayP3);
    EXPECT_EQ(readPlainPng(encodePng(image)).chunks, QStringList({"IHDR", "iCCP", "IDAT", "IEND"}));
    EXPECT_EQ(QImage::fromData(encodePng(image)).colorSpace(), QColorSpace(QColorSpace::DisplayP3));
    expectDecodesTo(encodePng(image), image.convertToFormat(QImage::Format_ARGB32));
}

TEST(PngWriter, greyWithAColourProfileBecomesColour) {
    QImage image = mixture({64, 64}, QImage::Format_Grayscale8);
    image.setColorSpace(QColorSpace::DisplayP3);
    const QByteArray file = encodePng(image);
    EXPECT_EQ(readPlainPng(file).colorType, 2);
    EXPECT_EQ(QImage::fromData(file).colorSpace(), QColorSpace(QColorSpace::DisplayP3));
}

TEST(PngWriter, isNotLargerThanTheToolkitsByMoreThanAQuarter) {
    for (const QImage& image : {mixture({1920, 1080}), noise({800, 600})}) {
        QByteArray theirs;
        QBuffer buffer(&theirs);
        buffer.open(QIODevice::WriteOnly);
        ASSERT_TRUE(image.save(&buffer, "PNG"));
        EXPECT_LE(encodePng(image).size() * 4, theirs.size() * 5);
    }
}

TEST(PngWriter, givesNothingWhenMemoryRunsOut) {
    const auto none = [](size_t) -> void* { return nullptr; };
    libdeflate_set_memory_allocator(none, [](void*) {});
    EXPECT_TRUE(encodePng(mixture({1920, 1080})).isEmpty());
    libdeflate_set_memory_allocator(malloc, free);
    EXPECT_FALSE(encodePng(mixture({1920, 1080})).isEmpty());
}
