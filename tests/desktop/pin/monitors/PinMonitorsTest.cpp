// A monitor that is unplugged while a pin is on it.
#include "desktop/pin/PinsTest.h"
#include "desktop/x11surfaces/SecondMonitor.h"

namespace marrowfin {

using namespace pin;

namespace {
const QColor red(200, 60, 30);
const QColor green(30, 150, 60);

class PinMonitors : public PinsTest {
protected:
    // By its middle, with the pointer.
    void dragTo(PinnedWindow& pinned, const QPoint& goal) {
        other.movePointer(middle(pinned));
        other.pressButton();
        other.movePointer(goal);
        other.releaseButton();
        EXPECT_TRUE(desk::waitFor([&] { return served(pinned).contains(goal); }));
    }

    desk::SecondMonitor second;
};
} // namespace

TEST_F(PinMonitors, APinOfItComesBackWhereItCanBeSeenAndTheOthersStay) {
    PinnedWindow& lost = pin(red);
    const QRect home = served(lost);
    dragTo(lost, second.frame().center());
    PinnedWindow& stays = pin(green);
    dragTo(stays, home.center() + QPoint(120, -300));
    const QRect kept = served(stays);

    second.unplug();
    EXPECT_TRUE(desk::waitFor([&] { return served(lost) == home && other.isViewable(idOf(lost)); }));
    EXPECT_TRUE(desk::waitFor([&] { return other.pixel(home.center()) == red; }));
    EXPECT_EQ(served(stays), kept);
    EXPECT_TRUE(desk::waitFor([&] { return other.pixel(kept.center()) == green; }));
    // And it can be taken hold of as before.
    dragTo(lost, home.center() + QPoint(60, -20));
    EXPECT_TRUE(desk::waitFor([&] { return served(lost) == home.translated(60, -20); }));
    EXPECT_EQ(count(), 2u);
}

} // namespace marrowfin
