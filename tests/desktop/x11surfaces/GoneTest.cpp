// What has left the screen is in no grab: overlays, cards, menus, with a compositor that blends, fades or
// isn't there.
#include "desktop/x11surfaces/SurfacesTest.h"

#include <QLabel>
#include <QMenu>
#include <X11/keysym.h>

namespace marrowfin {

using platform::SurfaceBackdrop;
using platform::SurfaceKeyboard;
using platform::SurfaceLevel;

class GoneTest : public SurfacesTest {
protected:
    static constexpr int rounds = 50;
    static constexpr platform::SurfaceSpec overlaySpec = {SurfaceLevel::Overlay, SurfaceKeyboard::Exclusive,
                                                          SurfaceBackdrop::Snapshot};

    void SetUp() override {
        SurfacesTest::SetUp();
        // One whose content only its owner could paint again, and doesn't.
        other.open(native(QRect(60, 60, 300, 200)), 0xF0F0E0, desk::Repaint::Never,
                   desk::Management::Unmanaged);
        other.open(native(QRect(200, 160, 300, 200)), 0x2040A0, desk::Repaint::ByServer,
                   desk::Management::Unmanaged);
        other.movePointer(native(QPoint(5, 5)));
        before = settledScreen();
    }
    // From none at all to longer than a fade takes.
    static int holdOf(int round) { return round % 5 == 0 ? 0 : (round * 37) % 450; }

