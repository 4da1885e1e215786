// Cards on a real desktop: they take no focus, let clicks beside them through, stand above everything, open
// an editor by a click, and carry their file into another program.
#include "desktop/panel/CardsTest.h"
#include "editor/EditorWindowController.h"
#include "panel/PreviewReturn.h"
#include "pin/PinManager.h"
#include "settings/HintCounters.h"

#include <QProcess>
#include <QTimer>
#include <QWidget>
#include <X11/keysym.h>

namespace marrowfin {

using namespace editor;
using namespace imaging;
using namespace panel;
using namespace pin;
using namespace settings;

namespace {
constexpr std::uint32_t windowColor = 0x2040A0;

class CardOnDesktop : public CardsTest {
protected:
    std::size_t opened() { return controller().editors().size(); }
    EditorWindowController& openedEditor() {
        return *qobject_cast<EditorWindowController*>(controller().editors().front()->controller.get());
    }
    // One step every 20 ms from the event loop, so that it also goes on inside a drag's own loop.
    void play(std::vector<std::function<void()>> steps) {
        auto* timer = new QTimer(&player);
        auto list = std::make_shared<std::vector<std::function<void()>>>(std::move(steps));
        QObject::connect(timer, &QTimer::timeout, timer, [timer, list, next = std::size_t{0}]() mutable {
            if (next == list->size())
                timer->deleteLater();
            else
                (*list)[next++]();
        });
        timer->start(20);
    }
    std::vector<std::function<void()>> dragFrom(const QPoint& from, const QPoint& to) {
        std::vector<std::function<void()>> steps{[this, from] { other.movePointer(from); },
                                                 [this] { other.pressButton(); }};
        for (int step = 1; step <= 12; ++step)
            steps.push_back([this, from, to, step] { other.movePointer(from + (to - from) * step / 12); });
        return steps;
    }

    // Drags the card to a place where nobody takes it. The time stands still from then on, so that what comes
    // back stands where it is looked at.
    void expectSlidesBack(CapturePanel* panel, const QPoint& released) {
        const QPoint held = onScreen(panel, 120, 90);
        bool began = false;
        bool ended = false;
        auto steps = dragFrom(held, released);
        steps.emplace_back([&] { began = panel->content().isInDragSession(); });
        for (int pause = 0; pause < 10; ++pause)
            steps.emplace_back([] {});
        steps.emplace_back([&] {
            chrome::AnimationClock::shared().hold();
            other.releaseButton();
            ended = true;
        });
        play(std::move(steps));
        ASSERT_TRUE(desk::waitFor([&] { return ended && !panel->content().isInDragSession(); }));
        EXPECT_TRUE(began);
        ASSERT_NE(panel->previewReturn(), nullptr);
        // Still where it was let go, in front of whoever refused it; then on its way; then the card alone.
        EXPECT_TRUE(desk::waitFor([&] { return other.pixel(released) == captureColor; }));
        chrome::AnimationClock::shared().advance(PreviewReturn::seconds / 2);
        EXPECT_TRUE(desk::waitFor([&] { return other.pixel(released) != captureColor; }));
        EXPECT_TRUE(desk::waitFor([&] { return other.pixel((released + held) / 2) == captureColor; }));
        chrome::AnimationClock::shared().advance(PreviewReturn::seconds);
        EXPECT_TRUE(desk::waitFor([&] { return other.pixel((released + held) / 2) != captureColor; }));
        EXPECT_FALSE(panel->previewReturn()->isUnderWay());
        EXPECT_EQ(other.pixel(held), captureColor);
        EXPECT_EQ(controller().panels().size(), 1u);
        EXPECT_EQ(HintCounters().panelCompletedDragOuts(), 0);
        EXPECT_EQ(opened(), 0u);
    }

