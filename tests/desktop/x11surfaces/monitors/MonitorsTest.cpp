// A monitor that goes while surfaces of ours are on it.
#include "desktop/x11surfaces/SecondMonitor.h"
#include "desktop/x11surfaces/SurfacesTest.h"

namespace marrowfin {

using platform::SurfaceBackdrop;
using platform::SurfaceKeyboard;
using platform::SurfaceLevel;

class MonitorsTest : public SurfacesTest {
protected:
    desk::SecondMonitor second;
};

TEST_F(MonitorsTest, AnOverlayOnAMonitorThatGoesIsTakenDown) {
    const QImage before = settledScreen();
    Pane pane(QColor(0, 0, 0, 128));
    const auto surface = show(
        pane, {SurfaceLevel::Overlay, SurfaceKeyboard::Exclusive, SurfaceBackdrop::Snapshot}, second.frame());
    const Count closed(surface.get(), &platform::Surface::closed);
    const QColor beneath = before.pixelColor(second.frame().center());
    ASSERT_TRUE(desk::waitFor([&] { return other.pixel(second.frame().center()) != beneath; }));
    second.unplug();
    EXPECT_TRUE(desk::waitFor([&] { return closed.times() == 1; }));
    EXPECT_FALSE(surface->isVisible());
    EXPECT_FALSE(pane.isVisible());
    EXPECT_TRUE(desk::waitFor([&] { return !other.isViewable(idOf(pane)); }));
    EXPECT_TRUE(desk::await(surface->retire()));
    EXPECT_EQ(closed.times(), 1);
}

TEST_F(MonitorsTest, ASurfaceOnTheOtherMonitorStays) {
    Pane pane(Qt::red);
    const auto surface = show(pane, {}, QRectF(40, 60, 100, 100));
    const Count closed(surface.get(), &platform::Surface::closed);
    second.unplug();
    EXPECT_TRUE(shows(QPoint(50, 70), Qt::red));
    EXPECT_EQ(closed.times(), 0);
    EXPECT_EQ(other.frameOf(idOf(pane)), QRect(40, 60, 100, 100));
}

} // namespace marrowfin
