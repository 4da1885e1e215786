// Who has the focus when a pin closes and no window manager cares.
#include "desktop/x11surfaces/SurfacesTest.h"

#include <X11/keysym.h>

namespace marrowfin {

using platform::SurfaceKeyboard;
using platform::SurfaceLevel;

class FocusTest : public SurfacesTest {
protected:
    static constexpr platform::SurfaceSpec pinSpec = {SurfaceLevel::Pin, SurfaceKeyboard::OnClick};

    void SetUp() override {
        SurfacesTest::SetUp();
        window = other.open(native(QRect(30, 50, 300, 200)), 0x2040A0, desk::Repaint::ByServer,
                            desk::Management::Unmanaged);
        other.focusDirectly(window);
    }
    xcb_window_t window = 0;
};

TEST_F(FocusTest, AClosedPinGivesItBack) {
    Pane pane(Qt::red);
    auto surface = show(pane, pinSpec, QRectF(60, 80, 100, 100));
    EXPECT_EQ(other.focus(), idOf(pane));
    surface.reset();
    EXPECT_EQ(other.focus(), window);
}

TEST_F(FocusTest, APinWhoseWidgetDiesGivesItBack) {
    auto pane = std::make_unique<Pane>(Qt::red);
    const auto surface = show(*pane, pinSpec, QRectF(60, 80, 100, 100));
    EXPECT_EQ(other.focus(), idOf(*pane));
    pane.reset();
    EXPECT_EQ(other.focus(), window);
}

TEST_F(FocusTest, PinsThatCloseOldestFirstGiveItBackToTheUsersWindow) {
    Pane first(Qt::red);
    Pane second(Qt::green);
    auto a = show(first, pinSpec, QRectF(60, 80, 50, 50));
    auto b = show(second, pinSpec, QRectF(160, 80, 50, 50));
    EXPECT_EQ(other.focus(), idOf(second));
    a.reset();
    EXPECT_EQ(other.focus(), idOf(second));
    b.reset();
    EXPECT_EQ(other.focus(), window);
}

TEST_F(FocusTest, APinLeavesAFocusThatHasMovedOn) {
    const xcb_window_t next = other.open(native(QRect(400, 50, 100, 100)), 0xA04020, desk::Repaint::ByServer,
                                         desk::Management::Unmanaged);
    Pane pane(Qt::red);
    auto surface = show(pane, pinSpec, QRectF(60, 80, 100, 100));
    other.focusDirectly(next);
    surface.reset();
    EXPECT_EQ(other.focus(), next);
}

TEST_F(FocusTest, AnOverlayThatIsStillMappedHasLetTheKeysGo) {
    const desk::Compositor compositor(other);
    Pane pane(Qt::red);
    const auto surface =
        show(pane, {SurfaceLevel::Overlay, SurfaceKeyboard::Exclusive}, QRectF(60, 80, 100, 100));
    ASSERT_TRUE(desk::waitFor([&] { return surface->isComposited(); }));
    surface->orderOut();
    ASSERT_TRUE(other.isViewable(idOf(pane)));
    other.press(XK_Escape);
    EXPECT_EQ(other.keyPresses(), 1);
}

} // namespace marrowfin
