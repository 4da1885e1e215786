// Two fingers that flick a card away, and a wheel that doesn't.
#include "panel/PanelFixture.h"

#include <QWheelEvent>

namespace marrowfin::panel {

using platform::ScrollPhase;

TEST(SwipeGestures, NeedSeventyPointsClearlyAcross) {
    SwipeGesture swipe;
    swipe.begin();
    EXPECT_FALSE(swipe.move({69, 0}));
    EXPECT_EQ(swipe.move({1, 34}), 1);
    swipe.begin();
    EXPECT_FALSE(swipe.move({70, 35}));
    EXPECT_EQ(swipe.move({1, 0}), 1); // now it is clear
    swipe.begin();
    EXPECT_EQ(swipe.move({-70, -34}), -1);
}

TEST(SwipeGestures, DismissOnceEach) {
    SwipeGesture swipe;
    swipe.begin();
    EXPECT_TRUE(swipe.move({100, 0}));
    EXPECT_FALSE(swipe.move({100, 0}));
    swipe.begin();
    EXPECT_FALSE(swipe.move({60, 0})); // begun anew
}

class Swipe : public PanelFixture {
protected:
    Swipe() { addDisplay(1, {0, 0, 1440, 900}); }

    void fingers(CapturePanel* panel, ScrollPhase phase, const QPointF& delta = {}) {
        desktop.scrollGestures.play(panel->content(), phase, delta);
    }
    bool isUp(CapturePanel* panel) { return controller().entryFor(panel) != nullptr; }
};

TEST_F(Swipe, TheCardFliesOffInTheFingersDirection) {
    for (const int side : {-1, 1}) {
        CapturePanel* panel = presentSettled();
        const double x = panel->frame().rect.x();
        fingers(panel, ScrollPhase::Began, {side * 60.0, 0}); // not counted yet
        fingers(panel, ScrollPhase::Changed, {side * 40.0, 2});
        EXPECT_TRUE(isUp(panel));
        fingers(panel, ScrollPhase::Changed, {side * 40.0, 2});
        EXPECT_FALSE(isUp(panel));
        pass(0.19);
        const double gone = side * (panel->frame().rect.x() - x);
        EXPECT_GT(gone, 250);
        EXPECT_LT(gone, 338);
        pass(0.1);
        EXPECT_TRUE(desktop.surfaceHost.surfaces.empty());
    }
}

TEST_F(Swipe, AnEndedGestureLeavesNothingForTheNext) {
    CapturePanel* panel = presentSettled();
    fingers(panel, ScrollPhase::Began);
    fingers(panel, ScrollPhase::Changed, {69, 0});
    fingers(panel, ScrollPhase::Ended);
    fingers(panel, ScrollPhase::Began);
    fingers(panel, ScrollPhase::Changed, {69, 0});
    EXPECT_TRUE(isUp(panel));
    fingers(panel, ScrollPhase::Ended, {10, 0}); // a step that says that they were lifted is no way of theirs
    EXPECT_TRUE(isUp(panel));
}

TEST_F(Swipe, OneGestureDismissesOneCard) {
    CapturePanel* first = presentSettled();
    CapturePanel* second = presentSettled();
    fingers(second, ScrollPhase::Began);
    for (int step = 0; step < 4; ++step)
        fingers(second, ScrollPhase::Changed, {80, 0});
    EXPECT_FALSE(isUp(second));
    EXPECT_TRUE(isUp(first));
}

TEST_F(Swipe, ACardThatHasGoneListensNoMore) {
    CapturePanel* panel = presentSettled();
    EXPECT_EQ(desktop.scrollGestures.watchCount(), 1);
    controller().dismiss(panel, Animated::No);
    pass(0);
    EXPECT_EQ(desktop.scrollGestures.watchCount(), 0);
}

TEST_F(Swipe, AMouseWheelDoesNothing) {
    CapturePanel* panel = presentSettled();
    const QPointF place = onCard(120, 80);
    for (int turn = 0; turn < 20; ++turn) {
        QWheelEvent event(place, place, {15, 0}, {120, 0}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase,
                          false);
        QApplication::sendEvent(&panel->content(), &event);
    }
    EXPECT_TRUE(isUp(panel));
    EXPECT_EQ(panel->frame().rect.x(), 24 - haloLeft);
}

} // namespace marrowfin::panel
