#include "imaging/Image.h"

#include "base/SerialQueue.h"
#include "base/Shared.h"
#include "imaging/PngWriter.h"
#include "support/EventLoop.h"

#include <QCoreApplication>
#include <gtest/gtest.h>
#include <thread>
#include <vector>

using namespace marrowfin;
using namespace imaging;

namespace {

QImage pixels(QSize size = {40, 30}) {
    QImage image(size, QImage::Format_RGB32);
    image.fill(0xff336699U);
    return image;
}

class ImageValue : public testing::Test {
protected:
    void TearDown() override { SharedObjects::destroyAll(); }
};

} // namespace

TEST_F(ImageValue, aCapturedImageHasOneUnitPerPixelAtAnyScale) {
    QImage scaled = pixels({800, 600});
    scaled.setDevicePixelRatio(2);
    const Image image = Image::captured(scaled);
    EXPECT_EQ(image.size(), QSizeF(800, 600));
    EXPECT_EQ(image.pixels().devicePixelRatio(), 1);
    EXPECT_EQ(image.pixels().size(), QSize(800, 600));
}

TEST_F(ImageValue, anImageOfKnownDensityKeepsItsSize) {
    const Image image = Image::withSize(pixels({800, 600}), {400, 300});
    EXPECT_EQ(image.size(), QSizeF(400, 300));
    EXPECT_EQ(realPixelSize(image), QSize(800, 600));
}

TEST_F(ImageValue, noPixelsIsNoImage) {
    for (const Image& image : {Image(), Image::captured({}), Image::withSize({}, {10, 10})}) {
        EXPECT_TRUE(image.isNull());
        EXPECT_EQ(image.size(), QSizeF(0, 0));
        EXPECT_TRUE(image.pixels().isNull());
        EXPECT_EQ(realPixelSize(image), std::nullopt);
        EXPECT_FALSE(image.isEncoded());
        EXPECT_TRUE(image.png().isEmpty());
        EXPECT_EQ(test::awaited(image.encoded()), Result<QByteArray>(QByteArray()));
        image.startEncoding();
    }
}

TEST_F(ImageValue, copiesAreTheSameImageAndEqualPixelsAloneAreNot) {
    const Image image = Image::captured(pixels());
    const Image copy = image;
    EXPECT_EQ(copy, image);
    EXPECT_EQ(copy.pixels().constBits(), image.pixels().constBits());
    EXPECT_FALSE(Image::captured(pixels()) == image);
    EXPECT_EQ(Image(), Image());
}

TEST_F(ImageValue, isEncodedOnceForEveryone) {
    const Image image = Image::captured(pixels());
    EXPECT_FALSE(image.isEncoded());
    std::vector<Outcome<QByteArray>> waiting;
    for (int i = 0; i < 5; ++i)
        waiting.push_back(Image(image).encoded());
    const QByteArray png = image.png();
    EXPECT_EQ(png, encodePng(pixels()));
    EXPECT_TRUE(image.isEncoded());
    for (const Outcome<QByteArray>& outcome : waiting)
        EXPECT_EQ(test::awaited(outcome)->constData(),
                  png.constData()); // the very same bytes, not equal ones
    EXPECT_EQ(test::awaited(image.encoded())->constData(), png.constData());
}

TEST_F(ImageValue, encodesOffTheCallingThread) {
    const Image image = Image::captured(pixels({1600, 1200}));
    const Outcome<QByteArray> outcome = image.encoded();
    EXPECT_FALSE(outcome.isSettled()); // it would be, had this thread done the work
    EXPECT_EQ(*test::awaited(outcome), encodePng(pixels({1600, 1200})));
}

TEST_F(ImageValue, anyThreadMayStartAndTakeTheEncoding) {
    for (int i = 0; i < 30; ++i) {
        const Image image = Image::captured(pixels({64, 64}));
        std::vector<QByteArray> seen(4);
        std::vector<std::thread> threads;
        for (size_t thread = 0; thread < seen.size(); ++thread)
            threads.emplace_back([&, thread] {
                if (thread % 2 == 0)
                    image.startEncoding();
                seen[thread] = image.png();
            });
        for (std::thread& thread : threads)
            thread.join();
        for (const QByteArray& bytes : seen)
            EXPECT_EQ(bytes.constData(), image.png().constData());
    }
}

TEST_F(ImageValue, pngWithoutAStartedEncodingIsMadeHere) {
    const Image image = Image::captured(pixels());
    QByteArray bytes;
    std::thread([&] { bytes = image.png(); }).join();
    EXPECT_EQ(bytes, encodePng(pixels()));
    EXPECT_TRUE(image.isEncoded());
}

TEST_F(ImageValue, pixelsGoWithTheLastCopyThoughItsPngIsStillHeld) {
    bool isFreed = false;
    std::vector<uchar> memory(40 * 30 * 4);
    Outcome<QByteArray> outcome = settled<QByteArray>(QByteArray());
    {
        const Image image = Image::captured(QImage(
            memory.data(), 40, 30, QImage::Format_RGB32, [](void* flag) { *static_cast<bool*>(flag) = true; },
            &isFreed));
        outcome = image.encoded();
        EXPECT_FALSE(test::awaited(outcome)->isEmpty());
    }
    SharedObjects::destroyAll(); // the encoding's own hold on the image ends before its queue does
    EXPECT_TRUE(isFreed);
    EXPECT_FALSE(test::awaited(outcome)->isEmpty());
}

TEST_F(ImageValue, anEncodingUnderWayOutlivesTheImage) {
    Outcome<QByteArray> outcome = Image::captured(pixels({1600, 1200})).encoded();
    EXPECT_EQ(*test::awaited(outcome), encodePng(pixels({1600, 1200})));
}
