// A monitor that is unplugged while cards are on it.
#include "desktop/panel/CardsTest.h"
#include "desktop/x11surfaces/SecondMonitor.h"

namespace marrowfin {

using namespace panel;

namespace {
class CardMonitors : public CardsTest {
protected:
    void unplugSecond() {
        second.unplug();
        ASSERT_TRUE(desk::waitFor([] { return platform::services().screens.screens().size() == 1; }));
    }
    static xcb_window_t windowOf(CapturePanel* panel) {
        return static_cast<xcb_window_t>(panel->content().internalWinId());
    }

    desk::SecondMonitor second;
};
} // namespace

TEST_F(CardMonitors, ItsCardsGoAtOnceAndTheOthersStay) {
    other.movePointer({600, 60});
    CapturePanel* kept = present();
    other.movePointer(second.frame().center());
    CapturePanel* lost = present();
    CapturePanel* lostToo = present();
    const std::vector<xcb_window_t> gone{windowOf(lost), windowOf(lostToo)};
    const xcb_window_t staying = windowOf(kept);
    ASSERT_GE(other.frameOf(gone.front()).left(), second.frame().left());

    unplugSecond();
    EXPECT_TRUE(desk::waitFor([&] { return controller().panels() == std::vector{kept}; }));
    for (const xcb_window_t window : gone)
        EXPECT_TRUE(desk::waitFor([&] { return !other.isViewable(window); }));
    // In its corner still; the desktop's panel comes and goes meanwhile.
    EXPECT_TRUE(desk::waitFor([&] {
        const DesktopRect corner =
            stackFrames(platform::services().screens.screens().front().visibleFrame, 1).front();
        return kept->frame() == corner && other.frameOf(staying).topLeft() ==
                                              onScreen(QPointF(corner.rect.left(), corner.rect.bottom()));
    }));
    EXPECT_TRUE(desk::waitFor([&] { return other.pixel(onScreen(kept, 120, 90)) == captureColor; }));
}

TEST_F(CardMonitors, ACardOfItGoesEvenWhileItIsDragged) {
    other.movePointer(second.frame().center());
    CapturePanel* lost = present();
    other.movePointer({600, 60});
    controller().panelDragBegan(lost);
    unplugSecond();
    EXPECT_TRUE(desk::waitFor([&] { return controller().panels().empty(); }));
    controller().panelDragEnded(lost, Drop::Cancelled); // of a card that is no more: ignored
    EXPECT_TRUE(controller().panels().empty());
    present(); // where there still is a screen
}

} // namespace marrowfin
