// Window managers that put their windows above everything, as some do with full-screen ones. The test plays
// them: it runs where no real one interferes.
#include "desktop/x11surfaces/SurfacesTest.h"

#include <QElapsedTimer>

namespace marrowfin {

using platform::SurfaceKeyboard;
using platform::SurfaceLevel;

class StackingTest : public SurfacesTest {
protected:
    static constexpr platform::SurfaceSpec pinSpec = {SurfaceLevel::Pin, SurfaceKeyboard::OnClick};

    xcb_window_t open(const QRect& frame, std::uint32_t color) {
        return other.open(native(frame), color, desk::Repaint::ByServer, desk::Management::Unmanaged,
                          desk::Stacking::Bottom);
    }
    xcb_window_t managed(const QRect& frame) {
        const xcb_window_t window = open(frame, 0x2040A0);
        other.markManaged(window);
        return window;
    }
    bool comesAbove(const QWidget& pane, xcb_window_t window) {
        return desk::waitFor([&] { return other.isAbove(idOf(pane), window); });
    }
};

TEST_F(StackingTest, CardsAndPinsAreBackAboveAWindowThatWasRaised) {
    const xcb_window_t window = managed(qtScreen());
    Pane pin(Qt::green);
    Pane card(Qt::red);
    const auto cardSurface = show(card, {}, QRectF(60, 80, 100, 100));
    const auto pinSurface = show(pin, pinSpec, QRectF(100, 120, 100, 100));
    ASSERT_TRUE(shows(QPoint(70, 90), Qt::red));
    for (int round = 0; round < 2; ++round) {
        other.raise(window);
        EXPECT_TRUE(comesAbove(pin, window));
        EXPECT_TRUE(comesAbove(card, window));
        EXPECT_TRUE(other.isAbove(idOf(card), idOf(pin)));
        EXPECT_TRUE(shows(QPoint(110, 130), Qt::red));
    }
}

TEST_F(StackingTest, AWindowThatIsNewComesUpBeneathThem) {
    Pane card(Qt::red);
    const auto surface = show(card, {}, QRectF(60, 80, 100, 100));
    ASSERT_TRUE(shows(QPoint(70, 90), Qt::red));
    const xcb_window_t window = managed(qtScreen());
    other.raise(window);
    EXPECT_TRUE(comesAbove(card, window));
}

// A screen locker above all must stay there, whatever goes on beneath it.
TEST_F(StackingTest, WhatNoManagerManagesStaysAboveThem) {
    const xcb_window_t window = managed(qtScreen());
    Pane card(Qt::red);
    const auto surface = show(card, {}, QRectF(60, 80, 100, 100));
    ASSERT_TRUE(shows(QPoint(70, 90), Qt::red));
    const xcb_window_t locker = open(qtScreen(), 0x101010);
    other.raise(locker);
    other.raise(window);
    other.raise(locker);
    EXPECT_TRUE(comesAbove(card, window));
    EXPECT_TRUE(other.isAbove(locker, idOf(card)));
    EXPECT_EQ(other.pixel(native(QPoint(70, 90))), QColor::fromRgb(0x101010));
}

TEST_F(StackingTest, AWindowThatComesBackEachTimeIsNotFought) {
    const xcb_window_t window = managed(qtScreen());
    Pane card(Qt::red);
    const auto surface = show(card, {}, QRectF(60, 80, 100, 100));
    ASSERT_TRUE(shows(QPoint(70, 90), Qt::red));
    int rounds = 0;
    QElapsedTimer calm;
    calm.start();
    // The other side answers each raise of ours by one of its own.
    while (rounds < 50 && calm.elapsed() < 1500) {
        if (other.isAbove(idOf(card), window)) {
            other.raise(window);
            ++rounds;
            calm.restart();
        }
        desk::passTime(5);
    }
    EXPECT_LT(rounds, 10);
}

} // namespace marrowfin