    QObject player;
};

class DropTarget {
public:
    DropTarget(const QString& kind, const QRect& frame) {
        process.start(QStringLiteral(PANEL_DROPTARGET),
                      {kind, QString::number(frame.x()), QString::number(frame.y()),
                       QString::number(frame.width()), QString::number(frame.height())});
        EXPECT_TRUE(desk::waitFor([&] { return said().contains("ready"); }));
    }
    ~DropTarget() {
        process.kill();
        process.waitForFinished();
    }
    QByteArray said() {
        output += process.readAllStandardOutput();
        return output;
    }

private:
    QProcess process;
    QByteArray output;
};
} // namespace

TEST_F(CardOnDesktop, TakesNoFocusWhenItComesAndIsHoveredAndAClickGivesItToTheEditor) {
    const xcb_window_t window = other.open({300, 50, 300, 200}, windowColor);
    ASSERT_EQ(other.focus(), window);
    CapturePanel* panel = present();
    EXPECT_EQ(other.focus(), window);
    other.movePointer(onScreen(panel, 120, 100));
    EXPECT_TRUE(desk::waitFor([&] { return panel->content().isHovered(); }));
    EXPECT_EQ(other.focus(), window);
    other.click(onScreen(panel, 120, 100));
    EXPECT_TRUE(desk::waitFor([&] { return opened() == 1; }));
    EXPECT_TRUE(desk::waitFor([&] { return openedEditor().window()->isActiveWindow(); }));
    EXPECT_EQ(other.buttonPresses(), 0);
}

TEST_F(CardOnDesktop, StandsInTheCornerThatPanelsLeaveFree) {
    CapturePanel* panel = present();
    const platform::Screen screen = platform::services().screens.screens().front();
    EXPECT_EQ(cardFrame(panel->frame()).rect.topLeft(), screen.visibleFrame.rect.topLeft() + QPointF(24, 24));
}

TEST_F(CardOnDesktop, ItsHaloLetsClicksThrough) {
    other.open({0, 0, 3000, 2000}, windowColor, desk::Repaint::ByServer, desk::Management::Unmanaged);
    CapturePanel* panel = present();
    // Beside the card, and in the window's four corners.
    int clicks = 0;
    for (const QPointF place :
         {QPointF(-9, 80), QPointF(-16, 170), QPointF(256, 170), QPointF(-16, -20), QPointF(256, -20)}) {
        other.click(onScreen(panel, place.x(), place.y()));
        ++clicks;
        EXPECT_TRUE(desk::waitFor([&] { return other.buttonPresses() == clicks; }))
            << place.x() << ", " << place.y();
    }
    EXPECT_EQ(opened(), 0u);
    EXPECT_EQ(controller().panels().size(), 1u);
}

TEST_F(CardOnDesktop, StaysAboveAFullScreenWindowAndOnAnotherWorkspace) {
    CapturePanel* panel = present();
    const xcb_window_t window = other.open({300, 50, 300, 200}, windowColor);
    other.makeFullScreen(window);
    ASSERT_TRUE(desk::waitFor([&] { return other.pixel({700, 30}) == QColor::fromRgb(windowColor); }));
    EXPECT_TRUE(desk::waitFor([&] { return other.pixel(onScreen(panel, 120, 90)) == captureColor; }));
    other.goToWorkspace(1);
    ASSERT_TRUE(desk::waitFor([&] { return other.pixel({700, 30}) != QColor::fromRgb(windowColor); }));
    EXPECT_TRUE(desk::waitFor([&] { return other.pixel(onScreen(panel, 120, 90)) == captureColor; }));
    other.goToWorkspace(0);
}

TEST_F(CardOnDesktop, OfFiveOnlyTheNewestStay) {
    const auto room = static_cast<std::size_t>(roomOn(platform::services().screens.screens().front()));
    CapturePanel* oldest = present();
    for (int count = 0; count < 4; ++count)
        present();
    EXPECT_EQ(controller().panels().size(), room);
    EXPECT_EQ(controller().entryFor(oldest), nullptr);
    // Each stands where its row is once they have moved.
    const auto frames =
        stackFrames(platform::services().screens.screens().front().visibleFrame, static_cast<int>(room));
    EXPECT_TRUE(desk::waitFor([&] { return controller().panels().front()->frame() == frames.back(); }));
}

TEST_F(CardOnDesktop, ItsCornerIsNeverABlackSquare) {
    other.open({0, 0, 3000, 2000}, 0xE0E4E8, desk::Repaint::ByServer, desk::Management::Unmanaged,
               desk::Stacking::Top);
    CapturePanel* panel = present();
    other.movePointer({600, 60});
    const QImage screen = other.screen();
    // Just outside the round corner: the desktop, with a breath of shadow at most.
    for (const QPoint corner :
         {onScreen(panel, 1, 158), onScreen(panel, 238, 158), onScreen(panel, 1, 2), onScreen(panel, 238, 2)})
        EXPECT_GT(qGray(screen.pixel(corner)), 110) << corner.x() << ", " << corner.y();
}

TEST_F(CardOnDesktop, IsDraggedIntoAnotherProgramAsAFile) {
    CapturePanel* panel = present();
    DropTarget target(QStringLiteral("take"), {500, 100, 200, 200});
    auto steps = dragFrom(onScreen(panel, 120, 90), {600, 200});
    // It lets go when the target has had time to answer; a drop on a slow one waits for it.
    for (int pause = 0; pause < 25; ++pause)
        steps.emplace_back([] {});
    steps.emplace_back([this] { other.releaseButton(); });
    play(std::move(steps));
    EXPECT_TRUE(desk::waitFor([&] { return target.said().contains("640x400 #c83c1e"); }))
        << target.said().constData();
    EXPECT_TRUE(desk::waitFor([&] { return controller().panels().empty(); }));
    EXPECT_EQ(HintCounters().panelCompletedDragOuts(), 1);
    EXPECT_EQ(opened(), 0u);
}

TEST_F(CardOnDesktop, ARefusedDropBringsTheCardBack) {
    CapturePanel* panel = present();
    DropTarget target(QStringLiteral("refuse"), {500, 100, 200, 200});
    expectSlidesBack(panel, {600, 200});
    EXPECT_FALSE(target.said().contains("640x400"));
}

TEST_F(CardOnDesktop, ADragLetGoOverTheDesktopBringsTheCardBackForItsWholeTime) {
    SettingsStore::shared().setPanelAutoClose(PanelAutoClose::oneMinute);
    CapturePanel* panel = present();
    expectSlidesBack(panel, {700, 300});
    chrome::AnimationClock::shared().advance(58);
    EXPECT_EQ(controller().panels().size(), 1u);
    chrome::AnimationClock::shared().advance(2);
    EXPECT_TRUE(controller().panels().empty());
}

TEST_F(CardOnDesktop, ADropOnAWindowOfOursIsNone) {
    QImage pixels(300, 200, QImage::Format_RGB32);
    pixels.fill(Qt::darkGreen);
    PinManager::shared().pin(Image::captured(pixels));
    const QPoint onPin = onScreen(QPointF(100 + 290, 100 + 190));
    ASSERT_TRUE(desk::waitFor([&] { return other.pixel(onPin) == QColor(Qt::darkGreen); }));
    expectSlidesBack(present(), onPin);
    EXPECT_EQ(other.pixel(onPin), QColor(Qt::darkGreen));
}

TEST_F(CardOnDesktop, EscapeCancelsADragAtOnce) {
    CapturePanel* panel = present();
    bool began = false;
    bool pressed = false;
    auto steps = dragFrom(onScreen(panel, 120, 90), {600, 200});
    steps.emplace_back([&] { began = panel->content().isInDragSession(); });
    steps.emplace_back([&] {
        other.press(XK_Escape);
        pressed = true;
    });
    play(std::move(steps));
    EXPECT_TRUE(desk::waitFor([&] { return pressed && !panel->content().isInDragSession(); }));
    EXPECT_TRUE(began);
    EXPECT_EQ(controller().panels().size(), 1u);
    other.releaseButton();
    EXPECT_EQ(opened(), 0u);
}

TEST_F(CardOnDesktop, AMouseWheelOverItDoesNothing) {
    CapturePanel* panel = present();
    other.movePointer(onScreen(panel, 120, 90));
    ASSERT_TRUE(desk::waitFor([&] { return panel->content().isHovered(); }));
    for (const char* button : {"6", "7", "4", "5"}) {
        QStringList turns{QStringLiteral("click"),   QStringLiteral("--repeat"), QStringLiteral("20"),
                          QStringLiteral("--delay"), QStringLiteral("2"),        QLatin1String(button)};
        ASSERT_EQ(QProcess::execute(QStringLiteral("xdotool"), turns), 0);
    }
    // A click after the wheel: what came before it has been handled by then.
    other.click(onScreen(panel, 120, 100));
    EXPECT_TRUE(desk::waitFor([&] { return opened() == 1; }));
}

} // namespace marrowfin
