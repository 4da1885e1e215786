// Two fingers that flick a card away, and a wheel that doesn't.
#include "panel/PanelFixture.h"

#include <QPointingDevice>
#include <QWheelEvent>

namespace marrowfin {

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

    // A scroll event on the card as a window system sends it. The delta is what the content would move by.
    void scroll(CapturePanel* panel, const QPointF& delta, Qt::ScrollPhase phase,
                const QPointingDevice& device, quint64 milliseconds, bool natural = true) {
        const QPointF place = onCard(120, 80);
        QWheelEvent event(place, place, delta.toPoint(), delta.toPoint() * 8, Qt::NoButton, Qt::NoModifier,
                          phase, natural, Qt::MouseEventNotSynthesized, &device);
        event.setTimestamp(milliseconds);
        QApplication::sendEvent(&panel->content(), &event);
    }
    bool isUp(CapturePanel* panel) { return controller().entryFor(panel) != nullptr; }

    const QPointingDevice touchpad{QStringLiteral("touchpad"),
                                   4711,
                                   QInputDevice::DeviceType::TouchPad,
                                   QPointingDevice::PointerType::Finger,
                                   QInputDevice::Capability::Scroll,
                                   1,
                                   3};
    const QPointingDevice mouse{QStringLiteral("mouse"),
                                4712,
                                QInputDevice::DeviceType::Mouse,
                                QPointingDevice::PointerType::Generic,
                                QInputDevice::Capability::Scroll,
                                1,
                                3};
};

TEST_F(Swipe, WithPhasesTheCardFliesOffInTheFingersDirection) {
    CapturePanel* panel = presentSettled();
    const double x = panel->frame().rect.x();
    scroll(panel, {0, 0}, Qt::ScrollBegin, touchpad, 0);
    scroll(panel, {-40, 2}, Qt::ScrollUpdate, touchpad, 8);
    EXPECT_TRUE(isUp(panel));
    scroll(panel, {-40, 2}, Qt::ScrollUpdate, touchpad, 16);
    EXPECT_FALSE(isUp(panel));
    pass(0.19);
    EXPECT_LT(panel->frame().rect.x(), x - 250);
    EXPECT_GT(panel->frame().rect.x(), x - 338);
}

TEST_F(Swipe, WithoutNaturalScrollingTheFingersStillDecide) {
    CapturePanel* panel = presentSettled();
    const double x = panel->frame().rect.x();
    scroll(panel, {0, 0}, Qt::ScrollBegin, touchpad, 0, false);
    scroll(panel, {-80, 0}, Qt::ScrollUpdate, touchpad, 8, false);
    EXPECT_FALSE(isUp(panel));
    pass(0.19);
    EXPECT_GT(panel->frame().rect.x(), x + 250);
}

TEST_F(Swipe, AGestureDismissesOneCardAndItsMomentumNone) {
    CapturePanel* first = presentSettled();
    CapturePanel* second = presentSettled();
    scroll(second, {0, 0}, Qt::ScrollBegin, touchpad, 0);
    scroll(second, {80, 0}, Qt::ScrollUpdate, touchpad, 8);
    scroll(first, {80, 0}, Qt::ScrollMomentum, touchpad, 16);
    EXPECT_FALSE(isUp(second));
    EXPECT_TRUE(isUp(first));
}

TEST_F(Swipe, ATouchpadWithoutPhasesBeginsAfterAPause) {
    CapturePanel* panel = presentSettled();
    quint64 time = 1000;
    scroll(panel, {5, 0}, Qt::NoScrollPhase, touchpad, time);
    for (int step = 0; step < 8; ++step)
        scroll(panel, {8, 0}, Qt::NoScrollPhase, touchpad, time += 10); // 64
    EXPECT_TRUE(isUp(panel));
    scroll(panel, {5, 0}, Qt::NoScrollPhase, touchpad, time += 400); // rested: from the start
    for (int step = 0; step < 8; ++step)
        scroll(panel, {8, 0}, Qt::NoScrollPhase, touchpad, time += 10);
    EXPECT_TRUE(isUp(panel));
    scroll(panel, {8, 0}, Qt::NoScrollPhase, touchpad, time += 10); // 72
    EXPECT_FALSE(isUp(panel));
}

TEST_F(Swipe, AMouseWheelDoesNothing) {
    CapturePanel* panel = presentSettled();
    for (int step = 0; step < 20; ++step)
        scroll(panel, {15, 0}, Qt::NoScrollPhase, mouse, 1000 + step);
    EXPECT_TRUE(isUp(panel));
}

} // namespace marrowfin
