// Images pinned above other windows: how large, how they are moved, sized and closed.
#include "base/Shared.h"
#include "chrome/AnimationClock.h"
#include "pin/PinCloseButton.h"
#include "pin/PinGeometry.h"
#include "pin/PinManager.h"
#include "pin/PinnedContentView.h"
#include "platform/fake/FakeDesktop.h"
#include "support/Input.h"

#include <QCoreApplication>
#include <algorithm>
#include <cstdlib>
#include <gtest/gtest.h>

namespace marrowfin::pin {

using namespace imaging;

namespace {
Image picture(int width, int height) {
    QImage pixels(width, height, QImage::Format_RGB32);
    pixels.fill(QColor(20, 140, 90));
    return Image::captured(pixels);
}

class Pins : public testing::Test {
protected:
    Pins() {
        chrome::AnimationClock::shared().hold();
        desktop.addScreen(1, {0, 0, 1440, 900});
    }
    ~Pins() override { SharedObjects::destroyAll(); }

    PinnedWindow& pin(const Image& image) {
        PinManager::shared().pin(image);
        return *PinManager::shared().pinnedWindows().back();
    }
    std::size_t count() { return PinManager::shared().pinnedWindows().size(); }
    void pass(double seconds) {
        chrome::AnimationClock::shared().advance(seconds);
        QCoreApplication::processEvents();
    }
    // A place on the image, from its top left.
    static QPointF onImage(double x, double y) {
        return {PinnedContentView::halo + x, PinnedContentView::halo + y};
    }
    // The pointer's own way, on the screen: the widget moves under it.
    static void drag(PinnedContentView& view, const QPointF& from, const QPointF& by) {
        const auto send = [&](QEvent::Type type, const QPointF& screen, Qt::MouseButtons held) {
            QMouseEvent event(type, from, screen, Qt::LeftButton, held, Qt::NoModifier);
            QApplication::sendEvent(&view, &event);
        };
        const QPointF start(500, 500);
        send(QEvent::MouseButtonPress, start, Qt::LeftButton);
        send(QEvent::MouseMove, start + by / 2, Qt::LeftButton);
        send(QEvent::MouseMove, start + by, Qt::LeftButton);
        send(QEvent::MouseButtonRelease, start + by, Qt::NoButton);
    }
    static double alpha(PinnedWindow& window) {
        return static_cast<PinCloseButton*>(window.content().closeButton())->alpha();
    }