    QImage before;
};

TEST_F(GoneTest, NoGrabHasAPixelOfARetiredOverlay) {
    for (int round = 0; round < rounds; ++round) {
        Pane pane(QColor(0, 0, 0, 166));
        QLabel label(QStringLiteral("400 × 300"), &pane);
        label.setAutoFillBackground(true);
        label.move(100, 100);
        const auto surface = show(pane, overlaySpec, qtScreen());
        desk::passTime(holdOf(round));
        pane.update();
        ASSERT_TRUE(desk::await(surface->retire()));
        const QImage after = other.screen();
        EXPECT_EQ(desk::difference(before, after), "") << "round " << round;
        EXPECT_FALSE(surface->isVisible());
    }
}

TEST_F(GoneTest, TheOverlayDimsWhatIsBeneath) {
    Pane pane(QColor(0, 0, 0, 128));
    const auto surface = show(pane, overlaySpec, qtScreen());
    const QColor beneath = before.pixelColor(native(QPoint(300, 200)));
    EXPECT_TRUE(desk::waitFor([&] {
        const QColor seen = other.pixel(native(QPoint(300, 200)));
        return std::abs(seen.blue() - beneath.blue() / 2) <= 2 &&
               std::abs(seen.green() - beneath.green() / 2) <= 2;
    }));
    EXPECT_TRUE(desk::await(surface->retire()));
}

TEST_F(GoneTest, NoGrabHasAPixelOfACountdown) {
    for (int round = 0; round < rounds; ++round) {
        Pane pane(QColor(0, 0, 0, 102));
        const auto surface =
            show(pane, {SurfaceLevel::Overlay, SurfaceKeyboard::None, SurfaceBackdrop::Snapshot, true},
                 qtScreen());
        desk::passTime(holdOf(round));
        ASSERT_TRUE(desk::await(surface->retire()));
        EXPECT_EQ(desk::difference(before, other.screen()), "") << "round " << round;
    }
}

TEST_F(GoneTest, NoGrabHasAPixelOfACardThatWasOrderedOut) {
    for (int round = 0; round < rounds; ++round) {
        Pane pane(Qt::white);
        auto surface = show(pane, {}, QRectF(40, 60, 276, 194));
        surface->setOutline(QRect(18, 12, 240, 160));
        desk::passTime(holdOf(round));
        surface->setOpacity(round % 2 == 0 ? 1 : 0.4);
        // Its owner may drop it at once.
        if (round % 3 == 0)
            surface.reset();
        else
            surface->orderOut();
        ASSERT_TRUE(desk::await(host->transientsGone()));
        const QImage after = other.screen();
        EXPECT_EQ(desk::difference(before, after), "") << "round " << round;
    }
}

TEST_F(GoneTest, NoGrabHasAPixelOfAMenuWhoseRowWasChosen) {
    for (int round = 0; round < rounds; ++round) {
        QMenu menu;
        QMenu* timer = menu.addMenu(QStringLiteral("Self-Timer"));
        timer->addAction(QStringLiteral("3 seconds"));
        QAction* row = menu.addAction(QStringLiteral("Capture Fullscreen"));
        menu.addAction(QStringLiteral("Quit"));
        host->adoptMenu(menu);
        const Count chosen(row, &QAction::triggered);
        menu.popup(QPoint(240, 130));
        ASSERT_TRUE(desk::waitFor([&] { return other.isViewable(idOf(menu)); }));
        desk::passTime(holdOf(round));
        const QRect at = menu.actionGeometry(row);
        other.click(native(menu.mapToGlobal(at.center())));
        ASSERT_TRUE(desk::waitFor([&] { return chosen.times() == 1; }));
        ASSERT_TRUE(desk::await(host->transientsGone()));
        const QImage after = other.screen();
        EXPECT_EQ(desk::difference(before, after), "") << "round " << round;
    }
}

TEST_F(GoneTest, NoGrabHasAPixelOfASubmenu) {
    QMenu menu;
    QMenu* timer = menu.addMenu(QStringLiteral("Self-Timer"));
    QAction* row = timer->addAction(QStringLiteral("3 seconds"));
    menu.addAction(QStringLiteral("Quit"));
    host->adoptMenu(menu);
    for (int round = 0; round < 20; ++round) {
        const Count chosen(row, &QAction::triggered);
        menu.popup(QPoint(240, 130));
        ASSERT_TRUE(desk::waitFor([&] { return other.isViewable(idOf(menu)); }));
        other.press(XK_Down);
        other.press(XK_Right);
        ASSERT_TRUE(desk::waitFor([&] { return timer->isVisible(); }));
        desk::passTime(holdOf(round));
        other.press(XK_Return);
        ASSERT_TRUE(desk::waitFor([&] { return chosen.times() == 1; }));
        ASSERT_TRUE(desk::await(host->transientsGone()));
        EXPECT_EQ(desk::difference(before, other.screen()), "") << "round " << round;
    }
}

TEST_F(GoneTest, AMenuStandsAboveTheSurfaces) {
    Pane card(Qt::red);
    QMenu menu;
    menu.addAction(QStringLiteral("Capture Fullscreen"));
    host->adoptMenu(menu);
    menu.popup(QPoint(60, 80));
    ASSERT_TRUE(desk::waitFor([&] { return other.isViewable(idOf(menu)); }));
    const auto surface = show(card, {}, QRectF(40, 60, 276, 194));
    EXPECT_TRUE(desk::waitFor([&] { return other.isAbove(idOf(menu), idOf(card)); }));
    menu.close();
}

TEST_F(GoneTest, AVisibleCardStaysInTheGrab) {
    Pane card(Qt::red);
    const auto kept = show(card, {}, QRectF(40, 60, 100, 100));
    ASSERT_TRUE(shows(QPoint(50, 70), Qt::red));
    const QImage with = settledScreen();
    Pane pane(QColor(0, 0, 0, 166));
    const auto surface = show(pane, overlaySpec, qtScreen());
    ASSERT_TRUE(desk::await(surface->retire()));
    EXPECT_EQ(desk::difference(with, other.screen()), "");
}

TEST_F(GoneTest, ASurfaceDroppedWhileItRetiresStillSettles) {
    auto pane = std::make_unique<Pane>(QColor(0, 0, 0, 166));
    auto surface = show(*pane, overlaySpec, qtScreen());
    const Outcome<void> gone = surface->retire();
    surface.reset();
    pane.reset();
    EXPECT_TRUE(desk::await(gone));
    EXPECT_TRUE(desk::await(host->transientsGone()));
    EXPECT_EQ(desk::difference(before, other.screen()), "");
}

TEST_F(GoneTest, NothingToWaitForSettlesToo) {
    EXPECT_TRUE(desk::await(host->transientsGone()));
    Pane pane(Qt::red);
    const auto surface = host->host(pane, overlaySpec);
    EXPECT_TRUE(desk::await(surface->retire()));
    EXPECT_TRUE(desk::await(surface->retire()));
}

} // namespace marrowfin
