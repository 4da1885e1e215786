#include "capture/SelfTimerOverlay.h"

#include "base/Clock.h"
#include "capture/CountdownDigit.h"
#include "platform/fake/FakeDesktop.h"
#include "support/Input.h"

#include <gtest/gtest.h>

using namespace marrowfin;
using namespace marrowfin::testsupport;
using marrowfin::fake::FakeDesktop;
using marrowfin::fake::waitUntil;

TEST(SelfTimerOverlay, countsDownEachDigitFadingAndReturnsWhenItIsOver) {
    FakeDesktop desktop;
    desktop.addScreen(1, {0, 0, 800, 600});
    SelfTimerOverlay overlay;
    bool over = false;
    QStringList digits;
    double lowest = 1;
    double highest = 0;
    const double started = Clock::monotonicSeconds();
    overlay.run(3).then([&] { over = true; });
    ASSERT_TRUE(waitUntil([&] {
        if (auto* digit = onlyChildOfTopLevels<CountdownDigit>(); digit && !over) {
            if (digits.isEmpty() || digits.last() != digit->text())
                digits << digit->text();
            lowest = std::min(lowest, digit->alpha());
            highest = std::max(highest, digit->alpha());
        }
        return over;
    }));
    EXPECT_EQ(digits, QStringList({QStringLiteral("3"), QStringLiteral("2"), QStringLiteral("1")}));
    EXPECT_NEAR(highest, 1.0, 0.05);
    EXPECT_NEAR(lowest, 0.3, 0.001);
    EXPECT_GE(Clock::monotonicSeconds() - started, 2.99) << "a whole second for each digit";
}

TEST(SelfTimerOverlay, theOverlayTakesNoClickAndNoKeyboard) {
    FakeDesktop desktop;
    desktop.addScreen(1, {0, 0, 800, 600});
    SelfTimerOverlay overlay;
    overlay.run(1);
    const fake::FakeSurface& surface = *desktop.surfaceHost.surfaces.front();
    EXPECT_TRUE(surface.traits.passesClicks);
    EXPECT_EQ(surface.traits.keyboard, platform::SurfaceKeyboard::None);
    EXPECT_EQ(surface.traits.level, platform::SurfaceLevel::Overlay);
    ASSERT_TRUE(waitUntil([&] { return desktop.surfaceHost.surfaces.empty(); }));
}

TEST(SelfTimerOverlay, aDigitIsCentredAlsoWhenItsWidthDiffersFromTheLast) {
    FakeDesktop desktop;
    desktop.addScreen(1, {0, 0, 800, 600});
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

TEST(SelfTimerOverlay, withoutAMainScreenItReturnsAtOnce) {
    FakeDesktop desktop;
    SelfTimerOverlay overlay;
    bool over = false;
    overlay.run(10).then([&] { over = true; });
    EXPECT_TRUE(over);
    EXPECT_EQ(desktop.surfaceHost.hostedCount, 0);
}

TEST(SelfTimerOverlay, zeroSecondsShowsNoDigit) {
    FakeDesktop desktop;
    desktop.addScreen(1, {0, 0, 800, 600});
    SelfTimerOverlay overlay;
    bool over = false;
    overlay.run(0).then([&] { over = true; });
    EXPECT_TRUE(over);
    EXPECT_EQ(desktop.surfaceHost.hostedCount, 1);
    ASSERT_TRUE(waitUntil([&] { return desktop.surfaceHost.surfaces.empty(); }));
}
