// A compositor that dies or starts while surfaces are up.
#include "desktop/x11surfaces/SurfacesTest.h"

#include <optional>

namespace marrowfin {

using platform::SurfaceBackdrop;
using platform::SurfaceKeyboard;
using platform::SurfaceLevel;

class CompositorTest : public SurfacesTest {
protected:
    static constexpr platform::SurfaceSpec overlaySpec = {SurfaceLevel::Overlay, SurfaceKeyboard::Exclusive,
                                                          SurfaceBackdrop::Snapshot};
    static constexpr QColor dim{0, 0, 0, 128};

    void SetUp() override {
        SurfacesTest::SetUp();
        other.open(native(QRect(60, 60, 300, 200)), 0xF0F0E0, desk::Repaint::Never,
                   desk::Management::Unmanaged);
        other.movePointer(native(QPoint(5, 5)));
        before = settledScreen();
    }
    // Under the compositor of the test, which may change the looks of the other windows.
    void settle() { before = settledScreen(); }
    // Half as bright everywhere, which black isn't.
    bool isDimmed() {
        const QImage now = other.screen();
        for (int y = 0; y < now.height(); y += 7) {
            for (int x = 0; x < now.width(); x += 7) {
                const QColor seen = now.pixelColor(x, y);
                const QColor was = before.pixelColor(x, y);
                if (std::abs(seen.red() - was.red() / 2) > 2 || std::abs(seen.green() - was.green() / 2) > 2)
                    return false;
            }
        }
        return true;
    }

