// Pins on a real desktop: above the others on every workspace, moved and sized by the pointer, closed by the
// keyboard that they borrow and give back.
#include "desktop/pin/PinsTest.h"

#include "chrome/AnimationClock.h"

#include <QAbstractButton>
#include <X11/keysym.h>

namespace marrowfin {

using namespace pin;

namespace {
constexpr std::uint32_t windowColor = 0x2040A0;
const QColor red(200, 60, 30);
const QColor green(30, 150, 60);
const QColor around(64, 160, 32);

class PinOnDesktop : public PinsTest {
protected:
    void SetUp() override {
        ASSERT_NO_FATAL_FAILURE(PinsTest::SetUp());
        other.movePointer({900, 60});
        window = other.open({300, 50, 300, 200}, windowColor);
        ASSERT_EQ(other.focus(), window);
    }

    // A window of the user's under the whole of a pin, with its own middle free.
    xcb_window_t openAround(const QRect& place) {
        return other.open(place.adjusted(-60, -60, 500, 40), around.rgb() & RGB_MASK);
    }
    void drag(const QPoint& from, const QPoint& by) {
        other.movePointer(from);
        other.pressButton();
        for (int step = 1; step <= 6; ++step)
            other.movePointer(from + by * step / 6);
        other.releaseButton();
    }

