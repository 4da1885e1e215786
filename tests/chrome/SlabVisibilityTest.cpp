// Slabs that come and go: with a rise or only fading, turned round on the way, and hidden only when nothing
// asked for them since.
#include "chrome/SlabVisibility.h"
#include "chrome/SlabFixture.h"

#include <cmath>

namespace marrowfin::chrome {

class SlabVisibilities : public SlabFixture {
protected:
    SlabVisibilities() {
        slab.setContentSize(100, 30, 0, 0, 0, 0);
        place(slab, {40, 50, 100, 30});
        window.show();
    }
    const Rise& rise() { return SlabVisibility::of(slab).rise(); }
    // Of the plate, at its middle; 0 where it isn't seen.
    double shownAlpha() {
        below.setPicture(plain(Qt::black));
        return picture().pixelColor(slab.geometry().center()).lightness() / 226.0;
    }

    EditorSlabView slab{SlabGround::Desktop, 12, &window};
};

TEST_F(SlabVisibilities, AShowRisesSixPointsOnASpring) {
    startSlabHidden(slab);
    EXPECT_TRUE(slab.isHidden());
    setSlabVisible(slab, true);
    EXPECT_FALSE(slab.isHidden());
    EXPECT_EQ(rise().offset(), -6);
    EXPECT_EQ(rise().alpha(), 0);
    for (int frame = 1; frame <= 30; ++frame) {
        pass(1 / 60.0);
        const double t = frame / 60.0;
        const double w = std::sqrt(420.0 - 13 * 13);
        const double x = std::exp(-13 * t) * (std::cos(w * t) + 13 / w * std::sin(w * t));
        EXPECT_NEAR(rise().offset(), -6 * x, 1e-6);
    }
    pass(1);
    EXPECT_EQ(rise().offset(), 0);
    EXPECT_NEAR(shownAlpha(), 1, 0.01);
    EXPECT_FALSE(AnimationClock::shared().isRunning());
}

TEST_F(SlabVisibilities, TheFadeInLastsLongerThanTheFadeOut) {
    startSlabHidden(slab);
    setSlabVisible(slab, true);
    pass(0.15);
    EXPECT_LT(rise().alpha(), 1);
    pass(0.02);
    EXPECT_EQ(rise().alpha(), 1);
    setSlabVisible(slab, false);
    pass(0.13);
    EXPECT_GT(rise().alpha(), 0);
    pass(0.0101);
    EXPECT_EQ(rise().alpha(), 0);
}

TEST_F(SlabVisibilities, AHiddenPlateSinksThenIsHidden) {
    setSlabVisible(slab, false);
    EXPECT_EQ(rise().offset(), 0);
    pass(0.07);
    EXPECT_LT(rise().offset(), -1);
    EXPECT_GT(rise().offset(), -3); // ease in: less than half the way after half the time
    EXPECT_FALSE(slab.isHidden());
    pass(0.0799);
    EXPECT_FALSE(slab.isHidden());
    pass(0.001);
    EXPECT_TRUE(slab.isHidden());
    EXPECT_FALSE(AnimationClock::shared().isRunning());
}

TEST_F(SlabVisibilities, ShownAgainInTimeItStaysVisible) {
    for (const double wait : {0.0, 0.05, 0.139, 0.1499}) {
        setSlabVisible(slab, false);
        pass(wait);
        setSlabVisible(slab, true);
        pass(2);
        EXPECT_FALSE(slab.isHidden()) << wait;
        EXPECT_NEAR(shownAlpha(), 1, 0.01) << wait;
    }
}

TEST_F(SlabVisibilities, ATurnOnTheWayStartsFromWhereItIsSeen) {
    startSlabHidden(slab);
    setSlabVisible(slab, true);
    pass(0.06);
    const double offset = rise().offset();
    const double alpha = rise().alpha();
    ASSERT_LT(offset, -1);
    setSlabVisible(slab, false);
    EXPECT_EQ(rise().offset(), offset);
    EXPECT_EQ(rise().alpha(), alpha);
    pass(0.03);
    const double sinking = rise().offset();
    setSlabVisible(slab, true);
    EXPECT_EQ(rise().offset(), sinking);
}

TEST_F(SlabVisibilities, WithReducedMotionItOnlyFades) {
    desktop.appearance.setReduceMotion(true);
    startSlabHidden(slab);
    setSlabVisible(slab, true);
    const QPoint above = slab.geometry().topLeft() + QPoint(50, -7);
    for (int frame = 0; frame < 9; ++frame) {
        EXPECT_EQ(rise().offset(), 0);
        pass(1 / 60.0);
    }
    EXPECT_GT(rise().alpha(), 0.5);
    pass(0.1);
    setSlabVisible(slab, false);
    pass(0.1);
    EXPECT_EQ(rise().offset(), 0);
    EXPECT_GT(rise().alpha(), 0);
    EXPECT_LT(rise().alpha(), 1);
    EXPECT_EQ(window.childAt(above), &below);
    pass(0.1);
    EXPECT_TRUE(slab.isHidden());
}

TEST_F(SlabVisibilities, MotionReducedOnTheWayEndsTheRise) {
    startSlabHidden(slab);
    setSlabVisible(slab, true);
    pass(0.05);
    ASSERT_NE(rise().offset(), 0);
    desktop.appearance.setReduceMotion(true);
    setSlabVisible(slab, false);
    EXPECT_EQ(rise().offset(), 0);
}

TEST_F(SlabVisibilities, TheShadowComesAndGoesWithThePlate) {
    const QPoint onShadow = slab.geometry().bottomLeft() + QPoint(50, 4);
    const auto shade = [&] { return 255 - picture().pixelColor(onShadow).lightness(); };
    const int full = shade();
    ASSERT_GT(full, 20);
    setSlabVisible(slab, false);
    pass(0.1);
    EXPECT_LT(shade(), full);
    EXPECT_GT(shade(), 0);
    pass(0.1);
    EXPECT_EQ(shade(), 0);
    EXPECT_FALSE(slab.slabShadow()->isVisible());
    setSlabVisible(slab, true);
    pass(1);
    EXPECT_EQ(shade(), full);
}

TEST_F(SlabVisibilities, WhatWasAskedForIsKnownBeforeItIsSo) {
    EXPECT_TRUE(isSlabVisible(slab));
    setSlabVisible(slab, false);
    EXPECT_FALSE(slab.isHidden());
    EXPECT_FALSE(isSlabVisible(slab));
    setSlabVisible(slab, true);
    EXPECT_TRUE(isSlabVisible(slab));
    startSlabHidden(slab);
    EXPECT_FALSE(isSlabVisible(slab));
    EXPECT_FALSE(AnimationClock::shared().isRunning());
    EditorSlabView other(SlabGround::Window, 8, &window);
    EXPECT_TRUE(isSlabVisible(other)) << "not asked for yet, and not hidden by anyone";
    other.hide();
    EXPECT_FALSE(isSlabVisible(other));
}

TEST_F(SlabVisibilities, AViewThatGoesOnTheWayLeavesNothingBehind) {
    auto* gone = new EditorSlabView(SlabGround::Window, 8, &window);
    gone->setContentSize(20, 20, 0, 0, 0, 0);
    gone->show();
    setSlabVisible(*gone, false);
    pass(0.05);
    delete gone;
    EXPECT_FALSE(AnimationClock::shared().isRunning());
    pass(1);
}

TEST_F(SlabVisibilities, AnyViewMayComeAndGo) {
    QWidget plain(&window);
    plain.show();
    setSlabVisible(plain, false);
    pass(0.2);
    EXPECT_TRUE(plain.isHidden());
}

} // namespace marrowfin::chrome
