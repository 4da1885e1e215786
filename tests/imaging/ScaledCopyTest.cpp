#include "imaging/ScaledCopy.h"

#include "base/Shared.h"
#include "imaging/Resampling.h"

#include <QDeadlineTimer>
#include <QEventLoop>
#include <gtest/gtest.h>

using namespace marrowfin;
using namespace imaging;

namespace {

// Black and white lines of one pixel: any rough copy has only those, a good one is grey.
Image lines(int width, int height) {
    QImage pixels(width, height, QImage::Format_RGB32);
    for (int y = 0; y < height; ++y)
        std::fill_n(reinterpret_cast<QRgb*>(pixels.scanLine(y)), width,
                    y % 2 ? qRgb(255, 255, 255) : qRgb(0, 0, 0));
    return Image::captured(pixels);
}
Image page() {
    return lines(300, 60'000); // 18 million pixels
}
bool isGrey(const QImage& copy) {
    for (int y = 0; y < copy.height(); ++y)
        for (int x = 0; x < copy.width(); ++x)
            if (std::abs(qRed(copy.pixel(x, y)) - 127) > 10)
                return false;
    return true;
}

class ScaledCopies : public testing::Test {
protected:
    ~ScaledCopies() override { SharedObjects::destroyAll(); }

    void waitForArrivals(int count) {
        QEventLoop loop;
        QDeadlineTimer deadline(30'000);
        while (arrivals < count && !deadline.hasExpired())
            loop.processEvents();
        loop.processEvents();
        EXPECT_EQ(arrivals, count);
    }

    int arrivals = 0;
    ScaledCopy copy{[this] { ++arrivals; }};
};

} // namespace

TEST_F(ScaledCopies, anOrdinaryImageIsThereAtOnce) {
    const Image image = lines(640, 400);
    EXPECT_EQ(copy.of(image, {320, 200}), resampled(image.pixels(), {320, 200}));
    EXPECT_TRUE(copy.isFine());
    EXPECT_EQ(copy.of(image, {640, 400}), image.pixels());
    EXPECT_TRUE(copy.of(Image(), {5, 5}).isNull());
}

TEST_F(ScaledCopies, aLargeImageIsRoughUntilItsCopyArrives) {
    const Image image = page();
    const QImage rough = copy.of(image, {10, 500});
    EXPECT_FALSE(copy.isFine());
    EXPECT_EQ(rough.size(), QSize(10, 500));
    EXPECT_FALSE(isGrey(rough));
    EXPECT_EQ(copy.of(image, {10, 500}).cacheKey(), rough.cacheKey());
    waitForArrivals(1);
    EXPECT_TRUE(copy.isFine());
    const QImage& fine = copy.of(image, {10, 500});
    EXPECT_EQ(fine.size(), QSize(10, 500));
    EXPECT_TRUE(isGrey(fine));
}

TEST_F(ScaledCopies, onlyTheSizeAskedForLastArrives) {
    const Image image = page();
    for (int height = 300; height < 320; ++height)
        copy.of(image, {6, height});
    waitForArrivals(1);
    EXPECT_TRUE(isGrey(copy.of(image, {6, 319})));
    EXPECT_TRUE(copy.isFine());
    // Of the next size the last fine one stands in: nothing flickers while a window is resized.
    EXPECT_TRUE(isGrey(copy.of(image, {6, 330})));
    EXPECT_FALSE(copy.isFine());
    waitForArrivals(2);
}

TEST_F(ScaledCopies, anotherImageIsNeverShownThisOnesCopy) {
    const Image image = page();
    copy.of(image, {6, 300});
    waitForArrivals(1);
    QImage red(5000, 5000, QImage::Format_RGB32);
    red.fill(Qt::red);
    const Image other = Image::captured(red);
    copy.of(image, {6, 310});
    EXPECT_EQ(copy.of(other, {6, 310}).pixelColor(3, 200), QColor(Qt::red));
    waitForArrivals(2);
    EXPECT_EQ(copy.of(other, {6, 310}).pixelColor(3, 200), QColor(Qt::red));
}

TEST_F(ScaledCopies, whoGoesMeanwhileIsNotTold) {
    const Image image = page();
    bool told = false;
    {
        ScaledCopy gone([&] { told = true; });
        gone.of(image, {10, 500});
    }
    copy.of(image, {10, 500}); // made after it, on the same queue
    waitForArrivals(1);
    EXPECT_FALSE(told);
}
