// How a capture of any shape becomes a thumbnail.
#include "panel/Thumbnail.h"

#include <QPainter>
#include <gtest/gtest.h>

namespace marrowfin::panel {

using namespace imaging;

namespace {
const QRectF mount(0, 0, 220, 140);

Image filled(int width, int height, const QColor& color) {
    QImage pixels(width, height, QImage::Format_RGB32);
    pixels.fill(color);
    return Image::captured(pixels);
}
} // namespace

TEST(FitRect, ShrinksOntoWholePointsAndNeverEnlarges) {
    EXPECT_EQ(fitRect({440, 280}, mount), mount);
    EXPECT_EQ(fitRect({2200, 700}, mount), QRectF(0, 35, 220, 70));
    EXPECT_EQ(fitRect({40, 30}, mount), QRectF(90, 55, 40, 30));
    // 180 x 800: 31.5 wide, centred, rounded outwards.
    EXPECT_EQ(fitRect({180, 800}, mount), QRectF(94, 0, 32, 140));
    EXPECT_EQ(fitRect({0, 30}, mount), mount);
    EXPECT_EQ(fitRect({40, -1}, mount), mount);
}

TEST(FillRect, CoversTheMount) {
    EXPECT_EQ(fillRect({220, 140}, mount), mount);
    EXPECT_EQ(fillRect({100, 100}, mount), QRectF(0, -40, 220, 220));
    EXPECT_EQ(fillRect({0, 0}, mount), mount);
}

TEST(Thumbnails, AreTwiceThePointsWhateverTheCapture) {
    EXPECT_EQ(renderThumbnail(filled(2200, 700, Qt::red), mount).sharp.size(), QSize(440, 140));
    EXPECT_EQ(renderThumbnail(filled(40, 30, Qt::red), mount).sharp.size(), QSize(80, 60));
    EXPECT_EQ(renderThumbnail(filled(6016, 3384, Qt::red), mount).sharp.size(), QSize(440, 248));
}

TEST(Thumbnails, OfOneColourAreOfThatColourInFrontAndBehind) {
    for (const QSize size : {QSize(640, 400), QSize(3, 16000), QSize(16000, 3), QSize(1, 1)}) {
        const Thumbnail thumbnail =
            renderThumbnail(filled(size.width(), size.height(), QColor(30, 90, 200)), mount);
        EXPECT_EQ(thumbnail.sharp.pixelColor(0, 0), QColor(30, 90, 200)) << size.width();
        for (const QPoint place : {QPoint(0, 0), QPoint(110, 70), QPoint(219, 139)}) {
            const QColor behind = thumbnail.backdrop.pixelColor(place);
            EXPECT_NEAR(behind.blue(), 200, 2) << size.width() << " at " << place.x();
            EXPECT_EQ(behind.alpha(), 255);
        }
    }
}

TEST(Thumbnails, TheBackdropIsTheMiddleOfATallCaptureBlurred) {
    QImage pixels(200, 4000, QImage::Format_RGB32);
    pixels.fill(Qt::black);
    QPainter(&pixels).fillRect(0, 1800, 200, 400, Qt::white); // around the middle
    const Thumbnail thumbnail = renderThumbnail(Image::captured(pixels), mount);
    // Filling 220 points, 200 pixels become 220: the mount shows the middle 127 pixels, all of them white.
    EXPECT_GT(thumbnail.backdrop.pixelColor(110, 70).red(), 250);
    EXPECT_GT(thumbnail.backdrop.pixelColor(110, 2).red(), 240);
}

TEST(Thumbnails, ABlurKeepsItsEdgesLit) {
    QImage pixels(72, 40, QImage::Format_ARGB32_Premultiplied);
    pixels.fill(Qt::white);
    EXPECT_EQ(blurredClamped(pixels, 8).pixelColor(0, 0), QColor(Qt::white));
    QPainter(&pixels).fillRect(36, 0, 36, 40, Qt::black);
    const QImage blurred = blurredClamped(pixels, 8);
    EXPECT_NEAR(blurred.pixelColor(36, 20).red(), 127, 8);
    EXPECT_NEAR(blurred.pixelColor(28, 20).red(), 255 * 0.5 * std::erfc(-7.5 / 8 / std::sqrt(2)), 4);
}

TEST(Thumbnails, TheTintKeepsTheHueAndCalmsTheRest) {
    const auto tint = [](const QColor& color) { return *tintOf(filled(30, 20, color).pixels()); };
    const QColor loud = tint(QColor(255, 0, 0));
    EXPECT_NEAR(loud.hsvHueF(), 0, 0.01);
    EXPECT_NEAR(loud.hsvSaturationF(), 0.5, 0.01);
    EXPECT_NEAR(loud.valueF(), 0.75, 0.01);
    EXPECT_NEAR(tint(Qt::black).valueF(), 0.35, 0.01);
    EXPECT_NEAR(tint(QColor(100, 110, 120)).valueF(), 120 / 255.0, 0.01);
    EXPECT_FALSE(tintOf(QImage()));
}

// A card leaves out the shadows behind them.
TEST(Thumbnails, OfAnOpaqueCaptureAreOpaqueThroughout) {
    for (const QSize size : {QSize(40, 30), QSize(3000, 500), QSize(300, 1400), QSize(1921, 1079)}) {
        const Thumbnail thumbnail = renderThumbnail(filled(size.width(), size.height(), Qt::red), mount);
        EXPECT_FALSE(thumbnail.sharp.hasAlphaChannel());
        for (int y = 0; y < thumbnail.backdrop.height(); ++y)
            for (int x = 0; x < thumbnail.backdrop.width(); ++x)
                ASSERT_EQ(qAlpha(thumbnail.backdrop.pixel(x, y)), 255) << x << ' ' << y;
    }
}

TEST(Thumbnails, WithoutPixelsThereIsNothingToShow) {
    const Thumbnail thumbnail = renderThumbnail(Image(), mount);
    EXPECT_TRUE(thumbnail.sharp.isNull());
    EXPECT_TRUE(thumbnail.backdrop.isNull());
    EXPECT_FALSE(thumbnail.tint);
    EXPECT_EQ(thumbnail.fit, mount);
}

} // namespace marrowfin::panel
