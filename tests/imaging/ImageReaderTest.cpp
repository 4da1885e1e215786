#include "imaging/ImageReader.h"

#include "imaging/PngWriter.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QLoggingCategory>
#include <QTemporaryDir>
#include <QtEndian>
#include <atomic>
#include <gtest/gtest.h>
#include <random>
#include <sys/stat.h>
#include <thread>
#include <vector>

using namespace marrowfin;
using namespace imaging;

namespace {

QImage slope(QSize size = {120, 80}) {
    QImage image(size, QImage::Format_RGB32);
    for (int y = 0; y < size.height(); ++y)
        for (int x = 0; x < size.width(); ++x)
            image.setPixel(x, y, qRgb(x % 256, y % 256, (x * y) % 256));
    return image;
}

QByteArray saved(const QImage& image, const char* format) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    EXPECT_TRUE(image.save(&buffer, format)) << format;
    return bytes;
}

quint32 crc(const QByteArray& bytes) {
    quint32 value = 0xffffffffU;
    for (const char byte : bytes) {
        value ^= static_cast<uchar>(byte);
        for (int bit = 0; bit < 8; ++bit)
            value = value & 1 ? 0xedb88320U ^ value >> 1 : value >> 1;
    }
    return ~value;
}

// A PNG that says it has this size, with a right checksum.
QByteArray pngClaiming(quint32 width, quint32 height, char bitsPerChannel = 8) {
    QByteArray bytes = encodePng(slope({4, 4}));
    qToBigEndian(width, bytes.data() + 16);
    qToBigEndian(height, bytes.data() + 20);
    bytes[24] = bitsPerChannel;
    qToBigEndian(crc(bytes.mid(12, 17)), bytes.data() + 29);
    return bytes;
}

// The decoders tell the log about every damaged file, and the tests below have hundreds of them.
class DamagedFiles : public testing::Test {
protected:
    void SetUp() override { QLoggingCategory::setFilterRules("qt.gui.imageio*=false"); }
    void TearDown() override { QLoggingCategory::setFilterRules({}); }
};

void expectRefused(const QByteArray& bytes) {
    const Result<Image> result = readImage(bytes);
    ASSERT_FALSE(result);
    EXPECT_FALSE(result.error().message.isEmpty());
    EXPECT_EQ(result.error().kind, Error::Kind::Failed);
}

} // namespace

TEST(ImageReader, readsWhatTheProgramWrites) {
    const Result<Image> image = readImage(encodePng(slope()));
    ASSERT_TRUE(image);
    EXPECT_EQ(image->pixels().convertToFormat(QImage::Format_RGB32), slope());
    EXPECT_EQ(image->size(), QSizeF(120, 80));
}

