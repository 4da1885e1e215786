#include "capture/SelfTimerOverlay.h"

#include "capture/CountdownDigit.h"
#include "chrome/AnimationClock.h"
#include "platform/fake/FakeDesktop.h"
#include "support/Input.h"

#include <algorithm>
#include <gtest/gtest.h>

using namespace marrowfin;
using namespace capture;
using namespace marrowfin::testsupport;
using marrowfin::chrome::AnimationClock;
using marrowfin::fake::FakeDesktop;
using marrowfin::fake::waitUntil;

namespace {

// Holds the time: what is looked at stands still meanwhile.
class SelfTimerOverlayTest : public testing::Test {
protected:
    SelfTimerOverlayTest() { AnimationClock::shared().hold(); }

    void pass(double seconds) {
        AnimationClock::shared().advance(seconds);
        QApplication::processEvents();
    }
    CountdownDigit* digit() { return onlyChildOfTopLevels<CountdownDigit>(); }

    FakeDesktop desktop;
    SelfTimerOverlay overlay;
    FlowScope flows;
};

} // namespace

TEST_F(SelfTimerOverlayTest, countsDownEachDigitFadingForASecondAndReturnsWhenItIsOver) {
    desktop.addScreen(1, {0, 0, 800, 600});
    const Outcome<void> over = flows.start(overlay.run(3));
    for (const char* number : {"3", "2", "1"}) {
        ASSERT_NE(digit(), nullptr) << number;
        EXPECT_EQ(digit()->text(), QLatin1String(number));
        EXPECT_EQ(digit()->alpha(), 1.0);
        pass(0.4);
        EXPECT_NEAR(digit()->alpha(), 0.65, 0.04) << "half the way at half the time, to a frame";
        pass(0.42);
        EXPECT_NEAR(digit()->alpha(), 0.3, 1e-9);
        pass(0.17);
        EXPECT_EQ(digit()->text(), QLatin1String(number)) << "a whole second";
        EXPECT_FALSE(over.isSettled());
        pass(0.02);
    }
    EXPECT_TRUE(over.isSettled());
    ASSERT_TRUE(waitUntil([&] { return desktop.surfaceHost.surfaces.empty(); }));
}

TEST_F(SelfTimerOverlayTest, theDigitIsSeenInWhiteOverTheDimOfTheWholeScreen) {
    desktop.addScreen(1, {0, 0, 800, 600});
    flows.start(overlay.run(3));
    QWidget& window = *digit()->window();
    EXPECT_EQ(window.size(), QSize(800, 600));
    const auto shot = [&window] {
        QImage image(window.size(), QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        window.render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
        return image;
    };
    const auto brightest = [](const QImage& image) {
        int most = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                most = std::max(most, qRed(image.pixel(x, y)));
        return most;
    };
    EXPECT_NEAR(qAlpha(shot().pixel(5, 5)), 102, 1) << "black at 0.4";
    EXPECT_EQ(brightest(shot()), 255);
    pass(0.9);
    EXPECT_NEAR(brightest(shot()), 0.3 * 255, 2);
    for (int left = 0; left < 3; ++left)
        pass(1.01);
}

TEST_F(SelfTimerOverlayTest, aScreenThatGoesMeanwhileDoesNotEndTheCount) {
    desktop.addScreen(1, {0, 0, 800, 600});
    const Outcome<void> over = flows.start(overlay.run(2));
    desktop.surfaceHost.surfaces.front()->takeAway();
    pass(1.01);
    EXPECT_FALSE(over.isSettled());
    pass(1.01);
    EXPECT_TRUE(over.isSettled());
}

TEST_F(SelfTimerOverlayTest, theOverlayTakesNoClickAndNoKeyboard) {
    desktop.addScreen(1, {0, 0, 800, 600});
    flows.start(overlay.run(1));
    const fake::FakeSurface& surface = *desktop.surfaceHost.surfaces.front();
    EXPECT_TRUE(surface.traits.passesClicks);
    EXPECT_EQ(surface.traits.keyboard, platform::SurfaceKeyboard::None);
    EXPECT_EQ(surface.traits.level, platform::SurfaceLevel::Overlay);
    pass(1.01);
    ASSERT_TRUE(waitUntil([&] { return desktop.surfaceHost.surfaces.empty(); }));
}

// Where nothing blends windows the outline is all that is seen of them.
TEST_F(SelfTimerOverlayTest, itsOutlineIsTheDigitAloneSoThatTheScreenGoesOnLiving) {
    desktop.addScreen(1, {0, 0, 800, 600});
    flows.start(overlay.run(2));
    const fake::FakeSurface& surface = *desktop.surfaceHost.surfaces.front();
    EXPECT_EQ(surface.traits.backdrop, platform::SurfaceBackdrop::Nothing);
    const QRegion two = surface.outline;
    ASSERT_FALSE(two.isEmpty());
    EXPECT_TRUE(two.intersects(digit()->numberRect().toRect()));
    EXPECT_TRUE(QRect(350, 200, 100, 200).contains(two.boundingRect())) << "no more than a digit";
    EXPECT_FALSE(two.contains(digit()->numberRect().toRect().topLeft())) << "its form, not its box";
    pass(1.01);
    EXPECT_NE(surface.outline, two);
    pass(1.01);
}

TEST_F(SelfTimerOverlayTest, aDigitIsCentredAlsoWhenItsWidthDiffersFromTheLast) {
    QWidget parent;
    parent.resize(800, 600);
    auto* digit = new CountdownDigit(&parent);
    digit->setGeometry(parent.rect());
    double widths[2] = {};
    for (const int number : {10, 9}) {
        digit->showNumber(number);
        const QRectF rect = digit->numberRect();
        widths[number == 10 ? 0 : 1] = rect.width();
        EXPECT_DOUBLE_EQ(rect.center().x(), 400) << number;
        EXPECT_DOUBLE_EQ(rect.center().y(), 300) << number;
    }
    EXPECT_GT(widths[0], widths[1]);
}

TEST_F(SelfTimerOverlayTest, withoutAMainScreenItReturnsAtOnce) {
    const Outcome<void> over = flows.start(overlay.run(10));
    EXPECT_TRUE(over.isSettled());
    EXPECT_EQ(desktop.surfaceHost.hostedCount, 0);
}

TEST_F(SelfTimerOverlayTest, zeroSecondsShowsNoDigit) {
    desktop.addScreen(1, {0, 0, 800, 600});
    const Outcome<void> over = flows.start(overlay.run(0));
    EXPECT_TRUE(over.isSettled());
    EXPECT_EQ(desktop.surfaceHost.hostedCount, 1);
    ASSERT_TRUE(waitUntil([&] { return desktop.surfaceHost.surfaces.empty(); }));
}
