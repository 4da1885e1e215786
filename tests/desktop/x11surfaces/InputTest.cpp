// Who gets clicks and keys while surfaces are up, and afterwards.
#include "desktop/x11surfaces/SurfacesTest.h"

#include <QMenu>
#include <X11/keysym.h>

namespace marrowfin {

using platform::SurfaceBackdrop;
using platform::SurfaceKeyboard;
using platform::SurfaceLevel;

class InputTest : public SurfacesTest {
protected:
    void SetUp() override {
        SurfacesTest::SetUp();
        window = other.open(native(QRect(30, 50, 300, 200)), 0x2040A0);
    }
    // Escape reaches the pane: sooner or later, since the keyboard may be on its way back.
    bool hearsEscape(const Pane& pane) {
        return desk::waitFor([&] {
            other.press(XK_Escape);
            desk::passTime(5);
            return !pane.keys.isEmpty();
        });
    }

    static constexpr platform::SurfaceSpec overlaySpec = {SurfaceLevel::Overlay, SurfaceKeyboard::Exclusive};
    xcb_window_t window = 0;
};

TEST_F(InputTest, ACardTakesClicksAndNeverTheFocus) {
    Pane pane(Qt::red);
    const auto surface = show(pane, {}, QRectF(60, 80, 100, 100));
    ASSERT_TRUE(shows(QPoint(70, 90), Qt::red));
    EXPECT_EQ(other.focus(), window);
    other.click(native(QPoint(70, 90)));
    EXPECT_TRUE(desk::waitFor([&] { return pane.presses == 1; }));
    EXPECT_EQ(other.focus(), window);
    EXPECT_EQ(other.buttonPresses(), 0);
}

TEST_F(InputTest, ClicksInTheHaloReachTheWindowBeneath) {
    Pane pane(Qt::red);
    const auto surface = show(pane, {}, QRectF(60, 80, 100, 100));
    surface->setInputRegion(QRect(20, 20, 60, 60));
    ASSERT_TRUE(shows(QPoint(70, 90), Qt::red));
    other.click(native(QPoint(65, 85)));
    EXPECT_TRUE(desk::waitFor([&] { return other.buttonPresses() == 1; }));
    other.click(native(QPoint(110, 130)));
    EXPECT_TRUE(desk::waitFor([&] { return pane.presses == 1; }));
    EXPECT_EQ(other.buttonPresses(), 1);
    surface->setInputRegion({});
    other.click(native(QPoint(65, 85)));
    EXPECT_TRUE(desk::waitFor([&] { return pane.presses == 2; }));
}

TEST_F(InputTest, ACountdownPassesEveryClick) {
    Pane pane(QColor(0, 0, 0, 102));
    const auto surface = show(
        pane, {SurfaceLevel::Overlay, SurfaceKeyboard::None, SurfaceBackdrop::Snapshot, true}, qtScreen());
    ASSERT_TRUE(
        desk::waitFor([&] { return other.pixel(native(QPoint(70, 90))) != QColor::fromRgb(0x2040A0); }));
    other.click(native(QPoint(70, 90)));
    EXPECT_TRUE(desk::waitFor([&] { return other.buttonPresses() == 1; }));
    EXPECT_EQ(pane.presses, 0);
    EXPECT_EQ(other.focus(), window);
}

TEST_F(InputTest, AnOverlayHasTheKeysAndLeavesTheFocus) {
    Pane pane(QColor(0, 0, 0, 128));
    const auto surface = show(
        pane, {SurfaceLevel::Overlay, SurfaceKeyboard::Exclusive, SurfaceBackdrop::Snapshot}, qtScreen());
    other.press(XK_Escape);
    EXPECT_TRUE(desk::waitFor([&] { return pane.keys == QList<int>{Qt::Key_Escape}; }));
    EXPECT_EQ(other.keyPresses(), 0);
    EXPECT_EQ(other.focus(), window);
    ASSERT_TRUE(desk::await(surface->retire()));
    EXPECT_EQ(other.focus(), window);
    other.press(XK_Escape);
    EXPECT_TRUE(desk::waitFor([&] { return other.keyPresses() == 1; }));
    EXPECT_EQ(pane.keys.size(), 1);
}

TEST_F(InputTest, AnOverlayGivesTheKeysBackWhenItIsOrderedOutOrDestroyed) {
    Pane pane(Qt::red);
    auto surface = show(pane, {SurfaceLevel::Overlay, SurfaceKeyboard::Exclusive}, QRectF(60, 80, 100, 100));
    surface->orderOut();
    other.press(XK_Escape);
    EXPECT_TRUE(desk::waitFor([&] { return other.keyPresses() == 1; }));
    surface->orderFront();
    other.press(XK_Escape);
    EXPECT_TRUE(desk::waitFor([&] { return pane.keys.size() == 1; }));
    surface.reset();
    other.press(XK_Escape);
    EXPECT_TRUE(desk::waitFor([&] { return other.keyPresses() == 2; }));
    EXPECT_EQ(pane.keys.size(), 1);
}

TEST_F(InputTest, AnOverlayWaitsForAKeyboardThatSomebodyHolds) {
    other.holdKeyboard();
    Pane pane(Qt::red);
    const auto surface =
        show(pane, {SurfaceLevel::Overlay, SurfaceKeyboard::Exclusive}, QRectF(60, 80, 100, 100));
    ASSERT_TRUE(shows(QPoint(70, 90), Qt::red));
    other.click(native(QPoint(70, 90)));
    EXPECT_TRUE(desk::waitFor([&] { return pane.presses == 1; }));
    other.releaseKeyboard();
    EXPECT_TRUE(desk::waitFor([&] {
        other.press(XK_Escape);
        desk::passTime(5);
        return !pane.keys.isEmpty();
    }));
}

TEST_F(InputTest, AnOverlayHasTheKeysAgainAfterAMenuOfOurs) {
    Pane pane(Qt::red);
    const auto surface = show(pane, overlaySpec, QRectF(60, 80, 100, 100));
    ASSERT_TRUE(shows(QPoint(70, 90), Qt::red));
    QMenu menu;
    menu.addAction(QStringLiteral("Quit"));
    host->adoptMenu(menu);
    menu.popup(QPoint(300, 300));
    ASSERT_TRUE(desk::waitFor([&] { return other.isViewable(idOf(menu)); }));
    desk::passTime(300); // The overlay doesn't take the keys from the menu meanwhile.
    other.press(XK_Escape);
    ASSERT_TRUE(desk::waitFor([&] { return !menu.isVisible(); }));
    EXPECT_TRUE(pane.keys.isEmpty());
    EXPECT_TRUE(hearsEscape(pane));
}

TEST_F(InputTest, AnOverlayThatComesUpUnderAMenuHasTheKeysAfterIt) {
    QMenu menu;
    menu.addAction(QStringLiteral("Quit"));
    host->adoptMenu(menu);
    menu.popup(QPoint(300, 300));
    ASSERT_TRUE(desk::waitFor([&] { return other.isViewable(idOf(menu)); }));
    Pane pane(Qt::red);
    const auto surface = show(pane, overlaySpec, QRectF(60, 80, 100, 100));
    ASSERT_TRUE(shows(QPoint(70, 90), Qt::red));
    other.press(XK_Escape);
    ASSERT_TRUE(desk::waitFor([&] { return !menu.isVisible(); }));
    EXPECT_TRUE(hearsEscape(pane));
}

TEST_F(InputTest, AnOverlayHasTheKeysAgainAfterASecondOne) {
    Pane first(Qt::red);
    Pane second(Qt::green);
    const auto below = show(first, overlaySpec, QRectF(60, 80, 100, 100));
    auto above = show(second, overlaySpec, QRectF(60, 80, 100, 100));
    ASSERT_TRUE(shows(QPoint(70, 90), Qt::green));
    other.press(XK_Escape);
    ASSERT_TRUE(desk::waitFor([&] { return second.keys.size() == 1; }));
    ASSERT_TRUE(desk::await(above->retire()));
    other.press(XK_Escape);
    EXPECT_TRUE(desk::waitFor([&] { return first.keys == QList<int>{Qt::Key_Escape}; }));
    EXPECT_EQ(second.keys.size(), 1);
}

TEST_F(InputTest, ASecondOverlayKeepsTheKeysWhenTheFirstOneGoes) {
    Pane first(Qt::red);
    Pane second(Qt::green);
    const auto below = show(first, overlaySpec, QRectF(60, 80, 100, 100));
    const auto above = show(second, overlaySpec, QRectF(60, 80, 100, 100));
    ASSERT_TRUE(shows(QPoint(70, 90), Qt::green));
    ASSERT_TRUE(desk::await(below->retire()));
    other.press(XK_Escape);
    EXPECT_TRUE(desk::waitFor([&] { return second.keys == QList<int>{Qt::Key_Escape}; }));
    EXPECT_EQ(other.keyPresses(), 0);
}

// As a card does for the length of its drag.
TEST_F(InputTest, AnOverlayHasTheKeysAgainAfterAWidgetOfOursHadThem) {
    Pane card(Qt::blue);
    const auto cardSurface = show(card, {}, QRectF(300, 80, 100, 100));
    Pane pane(Qt::red);
    const auto surface = show(pane, overlaySpec, QRectF(60, 80, 100, 100));
    ASSERT_TRUE(shows(QPoint(70, 90), Qt::red));
    card.grabKeyboard();
    desk::passTime(300);
    other.press(XK_a);
    EXPECT_TRUE(desk::waitFor([&] { return card.keys == QList<int>{Qt::Key_A}; }));
    card.releaseKeyboard();
    EXPECT_TRUE(hearsEscape(pane));
}

TEST_F(InputTest, AnOverlayHasTheKeysAgainAfterAnotherProgramSnatchedThem) {
    Pane card(Qt::blue);
    const auto cardSurface = show(card, {}, QRectF(300, 80, 100, 100));
    Pane pane(Qt::red);
    const auto surface = show(pane, overlaySpec, QRectF(60, 80, 100, 100));
    ASSERT_TRUE(shows(QPoint(70, 90), Qt::red));
    card.grabKeyboard();
    card.releaseKeyboard();
    other.holdKeyboard();
    desk::passTime(150);
    EXPECT_TRUE(pane.keys.isEmpty());
    other.releaseKeyboard();
    EXPECT_TRUE(hearsEscape(pane));
}

TEST_F(InputTest, APinTakesTheFocusAndGivesItBack) {
    Pane pane(Qt::red);
    auto surface = show(pane, {SurfaceLevel::Pin, SurfaceKeyboard::OnClick}, QRectF(60, 80, 100, 100));
    EXPECT_TRUE(desk::waitFor([&] { return other.focus() == idOf(pane); }));
    other.press(XK_Escape);
    EXPECT_TRUE(desk::waitFor([&] { return pane.keys == QList<int>{Qt::Key_Escape}; }));
    surface.reset();
    EXPECT_TRUE(desk::waitFor([&] { return other.focus() == window; }));
}

TEST_F(InputTest, APressedPinTakesTheFocusAgain) {
    Pane pane(Qt::red);
    const auto surface = show(pane, {SurfaceLevel::Pin, SurfaceKeyboard::OnClick}, QRectF(60, 80, 100, 100));
    ASSERT_TRUE(shows(QPoint(70, 90), Qt::red));
    other.activate(window);
    ASSERT_EQ(other.focus(), window);
    other.click(native(QPoint(70, 90)));
    EXPECT_TRUE(desk::waitFor([&] { return other.focus() == idOf(pane); }));
    surface->orderOut();
    EXPECT_TRUE(desk::waitFor([&] { return other.focus() == window; }));
}

TEST_F(InputTest, PinsThatCloseInAnyOrderGiveTheFocusToWhoIsLeft) {
    Pane first(Qt::red);
    Pane second(Qt::green);
    auto a = show(first, {SurfaceLevel::Pin, SurfaceKeyboard::OnClick}, QRectF(60, 80, 50, 50));
    auto b = show(second, {SurfaceLevel::Pin, SurfaceKeyboard::OnClick}, QRectF(160, 80, 50, 50));
    EXPECT_TRUE(desk::waitFor([&] { return other.focus() == idOf(second); }));
    a.reset();
    EXPECT_EQ(other.focus(), idOf(second));
    b.reset();
    EXPECT_TRUE(desk::waitFor([&] { return other.focus() == window; }));
}

TEST_F(InputTest, APinWhoseLenderIsGoneClosesQuietly) {
    Pane pane(Qt::red);
    auto surface = show(pane, {SurfaceLevel::Pin, SurfaceKeyboard::OnClick}, QRectF(60, 80, 100, 100));
    EXPECT_TRUE(desk::waitFor([&] { return other.focus() == idOf(pane); }));
    other.destroy(window);
    surface.reset();
    EXPECT_TRUE(desk::waitFor([&] { return other.focus() != idOf(pane); }));
}

} // namespace marrowfin