    fake::FakeDesktop desktop;
};
} // namespace

TEST_F(Pins, AreAtMostSixHundredByFiveHundredAndNeverEnlarged) {
    EXPECT_EQ(pin(picture(1200, 800)).frame().rect, QRectF(100, 100, 600, 400));
    EXPECT_EQ(pin(picture(1000, 2000)).frame().rect, QRectF(100, 100, 250, 500));
    EXPECT_EQ(pin(picture(100, 100)).frame().rect, QRectF(100, 100, 100, 100));
}

TEST_F(Pins, AnEmptyImageIsIgnored) {
    PinManager::shared().pin(Image());
    QImage pixels(10, 10, QImage::Format_RGB32);
    PinManager::shared().pin(Image::withSize(pixels, {0, 10}));
    PinManager::shared().pin(Image::withSize(pixels, {10, -1}));
    EXPECT_EQ(count(), 0u);
    EXPECT_EQ(desktop.surfaceHost.hostedCount, 0);
}

TEST_F(Pins, StandAboveOthersAndTakeTheKeyboard) {
    PinnedWindow& pinned = pin(picture(300, 200));
    const fake::FakeSurface* surface = desktop.surfaceHost.surfaceOf(&pinned.content());
    ASSERT_NE(surface, nullptr);
    EXPECT_EQ(surface->traits.level, platform::SurfaceLevel::Pin);
    EXPECT_EQ(surface->traits.keyboard, platform::SurfaceKeyboard::OnClick);
    EXPECT_TRUE(surface->isVisible());
    // The shadow around the image lets clicks through.
    EXPECT_EQ(surface->inputRegion, QRegion(24, 24, 300, 200));
    EXPECT_EQ(surface->outline, QRegion(24, 24, 300, 200));
    EXPECT_EQ(surface->frame().rect, QRectF(76, 76, 348, 248));
}

TEST_F(Pins, OfOneImageAreIndependentAndStartAtTheSamePlace) {
    const Image image = picture(300, 200);
    PinnedWindow& first = pin(image);
    PinnedWindow& second = pin(image);
    EXPECT_EQ(first.frame(), second.frame());
    drag(second.content(), onImage(150, 100), {40, 30});
    EXPECT_EQ(first.frame().rect.topLeft(), QPointF(100, 100));
    EXPECT_EQ(second.frame().rect, QRectF(140, 70, 300, 200));
}

TEST_F(Pins, TheCloseButtonFadesWithThePointer) {
    PinnedWindow& pinned = pin(picture(300, 200));
    pass(0); // the window learns where the real pointer is
    EXPECT_EQ(alpha(pinned), 0);
    const QPointF place = onImage(100, 100);
    QEnterEvent enter(place, place, place);
    QApplication::sendEvent(&pinned.content(), &enter);
    pass(0.075);
    EXPECT_GT(alpha(pinned), 0.2);
    EXPECT_LT(alpha(pinned), 0.8);
    pass(0.1);
    EXPECT_EQ(alpha(pinned), 1);
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(&pinned.content(), &leave);
    pass(0.2);
    EXPECT_EQ(alpha(pinned), 0);
    EXPECT_FALSE(chrome::AnimationClock::shared().isRunning());
}

TEST_F(Pins, TheCloseButtonClosesItsPinAndSaysSo) {
    pin(picture(300, 200));
    PinnedWindow& second = pin(picture(310, 200));
    QAbstractButton* button = second.content().closeButton();
    EXPECT_EQ(button->toolTip(), QStringLiteral("Unpin (Escape)"));
    EXPECT_EQ(button->accessibleName(), QStringLiteral("Unpin"));
    EXPECT_EQ(button->geometry(), QRect(24 + 8, 24 + 8, 20, 20));
    button->click();
    ASSERT_EQ(count(), 1u);
    EXPECT_EQ(PinManager::shared().pinnedWindows()[0]->frame().rect.width(), 300);
    pass(0);
    EXPECT_EQ(desktop.surfaceHost.surfaces.size(), 1u);
}

TEST_F(Pins, EscapeClosesThePinThatHasTheKeyboard) {
    PinnedWindow& first = pin(picture(300, 200));
    pin(picture(310, 200));
    testsupport::pressKey(first.content(), Qt::Key_A);
    EXPECT_EQ(count(), 2u);
    testsupport::pressKey(first.content(), Qt::Key_Escape);
    ASSERT_EQ(count(), 1u);
    EXPECT_EQ(PinManager::shared().pinnedWindows()[0]->frame().rect.width(), 310);
}

TEST_F(Pins, APinWhoseMonitorIsUnpluggedComesBackOnAnother) {
    desktop.addScreen(2, {1440, 0, 1280, 720});
    PinnedWindow& stays = pin(picture(200, 100));
    drag(stays.content(), onImage(100, 50), {300, -200});
    PinnedWindow& lost = pin(picture(300, 200));
    drag(lost.content(), onImage(150, 100), {1500, -100});
    ASSERT_EQ(lost.frame().rect, QRectF(1600, 200, 300, 200));
    desktop.surfaceHost.surfaceOf(&lost.content())->takeAway();
    desktop.removeScreen(2);
    pass(0);
    ASSERT_EQ(count(), 2u);
    EXPECT_TRUE(lost.surface().isVisible());
    EXPECT_EQ(lost.frame().rect, QRectF(100, 100, 300, 200));
    EXPECT_EQ(stays.frame().rect, QRectF(400, 300, 200, 100));
}

TEST_F(Pins, APinOnNoScreenAnyMoreComesBackAndOneThatIsPartlySeenStays) {
    PinnedWindow& high = pin(picture(300, 200));
    drag(high.content(), onImage(150, 100), {0, -650});
    PinnedWindow& lower = pin(picture(300, 200));
    drag(lower.content(), onImage(150, 100), {0, -550});
    const auto& places = desktop.surfaceHost.surfaceOf(&lower.content())->frames;
    const std::size_t placed = places.size();
    desktop.screens.shown[0].frame = desktop.screens.shown[0].visibleFrame = {QRectF(0, 0, 1024, 700)};
    desktop.screens.tellChanged();
    EXPECT_EQ(high.frame().rect, QRectF(100, 100, 300, 200));
    EXPECT_EQ(lower.frame().rect, QRectF(100, 650, 300, 200));
    EXPECT_GT(places.size(), placed); // its place counts from the bottom, which has moved
}

TEST_F(Pins, WithoutAnyScreenAPinWaitsForOne) {
    PinnedWindow& pinned = pin(picture(300, 200));
    desktop.surfaceHost.surfaceOf(&pinned.content())->takeAway();
    desktop.removeScreen(1);
    pass(0);
    ASSERT_EQ(count(), 1u);
    EXPECT_FALSE(pinned.surface().isVisible());
    desktop.addScreen(3, {0, 0, 1024, 768});
    desktop.screens.tellChanged();
    EXPECT_TRUE(pinned.surface().isVisible());
}

TEST_F(Pins, AnEdgeResizesOnTheImagesShapeAndTheButtonStaysInItsCorner) {
    PinnedWindow& pinned = pin(picture(300, 200));
    drag(pinned.content(), onImage(299, 100), {150, 0}); // the right edge
    EXPECT_EQ(pinned.frame().rect.size(), QSizeF(450, 300));
    EXPECT_EQ(pinned.frame().rect.left(), 100);
    EXPECT_EQ(pinned.content().closeButton()->geometry().topLeft(), QPoint(32, 32));
    EXPECT_EQ(desktop.surfaceHost.surfaceOf(&pinned.content())->inputRegion, QRegion(24, 24, 450, 300));
}

namespace {

// A scrolled page in lines of one pixel, black and white, its last part red and white.
Image scrolledPage() {
    QImage pixels(300, 60'000, QImage::Format_RGB32);
    for (int y = 0; y < pixels.height(); ++y)
        std::fill_n(reinterpret_cast<QRgb*>(pixels.scanLine(y)), pixels.width(),
                    y % 2        ? qRgb(255, 255, 255)
                    : y < 40'000 ? qRgb(0, 0, 0)
                                 : qRgb(255, 0, 0));
    return Image::captured(pixels);
}

QImage seen(PinnedWindow& pinned) {
    QImage picture(pinned.content().size(), QImage::Format_RGB32);
    picture.fill(Qt::blue);
    pinned.content().render(&picture);
    return picture.copy(pinned.content().imageArea());
}

// Every pixel is an average of both lines, in its own part of the page.
bool isFine(const QImage& picture) {
    const auto near = [](int value, int expected) { return std::abs(value - expected) <= 12; };
    for (int y = 1; y < picture.height() - 1; ++y) {
        const QColor color = picture.pixelColor(picture.width() / 2, y);
        const double place = (y + 0.5) / picture.height();
        if (std::abs(place - 2.0 / 3) < 0.02)
            continue; // where black ends and red begins
        if (!near(color.green(), 127) || !near(color.red(), place < 2.0 / 3 ? 127 : 255))
            return false;
    }
    return true;
}

} // namespace

TEST_F(Pins, AScrolledPageIsUpAtOnceAndItsPictureFollows) {
    PinnedWindow& pinned = pin(scrolledPage());
    EXPECT_EQ(pinned.frame().rect.size(), QSizeF(3, 500));
    EXPECT_TRUE(pinned.surface().isVisible());
    const QImage rough = seen(pinned); // not made of the whole page, which takes its time
    EXPECT_FALSE(isFine(rough));
    EXPECT_NE(rough.pixelColor(1, 250), QColor(Qt::blue)); // but something of it is there
    EXPECT_EQ(rough.pixelColor(1, 490).red(), 255);
    EXPECT_TRUE(fake::waitUntil([&] { return isFine(seen(pinned)); }));
}

TEST_F(Pins, AScrolledPageMadeLargerGetsAFinerPicture) {
    PinnedWindow& pinned = pin(scrolledPage());
    ASSERT_TRUE(fake::waitUntil([&] { return isFine(seen(pinned)); }));
    drag(pinned.content(), onImage(1, 499), {0, 5500});
    EXPECT_EQ(pinned.frame().rect.size(), QSizeF(30, 6000));
    EXPECT_TRUE(isFine(seen(pinned))); // the coarser one stands in
    EXPECT_TRUE(fake::waitUntil([&] {
        // Black ends and red begins within a few rows.
        const QImage picture = seen(pinned);
        return picture.pixelColor(10, 3995).red() < 140 && picture.pixelColor(10, 4005).red() > 250;
    }));
}

TEST(PinGeometry, TheCornerOppositeOfTheHeldOneStays) {
    const DesktopRect frame{QRectF(100, 100, 300, 200)};
    const QSizeF image(300, 200);
    // y up: the upper left corner is held, the lower right one stays.
    EXPECT_EQ(resizedPin(frame, Qt::LeftEdge | Qt::TopEdge, {-150, 10}, image).rect,
              QRectF(-50, 100, 450, 300));
    EXPECT_EQ(resizedPin(frame, Qt::RightEdge | Qt::BottomEdge, {0, -100}, image).rect,
              QRectF(100, 0, 450, 300));
}

TEST(PinGeometry, NeverGoesBelowItsSmallestAndKeepsTheShape) {
    const DesktopRect frame{QRectF(100, 100, 300, 200)};
    const DesktopRect small = resizedPin(frame, Qt::RightEdge, {-1000, 0}, {300, 200});
    EXPECT_EQ(small.rect.size(), QSizeF(36, 24));
    EXPECT_EQ(resizedPin(frame, {}, {50, 50}, {300, 200}), frame);
}

TEST(PinGeometry, APinThatIsThinnerThanTheSmallestSideKeepsItsSizeWhenItIsTouched) {
    const QSizeF thin(600, 18);
    const DesktopRect start{QRectF(pinOrigin, pinSize(thin))};
    EXPECT_EQ(resizedPin(start, Qt::RightEdge, {0, 0}, thin).rect, start.rect);
    EXPECT_EQ(resizedPin(start, Qt::RightEdge, {-100, 0}, thin).rect, start.rect);
    EXPECT_EQ(resizedPin(start, Qt::RightEdge, {600, 0}, thin).rect.size(), QSizeF(1200, 36));
    const QSizeF dot(3, 2);
    const DesktopRect small{QRectF(pinOrigin, pinSize(dot))};
    EXPECT_EQ(resizedPin(small, Qt::TopEdge, {0, -1}, dot).rect, small.rect);
}

TEST(PinGeometry, EdgesAreNarrowAndATinyPinKeepsAMiddle) {
    EXPECT_EQ(pinEdgesAt({300, 200}, {150, 100}), Qt::Edges());
    EXPECT_EQ(pinEdgesAt({300, 200}, {5, 100}), Qt::Edges(Qt::LeftEdge));
    EXPECT_EQ(pinEdgesAt({300, 200}, {6, 100}), Qt::Edges());
    EXPECT_EQ(pinEdgesAt({300, 200}, {299, 199}), Qt::RightEdge | Qt::TopEdge);
    EXPECT_EQ(pinEdgesAt({9, 9}, {4.5, 4.5}), Qt::Edges());
}

} // namespace marrowfin::pin
