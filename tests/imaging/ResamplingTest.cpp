#include "imaging/Resampling.h"

#include <cmath>
#include <gtest/gtest.h>
#include <random>

using namespace marrowfin;
using namespace imaging;

namespace {

const std::atomic<bool> goOn = false;

QImage noise(QSize size, QImage::Format format) {
    std::mt19937 random(7);
    QImage image(size, QImage::Format_ARGB32);
    for (int y = 0; y < size.height(); ++y)
        for (int x = 0; x < size.width(); ++x)
            image.setPixel(x, y, static_cast<QRgb>(random()));
    return image.convertToFormat(format);
}

// How much of each pixel lies in the part of a line that one pixel of a smaller line stands for.
double share(int pixel, int index, int from, int to) {
    const double low = static_cast<double>(index) * from / to;
    const double high = static_cast<double>(index + 1) * from / to;
    return std::max(std::min(high, pixel + 1.0) - std::max(low, static_cast<double>(pixel)), 0.0);
}

// The definition, plainly.
std::array<double, 4> averageAt(const QImage& image, int x, int y, QSize size) {
    std::array<double, 4> sum{};
    double area = 0;
    for (int row = 0; row < image.height(); ++row)
        for (int column = 0; column < image.width(); ++column) {
            const double weight =
                share(row, y, image.height(), size.height()) * share(column, x, image.width(), size.width());
            const quint32 pixel = reinterpret_cast<const quint32*>(image.constScanLine(row))[column];
            for (std::size_t byte = 0; byte < 4; ++byte)
                sum[byte] += weight * ((pixel >> (8 * byte)) & 0xff);
            area += weight;
        }
    for (double& value : sum)
        value /= area;
    return sum;
}

void expectAverages(const QImage& image, QSize size) {
    const QImage result = areaAveraged(image, size, goOn);
    ASSERT_EQ(result.size(), size);
    ASSERT_EQ(result.format(), image.format());
    for (int y = 0; y < size.height(); ++y)
        for (int x = 0; x < size.width(); ++x) {
            const std::array<double, 4> expected = averageAt(image, x, y, size);
            const quint32 pixel = reinterpret_cast<const quint32*>(result.constScanLine(y))[x];
            for (std::size_t byte = 0; byte < 4; ++byte)
                ASSERT_NEAR((pixel >> (8 * byte)) & 0xff, expected[byte], 0.502)
                    << x << ", " << y << ", byte " << byte;
        }
}

} // namespace

TEST(Resampling, aPixelIsTheExactAverageOfItsArea) {
    for (const QImage::Format format : {QImage::Format_RGB32, QImage::Format_ARGB32_Premultiplied}) {
        expectAverages(noise({97, 61}, format), {13, 7});
        expectAverages(noise({97, 61}, format), {48, 30});
        expectAverages(noise({64, 64}, format), {16, 8});
        expectAverages(noise({900, 11}, format), {3, 1}); // more pixels than one word can sum
        expectAverages(noise({5, 700}, format), {2, 9});
    }
}

TEST(Resampling, everyFormatIsReadAsWhatItShows) {
    for (const QImage::Format format : {QImage::Format_ARGB32, QImage::Format_RGB888, QImage::Format_Indexed8,
                                        QImage::Format_Grayscale8, QImage::Format_Mono}) {
        const QImage image = noise({120, 90}, format); // more than one band of rows
        const QImage plain = image.convertToFormat(
            image.hasAlphaChannel() ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32);
        EXPECT_EQ(areaAveraged(image, {17, 11}, goOn), areaAveraged(plain, {17, 11}, goOn)) << format;
        EXPECT_EQ(picked(image, {17, 11}), picked(plain, {17, 11})) << format;
    }
}

TEST(Resampling, whoIsToldToStopGivesNothing) {
    const std::atomic<bool> stop = true;
    EXPECT_TRUE(areaAveraged(noise({40, 40}, QImage::Format_RGB32), {10, 10}, stop).isNull());
}

TEST(Resampling, aRoughCopyHasEachPixelFromItsPlace) {
    QImage bands(30, 60'000, QImage::Format_RGB32);
    for (int y = 0; y < bands.height(); ++y)
        for (int x = 0; x < 30; ++x)
            bands.setPixel(x, y, qRgb(x / 10 * 100, y / 600, 0));
    const QImage rough = picked(bands, {3, 100});
    for (int y = 0; y < 100; ++y)
        for (int x = 0; x < 3; ++x)
            ASSERT_EQ(rough.pixel(x, y), qRgb(x * 100, y, 0)) << x << ", " << y;
}