    QImage before;
};

TEST_F(CompositorTest, ItsDeathLeavesTheOverlayDimmedAndNotBlack) {
    desk::Compositor compositor(other);
    Pane pane(dim);
    const auto surface = show(pane, overlaySpec, qtScreen());
    ASSERT_TRUE(desk::waitFor([&] { return isDimmed() && surface->isComposited(); }));
    const Count changed(surface.get(), &platform::Surface::compositedChanged);
    compositor.kill();
    EXPECT_TRUE(desk::waitFor([&] { return isDimmed(); }));
    // Its start may be told only now; its death surely is.
    EXPECT_TRUE(desk::waitFor([&] { return changed.times() >= 1 && !surface->isComposited(); }));
    ASSERT_TRUE(desk::await(surface->retire()));
    EXPECT_EQ(desk::difference(before, other.screen()), "");
}

TEST_F(CompositorTest, ItsDeathDoesNotEndADrag) {
    desk::Compositor compositor(other);
    Pane pane(dim);
    const auto surface = show(pane, overlaySpec, qtScreen());
    ASSERT_TRUE(desk::waitFor([&] { return isDimmed(); }));
    other.movePointer(native(QPoint(300, 300)));
    other.pressButton();
    ASSERT_TRUE(desk::waitFor([&] { return pane.presses == 1; }));
    compositor.kill();
    ASSERT_TRUE(desk::waitFor([&] { return isDimmed(); }));
    other.movePointer(native(QPoint(310, 320)));
    EXPECT_TRUE(desk::waitFor([&] { return pane.lastDrag == QPoint(310, 320); }));
    other.releaseButton();
    EXPECT_TRUE(desk::waitFor([&] { return pane.releases == 1; }));
}

TEST_F(CompositorTest, ItsStartLeavesTheOverlayOverItsStillAndNoTraceOfItAfterwards) {
    std::optional<desk::Compositor> compositor;
    Pane pane(dim);
    const auto surface = show(pane, overlaySpec, qtScreen());
    ASSERT_TRUE(desk::waitFor([&] { return isDimmed(); }));
    compositor.emplace(other);
    ASSERT_TRUE(desk::waitFor([&] { return surface->isComposited(); }));
    // Something that comes up now is hidden by the overlay.
    other.open(native(QRect(400, 200, 100, 100)), 0xFF0000, desk::Repaint::ByServer,
               desk::Management::Unmanaged, desk::Stacking::Bottom);
    EXPECT_TRUE(isDimmed());
    ASSERT_TRUE(desk::await(surface->retire()));
    const QImage after = other.screen();
    EXPECT_EQ(after.pixelColor(native(QPoint(450, 250))), QColor(Qt::red));
    EXPECT_EQ(after.pixelColor(native(QPoint(200, 150))), before.pixelColor(native(QPoint(200, 150))));
}

TEST_F(CompositorTest, TheOverlayComesBackOverItsStillAfterACompositorStarted) {
    Pane pane(dim);
    const auto surface = show(pane, overlaySpec, qtScreen());
    ASSERT_TRUE(desk::waitFor([&] { return isDimmed(); }));
    desk::Compositor compositor(other);
    ASSERT_TRUE(desk::waitFor([&] { return surface->isComposited(); }));
    surface->orderOut();
    surface->orderFront();
    EXPECT_TRUE(desk::waitFor([&] { return isDimmed(); }));
    ASSERT_TRUE(desk::await(surface->retire()));
    EXPECT_EQ(desk::difference(before, other.screen()), "");
}

TEST_F(CompositorTest, ACardGetsItsOutlineAndLosesIt) {
    Pane pane(Qt::red);
    const auto surface = show(pane, {}, QRectF(40, 60, 100, 100));
    surface->setOutline(QRect(20, 20, 60, 60));
    const QPoint halo(45, 65);
    const QColor beneath = before.pixelColor(native(halo));
    ASSERT_TRUE(shows(QPoint(90, 110), Qt::red));
    EXPECT_TRUE(shows(halo, beneath));
    {
        const desk::Compositor compositor(other);
        EXPECT_TRUE(shows(halo, Qt::red));
    }
    EXPECT_TRUE(shows(halo, beneath));
    EXPECT_EQ(other.pixel(native(QPoint(90, 110))), QColor(Qt::red));
}

TEST_F(CompositorTest, ItsDeathDuringARetirementStillEndsClean) {
    for (int round = 0; round < 10; ++round) {
        desk::Compositor compositor(other);
        Pane pane(dim);
        const auto surface = show(pane, overlaySpec, qtScreen());
        ASSERT_TRUE(desk::waitFor([&] { return isDimmed(); }));
        const Outcome<void> gone = surface->retire();
        compositor.kill();
        ASSERT_TRUE(desk::await(gone));
        EXPECT_EQ(desk::difference(before, other.screen()), "") << "round " << round;
    }
}

// As desktops are set up that darken what isn't in use: windows that no manager manages are never in use.
TEST_F(CompositorTest, OneThatDimsOurWindowsShowsThemGoneAllTheSame) {
    const desk::Compositor compositor(other, {"--inactive-dim", "0.4"});
    settle();
    for (int round = 0; round < 5; ++round) {
        Pane pane(dim);
        const auto surface = show(pane, overlaySpec, qtScreen());
        ASSERT_TRUE(desk::waitFor([&] { return other.screen() != before; }));
        testing::internal::CaptureStderr();
        const bool gone = desk::await(surface->retire());
        const std::string said = testing::internal::GetCapturedStderr();
        ASSERT_TRUE(gone);
        EXPECT_EQ(desk::difference(before, other.screen()), "") << "round " << round;
        EXPECT_EQ(said, "");
    }
}

TEST_F(CompositorTest, OneThatMakesOurWindowsTranslucentShowsThemGoneAllTheSame) {
    const desk::Compositor compositor(other, {"--inactive-opacity", "0.5"});
    settle();
    for (int round = 0; round < 5; ++round) {
        Pane pane(dim);
        const auto surface = show(pane, overlaySpec, qtScreen());
        ASSERT_TRUE(desk::waitFor([&] { return other.screen() != before; }));
        testing::internal::CaptureStderr();
        const bool gone = desk::await(surface->retire());
        const std::string said = testing::internal::GetCapturedStderr();
        ASSERT_TRUE(gone);
        EXPECT_EQ(desk::difference(before, other.screen()), "") << "round " << round;
        EXPECT_EQ(said, "");
    }
}

} // namespace marrowfin