    xcb_window_t window = 0;
};
} // namespace

TEST_F(PinOnDesktop, StartsAtItsPlaceInItsSize) {
    const int height = static_cast<int>(platform::services().screens.primaryHeight());
    EXPECT_EQ(served(pin(red, {1200, 800})), QRect(100, height - 100 - 400, 600, 400));
    EXPECT_EQ(served(pin(green, {100, 100})), QRect(100, height - 100 - 100, 100, 100));
}

TEST_F(PinOnDesktop, StaysAboveOtherWindowsAndOnAnotherWorkspace) {
    PinnedWindow& pinned = pin(red);
    const QRect place = onScreen(pinned);
    const xcb_window_t later = openAround(place);
    EXPECT_TRUE(desk::waitFor([&] { return other.pixel(place.topLeft() - QPoint(20, 20)) == around; }));
    EXPECT_EQ(other.pixel(middle(pinned)), red);
    EXPECT_EQ(other.focus(), later);
    other.makeFullScreen(later);
    ASSERT_TRUE(desk::waitFor([&] { return other.pixel({900, 30}) == around; }));
    EXPECT_TRUE(desk::waitFor([&] { return other.pixel(middle(pinned)) == red; }));
    other.goToWorkspace(1);
    ASSERT_TRUE(desk::waitFor([&] { return other.pixel({900, 30}) != around; }));
    EXPECT_TRUE(desk::waitFor([&] { return other.pixel(middle(pinned)) == red; }));
    other.goToWorkspace(0);
}

TEST_F(PinOnDesktop, IsMovedByItsImage) {
    PinnedWindow& pinned = pin(red);
    const QRect before = onScreen(pinned);
    drag(middle(pinned), {260, -180});
    EXPECT_TRUE(desk::waitFor([&] { return served(pinned) == before.translated(260, -180); }));
    EXPECT_TRUE(desk::waitFor([&] { return other.pixel(before.center() + QPoint(260, -180)) == red; }));
    EXPECT_TRUE(desk::waitFor([&] { return other.pixel(before.bottomLeft() + QPoint(10, -10)) != red; }));
    EXPECT_EQ(onScreen(pinned), before.translated(260, -180));
}

TEST_F(PinOnDesktop, ItsEdgesResizeItOnTheImagesShape) {
    PinnedWindow& pinned = pin(red);
    const QRect before = onScreen(pinned);
    drag(QPoint(before.right(), before.center().y()), {150, 40});
    // Wider by half, so higher by half, about its middle.
    EXPECT_TRUE(
        desk::waitFor([&] { return served(pinned) == QRect(before.left(), before.top() - 50, 450, 300); }));
    EXPECT_TRUE(desk::waitFor([&] { return other.pixel({before.left() + 440, before.top() - 40}) == red; }));
    // The corner at the bottom left: what is opposite stays.
    const QRect wide = onScreen(pinned);
    drag(wide.bottomLeft(), {150, 0});
    EXPECT_TRUE(
        desk::waitFor([&] { return served(pinned) == QRect(wide.left() + 150, wide.top(), 300, 200); }));
    EXPECT_EQ(pinned.content().closeButton()->geometry().topLeft(), QPoint(24 + 8, 24 + 8));
}

TEST_F(PinOnDesktop, EscapeClosesThePinThatHasTheKeyboardAndThenTheKeysAreTheUsersAgain) {
    PinnedWindow& first = pin(red);
    PinnedWindow& second = pin(green, {310, 200});
    const xcb_window_t firstId = idOf(first);
    EXPECT_EQ(onScreen(first).bottomLeft(), onScreen(second).bottomLeft());
    other.press(XK_Escape);
    ASSERT_TRUE(desk::waitFor([&] { return count() == 1; }));
    EXPECT_EQ(PinManager::shared().pinnedWindows().front().get(), &first);
    EXPECT_TRUE(desk::waitFor([&] { return other.focus() == firstId; }));
    other.press(XK_a); // not a key of a pin's
    other.press(XK_Escape);
    ASSERT_TRUE(desk::waitFor([&] { return count() == 0; }));
    EXPECT_TRUE(desk::waitFor([&] { return other.focus() == window; }));
    EXPECT_EQ(other.keyPresses(), 0);
    other.press(XK_a);
    EXPECT_TRUE(desk::waitFor([&] { return other.keyPresses() == 1; }));
}

TEST_F(PinOnDesktop, APressGivesAnOlderPinTheKeyboard) {
    PinnedWindow& first = pin(red);
    const QRect before = onScreen(first);
    drag(middle(first), {0, -300});
    ASSERT_TRUE(desk::waitFor([&] { return served(first) == before.translated(0, -300); }));
    PinnedWindow& second = pin(green);
    other.click(middle(first));
    EXPECT_TRUE(desk::waitFor([&] { return other.focus() == idOf(first); }));
    other.press(XK_Escape);
    ASSERT_TRUE(desk::waitFor([&] { return count() == 1; }));
    EXPECT_EQ(PinManager::shared().pinnedWindows().front().get(), &second);
    EXPECT_TRUE(desk::waitFor([&] { return other.focus() == idOf(second); }));
}

TEST_F(PinOnDesktop, AnotherWindowsPressTakesTheKeyboardAndEscapeWithIt) {
    pin(red);
    other.click({400, 100}); // into the user's window
    ASSERT_TRUE(desk::waitFor([&] { return other.focus() == window; }));
    other.press(XK_Escape);
    EXPECT_TRUE(desk::waitFor([&] { return other.keyPresses() == 1; }));
    EXPECT_EQ(count(), 1u);
}

TEST_F(PinOnDesktop, ItsButtonFadesInUnderThePointerAndClosesIt) {
    PinnedWindow& pinned = pin(red);
    chrome::AnimationClock& clock = chrome::AnimationClock::shared();
    const QRect place = onScreen(pinned);
    const QPoint button = place.topLeft() + QPoint(8 + 10, 8 + 4); // in its disc, beside the cross
    EXPECT_EQ(other.pixel(button), red);
    clock.hold();
    other.movePointer(place.center());
    ASSERT_TRUE(desk::waitFor([&] { return clock.isRunning(); }));
    clock.advance(0.075);
    ASSERT_TRUE(desk::waitFor([&] { return other.pixel(button) != red; }));
    const int half = qGray(other.pixel(button).rgb());
    clock.advance(0.1);
    EXPECT_FALSE(clock.isRunning());
    ASSERT_TRUE(desk::waitFor([&] { return qGray(other.pixel(button).rgb()) > half; }));
    const QColor whole = other.pixel(button);
    EXPECT_GT(qGray(whole.rgb()), 200);
    other.movePointer({900, 60});
    ASSERT_TRUE(desk::waitFor([&] { return clock.isRunning(); }));
    clock.advance(0.2);
    EXPECT_TRUE(desk::waitFor([&] { return other.pixel(button) == red; }));
    other.click(button);
    EXPECT_TRUE(desk::waitFor([&] { return count() == 0; }));
    EXPECT_TRUE(desk::waitFor([&] { return other.pixel(place.center()) != red; }));
    EXPECT_TRUE(desk::waitFor([&] { return other.focus() == window; }));
}

TEST_F(PinOnDesktop, AClickBesideTheImageGoesToWhatIsBeneath) {
    PinnedWindow& pinned = pin(red);
    const QRect place = onScreen(pinned);
    const xcb_window_t beneath = openAround(place);
    ASSERT_EQ(other.focus(), beneath);
    other.click(place.topLeft() - QPoint(10, 10));
    EXPECT_TRUE(desk::waitFor([&] { return other.buttonPresses() == 1; }));
    EXPECT_EQ(other.focus(), beneath);
    other.click(place.center());
    EXPECT_TRUE(desk::waitFor([&] { return other.focus() == idOf(pinned); }));
    EXPECT_EQ(other.buttonPresses(), 1);
}

} // namespace marrowfin
