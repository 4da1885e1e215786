// How a card leaves: by its timer, by the pointer, by a drop, and what stops each.
#include "panel/PanelFixture.h"

namespace marrowfin::panel {

using namespace settings;

class AutoClose : public PanelFixture {
protected:
    AutoClose() { addDisplay(1, {0, 0, 1440, 900}); }
    bool isUp(const CapturePanel* panel) { return controller().entryFor(panel) != nullptr; }
};

struct Interval {
    PanelAutoClose setting;
    double seconds;
};
class AutoCloseAfter : public AutoClose, public testing::WithParamInterface<Interval> {};
INSTANTIATE_TEST_SUITE_P(EachSetting, AutoCloseAfter,
                         testing::Values(Interval{PanelAutoClose::fiveSeconds, 5},
                                         Interval{PanelAutoClose::tenSeconds, 10},
                                         Interval{PanelAutoClose::fifteenSeconds, 15},
                                         Interval{PanelAutoClose::thirtySeconds, 30},
                                         Interval{PanelAutoClose::oneMinute, 60}));

TEST_P(AutoCloseAfter, TheCardLeavesWhenItsTimeIsOver) {
    SettingsStore::shared().setPanelAutoClose(GetParam().setting);
    const CapturePanel* panel = present();
    pass(GetParam().seconds - 0.01);
    EXPECT_TRUE(isUp(panel));
    pass(0.02);
    EXPECT_FALSE(isUp(panel));
}

TEST_F(AutoClose, NeverMeansNoTimer) {
    SettingsStore::shared().setPanelAutoClose(PanelAutoClose::never);
    const CapturePanel* panel = present();
    EXPECT_FALSE(controller().entryFor(panel)->dismissTimer.isRunning());
    pass(3600);
    EXPECT_TRUE(isUp(panel));
    EXPECT_FALSE(chrome::AnimationClock::shared().isRunning()); // and nothing wakes the program
}

TEST_F(AutoClose, TheCardFadesInPlaceAndThenItsWindowGoes) {
    const CapturePanel* panel = present();
    pass(1);
    fake::FakeSurface* surface = desktop.surfaceHost.surfaceOf(&panel->content());
    controller().dismiss(panel, Animated::Yes);
    pass(0.1);
    EXPECT_LT(surface->opacity, 1);
    EXPECT_GT(surface->opacity, 0.5); // eases in
    EXPECT_TRUE(surface->isVisible());
    EXPECT_GT(surface->frame().rect.x(), 6);
    pass(0.12);
    // Freed whole once it is gone: no surface, no entry.
    EXPECT_TRUE(desktop.surfaceHost.surfaces.empty());
}

TEST_F(AutoClose, AnUnanimatedDismissalIsImmediate) {
    const CapturePanel* upper = present();
    const CapturePanel* lower = present();
    pass(1);
    controller().dismiss(lower, Animated::No);
    EXPECT_FALSE(lower->isVisible());
    EXPECT_EQ(card(upper), QRectF(24, 24, 240, 160));
    pass(0);
    EXPECT_EQ(desktop.surfaceHost.surfaces.size(), 1u);
}

TEST_F(AutoClose, AnOffsetThrowsTheCardSideways) {
    const CapturePanel* panel = present();
    pass(1);
    fake::FakeSurface* surface = desktop.surfaceHost.surfaceOf(&panel->content());
    controller().dismiss(panel, Animated::Yes, -338);
    pass(0.19);
    EXPECT_LT(surface->frame().rect.x(), 6 - 250);
    EXPECT_EQ(surface->frame().rect.size(), QSizeF(276, 194));
}

TEST_F(AutoClose, DismissingACardTwiceIsIgnored) {
    const CapturePanel* first = present();
    const CapturePanel* second = present();
    controller().dismiss(first, Animated::Yes);
    controller().dismiss(first, Animated::No);
    EXPECT_TRUE(first->isVisible()); // still fading
    EXPECT_TRUE(isUp(second));
}

TEST_F(AutoClose, DismissAllLeavesNothing) {
    for (int count = 0; count < 3; ++count)
        present();
    addDisplay(2, {1440, 0, 1440, 900});
    present();
    controller().dismissAll(Animated::No);
    EXPECT_TRUE(controller().panels().empty());
    EXPECT_TRUE(desktop.surfaceHost.order.empty());
    pass(0);
    EXPECT_TRUE(desktop.surfaceHost.surfaces.empty());
    EXPECT_FALSE(chrome::AnimationClock::shared().isRunning());
}

TEST_F(AutoClose, UnderThePointerTheTimerStopsAndLeavingGivesTheWholeInterval) {
    CapturePanel* panel = present();
    pass(14);
    pointAtPlace(panel->content(), onCard(120, 80));
    pass(100);
    EXPECT_TRUE(isUp(panel));
    pointAway(panel->content());
    pass(14.9);
    EXPECT_TRUE(isUp(panel));
    pass(0.2);
    EXPECT_FALSE(isUp(panel));
}

TEST_F(AutoClose, ACardWhoseDropWasTakenLeaves) {
    const CapturePanel* panel = present();
    controller().panelDragBegan(panel);
    pass(100);
    EXPECT_TRUE(isUp(panel));
    controller().panelDragEnded(panel, Drop::Completed);
    EXPECT_FALSE(isUp(panel));
}

TEST_F(AutoClose, ACancelledDragGivesTheWholeIntervalAnew) {
    const CapturePanel* panel = present();
    pass(10);
    controller().panelDragBegan(panel);
    controller().panelHoverChanged(false, panel); // the pointer left with the drag: no timer by that
    EXPECT_FALSE(controller().entryFor(panel)->dismissTimer.isRunning());
    controller().panelDragEnded(panel, Drop::Cancelled);
    pass(14.9);
    EXPECT_TRUE(isUp(panel));
    pass(0.2);
    EXPECT_FALSE(isUp(panel));
}

TEST_F(AutoClose, AChangedSettingCountsFromTheNextStart) {
    const CapturePanel* panel = present();
    SettingsStore::shared().setPanelAutoClose(PanelAutoClose::fiveSeconds);
    pass(6);
    EXPECT_TRUE(isUp(panel));
    controller().panelHoverChanged(true, panel);
    controller().panelHoverChanged(false, panel);
    pass(5.1);
    EXPECT_FALSE(isUp(panel));
}

TEST_F(AutoClose, ACardWhoseWindowTheSystemTookIsForgotten) {
    const CapturePanel* panel = present();
    desktop.surfaceHost.surfaceOf(&panel->content())->takeAway();
    EXPECT_TRUE(controller().panels().empty());
    pass(0);
    EXPECT_TRUE(desktop.surfaceHost.surfaces.empty());
}

TEST_F(AutoClose, TheControllerMayGoWhileCardsAreFading) {
    const CapturePanel* panel = present();
    present();
    controller().dismiss(panel, Animated::Yes);
    pass(0.1);
    SharedObjects::destroyAll();
    EXPECT_TRUE(desktop.surfaceHost.surfaces.empty());
}

} // namespace marrowfin::panel
