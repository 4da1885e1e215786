// A monitor that is unplugged while cards are on it.
#include "desktop/panel/CardsTest.h"

#include <QProcess>
#include <QScreen>

namespace marrowfin {

namespace {
class CardMonitors : public CardsTest {
protected:
    void SetUp() override {
        CardsTest::SetUp();
        ASSERT_EQ(platform::services().screens.screens().size(), 2u);
        second = QGuiApplication::screens().at(1)->geometry();
    }
    void TearDown() override {
        CardsTest::TearDown();
        if (!unplugged)
            return;
        const QString frame =
            QStringLiteral("%1/200x%2/250+%3+0").arg(second.width()).arg(second.height()).arg(second.x());
        QProcess::execute("xrandr", {"--setmonitor", "R", frame, "none"});
        EXPECT_TRUE(desk::waitFor([] { return QGuiApplication::screens().size() == 2; }));
    }
    void unplugSecond() {
        unplugged = true;
        QProcess::execute("xrandr", {"--delmonitor", "R"});
        ASSERT_TRUE(desk::waitFor([] { return platform::services().screens.screens().size() == 1; }));
    }
    static xcb_window_t windowOf(CapturePanel* panel) {
        return static_cast<xcb_window_t>(panel->content().internalWinId());
    }

    QRect second;
    bool unplugged = false;
};
} // namespace

TEST_F(CardMonitors, ItsCardsGoAtOnceAndTheOthersStay) {
    other.movePointer({600, 60});
    CapturePanel* kept = present();
    other.movePointer(second.center());
    CapturePanel* lost = present();
    CapturePanel* lostToo = present();
    const std::vector<xcb_window_t> gone{windowOf(lost), windowOf(lostToo)};
    const xcb_window_t staying = windowOf(kept);
    ASSERT_GE(other.frameOf(gone.front()).left(), second.left());

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
    other.movePointer(second.center());
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