TEST(ImageReader, goesByContentAndNotByName) {
    const QTemporaryDir folder;
    QFile file(folder.filePath("picture.txt"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(saved(slope(), "JPEG"));
    file.close();
    const Result<Image> image = readImageFile(file.fileName());
    ASSERT_TRUE(image);
    EXPECT_EQ(image->size(), QSizeF(120, 80));
}

TEST(ImageReader, oneUnitPerPixelWhateverTheFileSaysOfItsDensity) {
    QImage dense = slope();
    dense.setDotsPerMeterX(11811);
    dense.setDotsPerMeterY(11811);
    dense.setDevicePixelRatio(2);
    EXPECT_EQ(readImage(saved(dense, "PNG"))->size(), QSizeF(120, 80));
}

TEST(ImageReader, readsAPictureOverTheToolkitsOwnLimit) {
    QImage large(8000, 6000, QImage::Format_RGB32); // 192 MB
    large.fill(0xff102030U);
    const Result<Image> image = readImage(encodePng(large));
    ASSERT_TRUE(image);
    EXPECT_EQ(image->size(), QSizeF(8000, 6000));
}

TEST(ImageReader, aScrolledPageOpensWhole) {
    QImage page(2880, 60'000, QImage::Format_RGB32); // 691 MB
    page.fill(0xfffafafaU);
    page.setPixel(2879, 59'999, 0xff010203U);
    const Result<Image> image = readImage(encodePng(page));
    ASSERT_TRUE(image) << image.error().message.toStdString();
    EXPECT_EQ(image->size(), QSizeF(2880, 60'000));
    EXPECT_EQ(image->pixels().pixel(2879, 59'999), 0xff010203U);
}

TEST(ImageReader, theSidesPlayNoPart) {
    for (const QSize size : {QSize(100'000, 2), QSize(2, 100'000)}) {
        QImage strip(size, QImage::Format_Grayscale8);
        strip.fill(1);
        const Result<Image> image = readImage(encodePng(strip));
        ASSERT_TRUE(image);
        EXPECT_EQ(image->size(), QSizeF(size));
    }
}

TEST_F(DamagedFiles, theLimitIsTheTotalDecoded) {
    // These have no pixels after the head: what isn't refused for its size is refused as damaged.
    const auto errorOf = [](const QByteArray& bytes) {
        const Result<Image> result = readImage(bytes);
        return result ? QStringLiteral("none") : result.error().message;
    };
    const QString tooLarge = QStringLiteral("The picture is too large to be opened.");
    const quint32 width = 32'768;
    const quint32 height = largestDecodedImage / 4 / width;
    EXPECT_NE(errorOf(pngClaiming(width, height).first(60)), tooLarge);
    EXPECT_EQ(errorOf(pngClaiming(width, height + 1)), tooLarge);
    EXPECT_EQ(errorOf(pngClaiming(height + 1, width)), tooLarge);
    // Twice the bytes a pixel while it is decoded, half as many pixels.
    constexpr char sixteenBits = 16;
    EXPECT_NE(errorOf(pngClaiming(width, height / 2, sixteenBits).first(60)), tooLarge);
    EXPECT_EQ(errorOf(pngClaiming(width, height / 2 + 1, sixteenBits)), tooLarge);
}

TEST(ImageReader, aDeepPictureIsKeptAtEightBits) {
    QImage deep(40, 30, QImage::Format_RGBA64);
    deep.fill(qRgba(200, 100, 50, 128));
    const Result<Image> image = readImage(saved(deep, "PNG"));
    ASSERT_TRUE(image);
    EXPECT_EQ(image->pixels().depth(), 32);
    EXPECT_EQ(image->pixels().pixel(20, 20), qRgba(200, 100, 50, 128));
    QImage grey(40, 30, QImage::Format_Grayscale16);
    grey.fill(qRgb(90, 90, 90));
    const Result<Image> plain = readImage(saved(grey, "PNG"));
    ASSERT_TRUE(plain);
    EXPECT_EQ(plain->pixels().depth(), 8);
    EXPECT_EQ(plain->pixels().pixel(20, 20), qRgb(90, 90, 90));
}

TEST(ImageReader, aSizeThatIsOnlyClaimedCostsNothing) {
    expectRefused(pngClaiming(2'000'000'000, 2'000'000'000));
    expectRefused(pngClaiming(100'000, 100'000));
    expectRefused(pngClaiming(0, 5));
    expectRefused(pngClaiming(0xffffffffU, 0xffffffffU));
}

TEST(ImageReader, whatIsNoPictureIsRefused) {
    expectRefused({});
    expectRefused("hello");
    expectRefused(QByteArray(1000, '\0'));
    expectRefused("%PDF-1.4\n");
}

TEST(ImageReader, drawingsThatAreProgramsAreRefused) {
    expectRefused("<svg xmlns='http://www.w3.org/2000/svg' width='10' height='10'/>");
    expectRefused("/* XPM */\nstatic char *x[] = {\"1 1 1 1\", \"a c #000000\", \"a\"};");
}

TEST_F(DamagedFiles, aFileCutShortNeverCrashes) {
    for (const char* format : {"PNG", "JPEG", "BMP", "PPM"}) {
        const QByteArray whole = saved(slope({40, 30}), format);
        for (qsizetype length = 0; length < whole.size(); length += 7)
            static_cast<void>(readImage(whole.left(length)));
        expectRefused(whole.left(8));
    }
}

TEST_F(DamagedFiles, aFileWithWrongBytesNeverCrashes) {
    std::mt19937 random(2);
    for (const char* format : {"PNG", "JPEG", "BMP", "PPM"}) {
        const QByteArray whole = saved(slope({40, 30}), format);
        for (int trial = 0; trial < 300; ++trial) {
            QByteArray damaged = whole;
            for (int i = 0; i < 4; ++i)
                damaged[static_cast<qsizetype>(random() % static_cast<unsigned>(damaged.size()))] =
                    static_cast<char>(random());
            const Result<Image> result = readImage(damaged);
            EXPECT_TRUE(result ? !result->isNull() : !result.error().message.isEmpty());
        }
    }
}

TEST(ImageReader, pathsThatAreNoFiles) {
    const QTemporaryDir folder;
    EXPECT_FALSE(readImageFile(folder.filePath("missing.png")));
    EXPECT_FALSE(readImageFile(folder.path()));
    EXPECT_FALSE(readImageFile("/dev/zero"));
    const QString pipe = folder.filePath("pipe.png");
    ASSERT_EQ(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    EXPECT_EQ(readImageFile(pipe).error().message, "This is not a file.");
    ASSERT_TRUE(QFile::link("/nowhere.png", folder.filePath("link.png")));
    EXPECT_FALSE(readImageFile(folder.filePath("link.png")));
}

TEST(ImageReader, aPhotographStandsUpright) {
    // Made by a camera held on its side: 90 degrees to the right, said in the file's first segment.
    const QByteArray plain = saved(slope(), "JPEG");
    const QByteArray exif("\xff\xe1\x00\x22"
                          "Exif\0\0MM\0*\0\0\0\x08\0\x01\x01\x12\0\x03\0\0\0\x01\0\x06\0\0\0\0\0\0",
                          36);
    const Result<Image> image = readImage(plain.left(2) + exif + plain.mid(2));
    ASSERT_TRUE(image);
    EXPECT_EQ(image->size(), QSizeF(80, 120));
}

TEST(ImageReader, manyThreadsMayReadAtOnce) {
    const QByteArray png = encodePng(slope());
    const QByteArray jpeg = saved(slope(), "JPEG");
    std::atomic<int> good{0};
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread)
        threads.emplace_back([&] {
            for (int i = 0; i < 25; ++i)
                good += readImage(png).has_value() + readImage(jpeg).has_value();
        });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(good, 200);
}
