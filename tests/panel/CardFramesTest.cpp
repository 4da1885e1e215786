// The frames of a moving card wait for nobody.
#include "panel/CardPicture.h"
#include "panel/PanelFixture.h"
#include "support/BusyThreads.h"

namespace marrowfin::panel {

namespace {
class CardFrames : public PanelFixture, public testing::WithParamInterface<double> {
protected:
    CardFrames() { addDisplay(1, {0, 0, 1440, 900}); }

    void paintSome(CapturePanelContentView& view) {
        for (int frame = 0; frame < 3; ++frame) {
            pass(4 / 60.0);
            cardPicture(view, GetParam());
        }
        pass(1);
    }
};
} // namespace
INSTANTIATE_TEST_SUITE_P(EachDensity, CardFrames, testing::Values(2, 2.5, 3));

TEST_P(CardFrames, ComeWhileTheToolkitsThreadsAreBusy) {
    CapturePanelContentView view(capture(1600, 1000), PanelActions());
    ASSERT_TRUE(fake::waitUntil([&] { return view.dragExport().isReady(); }));
    const testsupport::BusyThreads threads;
    view.playArrival();
    paintSome(view);
    view.setHovered(true, HoverSource::Program);
    paintSome(view);
    view.setHovered(false, HoverSource::Program);
    paintSome(view);
    EXPECT_FALSE(threads.wereWaitedFor());
}

} // namespace marrowfin::panel
