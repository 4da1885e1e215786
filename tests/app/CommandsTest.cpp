// What each row of the menus starts.
#include "MenuFixture.h"

#include "app/CaptureCommands.h"
#include "app/CaptureDelivery.h"
#include "app/StatusBarController.h"
#include "capture/CountdownDigit.h"
#include "capture/ScreenCaptureManager.h"
#include "capture/SelectionView.h"
#include "capture/WindowHighlightView.h"
#include "chrome/AnimationClock.h"
#include "editor/EditorWindowController.h"
#include "support/CapturedOutput.h"
#include "support/Input.h"

#include <QDialog>
#include <functional>

using namespace marrowfin;
using namespace app;
using namespace capture;
using namespace commands;
using namespace editor;
using namespace imaging;
using namespace settings;
using namespace marrowfin::platform;
using namespace marrowfin::testsupport;
using marrowfin::fake::FakeDesktop;
using marrowfin::fake::waitUntil;

namespace {
class CommandsTest : public MenuFixture {};
} // namespace

TEST_F(CommandsTest, everyCaptureEndsAtTheAlertWithoutPermission) {
    desktop.addScreen(1, {0, 0, 800, 600});
    desktop.screenSource.contentError = Error{Error::Kind::Unavailable, QStringLiteral("not permitted")};
    launch();
    const std::pair<const char*, std::function<void()>> commands[] = {
        {"Capture Area", [this] { choose(QStringLiteral("Capture Area")); }},
        {"Capture Previous Area", [this] { choose(QStringLiteral("Capture Previous Area")); }},
        {"Capture Fullscreen", [this] { choose(QStringLiteral("Capture Fullscreen")); }},
        {"Capture Window", [this] { choose(QStringLiteral("Capture Window")); }},
        {"Scrolling Capture", [this] { choose(QStringLiteral("Scrolling Capture")); }},
        {"Self-Timer", [this] { chooseTimer(3); }},
    };
    for (const auto& [name, command] : commands) {
        CapturedOutput output;
        command();
        ASSERT_TRUE(waitUntil([] { return onlyTopLevel<QDialog>() != nullptr; })) << name;
        onlyTopLevel<QDialog>()->reject();
        ASSERT_TRUE(waitUntil([] { return onlyTopLevel<QDialog>() == nullptr; })) << name;
        QApplication::processEvents();
        EXPECT_EQ(desktop.surfaceHost.hostedCount, 0) << name << " came as far as its overlay";
        EXPECT_EQ(output.text(), QString()) << name;
    }
    EXPECT_FALSE(delegate.captureManager()->capturedImage().has_value());
}

TEST_F(CommandsTest, textCaptureAndRecordingBeginWithoutThePermissionStep) {
    desktop.screenSource.contentError = Error{Error::Kind::Unavailable, QStringLiteral("not permitted")};
    launch();
    choose(QStringLiteral("Capture Text (OCR)"));
    choose(QStringLiteral("Record Screen"));
    QApplication::processEvents();
    EXPECT_EQ(desktop.screenSource.contentRequests, 0);
    EXPECT_EQ(onlyTopLevel<QDialog>(), nullptr);
}

TEST_F(CommandsTest, captureAreaLetsTheUserDraw) {
    desktop.addScreen(1, {0, 0, 800, 600});
    launch();
    choose(QStringLiteral("Capture Area"));
    ASSERT_TRUE(waitUntil([] { return onlyChildOfTopLevels<SelectionView>() != nullptr; }));
    dragMouse(*onlyChildOfTopLevels<SelectionView>(), {10, 10}, {100, 70});
    ASSERT_TRUE(waitUntil([&] { return delegate.captureManager()->capturedImage().has_value(); }));
    EXPECT_EQ(delegate.captureManager()->capturedImage()->size(), QSizeF(90, 60));
}

TEST_F(CommandsTest, capturePreviousAreaRepeatsTheLastOne) {
    desktop.addScreen(1, {0, 0, 800, 600});
    launch();
    choose(QStringLiteral("Capture Previous Area"));
    ASSERT_TRUE(waitUntil([] { return onlyChildOfTopLevels<SelectionView>() != nullptr; }));
    dragMouse(*onlyChildOfTopLevels<SelectionView>(), {10, 10}, {100, 70});
    ASSERT_TRUE(waitUntil([&] { return desktop.pasteboard.image.has_value(); }));
    const Image first = *desktop.pasteboard.image;
    choose(QStringLiteral("Capture Previous Area"));
    ASSERT_TRUE(waitUntil([&] { return desktop.pasteboard.image && *desktop.pasteboard.image != first; }));
    EXPECT_EQ(desktop.pasteboard.image->size(), QSizeF(90, 60));
}

TEST_F(CommandsTest, captureWindowLetsTheUserPick) {
    desktop.addScreen(1, {0, 0, 800, 600});
    desktop.screenSource.addWindow(77, 1, {100, 100, 320, 200});
    launch();
    choose(QStringLiteral("Capture Window"));
    ASSERT_TRUE(waitUntil([] { return onlyChildOfTopLevels<WindowHighlightView>() != nullptr; }));
    clickMouse(*onlyChildOfTopLevels<WindowHighlightView>(), {5, 5});
    ASSERT_TRUE(waitUntil([&] { return delegate.captureManager()->capturedImage().has_value(); }));
    EXPECT_EQ(delegate.captureManager()->capturedImage()->size(), QSizeF(320, 200));
}

TEST_F(CommandsTest, allInOneOpensInTheMiddleWhereNobodyKnowsThePointersPlace) {
    desktop.addScreen(1, {0, 0, 800, 600});
    launch();
    choose(QStringLiteral("All-In-One"));
    ASSERT_TRUE(waitUntil([] { return onlyTopLevel<QMenu>() != nullptr; }));
    EXPECT_EQ(desktop.surfaceHost.popUps, (std::vector{DesktopPoint{{400, 300}}}));
}

TEST_F(CommandsTest, allInOneOpensItsMenuAndARowOfItCaptures) {
    desktop.addScreen(1, {0, 0, 800, 600});
    desktop.screens.pointer = DesktopPoint{{300, 200}};
    launch();
    choose(QStringLiteral("All-In-One"));
    ASSERT_TRUE(waitUntil([] { return onlyTopLevel<QMenu>() != nullptr; }));
    QMenu& menu = *onlyTopLevel<QMenu>();
    EXPECT_EQ(menu.actions().size(), 8);
    EXPECT_EQ(desktop.surfaceHost.popUps, (std::vector{DesktopPoint{{300, 200}}}));
    QAction* fullscreen = row(menu, QStringLiteral("Capture Fullscreen"));
    menu.hide();
    fullscreen->trigger();
    EXPECT_TRUE(waitUntil([&] { return delegate.captureManager()->capturedImage().has_value(); }));
}

TEST_F(CommandsTest, captureFullscreenCaptures) {
    desktop.addScreen(1, {0, 0, 800, 600});
    launch();
    choose(QStringLiteral("Capture Fullscreen"));
    EXPECT_TRUE(waitUntil([&] { return delegate.captureManager()->capturedImage().has_value(); }));
}

TEST_F(CommandsTest, theSelfTimerCountsAndThenLetsTheUserDrawTheArea) {
    chrome::AnimationClock::shared().hold();
    desktop.addScreen(1, {0, 0, 800, 600});
    launch();
    for (const int seconds : {3, 5, 10}) {
        desktop.pasteboard.image.reset();
        chooseTimer(seconds);
        ASSERT_TRUE(waitUntil([] { return onlyChildOfTopLevels<CountdownDigit>() != nullptr; }));
        for (int left = seconds; left > 0; --left) {
            EXPECT_EQ(onlyChildOfTopLevels<CountdownDigit>()->text(), QString::number(left));
            EXPECT_EQ(onlyChildOfTopLevels<SelectionView>(), nullptr);
            chrome::AnimationClock::shared().advance(1.01);
            QApplication::processEvents();
        }
        ASSERT_TRUE(waitUntil([] { return onlyChildOfTopLevels<SelectionView>() != nullptr; }));
        EXPECT_EQ(onlyChildOfTopLevels<CountdownDigit>(), nullptr) << "gone before the selection";
        dragMouse(*onlyChildOfTopLevels<SelectionView>(), {10, 10}, {100, 100});
        ASSERT_TRUE(waitUntil([&] { return desktop.pasteboard.image.has_value(); }));
    }
}

TEST_F(CommandsTest, theClipboardRowsAreSilentWithoutAnImage) {
    launch();
    CapturedOutput output;
    choose(QStringLiteral("Open from Clipboard"));
    choose(QStringLiteral("Pin to Screen"));
    QApplication::processEvents();
    EXPECT_EQ(output.text(), QString());
}

TEST_F(CommandsTest, pinToScreenPinsTheClipboardsImage) {
    desktop.addScreen(1, {0, 0, 800, 600});
    launch();
    desktop.pasteboard.image = picture();
    const std::size_t before = desktop.surfaceHost.surfaces.size();
    choose(QStringLiteral("Pin to Screen"));
    ASSERT_TRUE(waitUntil([&] { return desktop.surfaceHost.surfaces.size() == before + 1; }));
    EXPECT_EQ(desktop.surfaceHost.surfaces.back()->traits.level, SurfaceLevel::Pin);
}

TEST_F(CommandsTest, openFromClipboardOpensTheImageInAnEditorInFront) {
    launch();
    desktop.pasteboard.image = picture();
    CapturedOutput output;
    choose(QStringLiteral("Open from Clipboard"));
    ASSERT_TRUE(waitUntil([] { return EditorWindowController::openEditors().size() == 1; }));
    const EditorWindowController& editor = *EditorWindowController::openEditors().front();
    EXPECT_EQ(editor.image(), *desktop.pasteboard.image);
    EXPECT_TRUE(editor.window()->isVisible());
    EXPECT_TRUE(waitUntil([&] { return editor.window()->isActiveWindow(); }));
    EXPECT_EQ(output.text(), QString());
}

TEST_F(CommandsTest, anEditorFromTheClipboardStaysReferencedWhenItsWindowHasClosed) {
    launch();
    desktop.pasteboard.image = picture();
    choose(QStringLiteral("Open from Clipboard"));
    ASSERT_TRUE(waitUntil([] { return EditorWindowController::openEditors().size() == 1; }));
    const std::weak_ptr<EditorWindowController> editor = EditorWindowController::openEditors().front();
    editor.lock()->window()->close();
    ASSERT_TRUE(waitUntil([] { return EditorWindowController::openEditors().empty(); }));
    ASSERT_FALSE(editor.expired());
    EXPECT_EQ(editor.lock()->window(), nullptr) << "only the image is kept, not a window's memory";
    choose(QStringLiteral("Open from Clipboard"));
    ASSERT_TRUE(waitUntil([] { return EditorWindowController::openEditors().size() == 1; }));
    EXPECT_NE(EditorWindowController::openEditors().front(), editor.lock());
}

TEST_F(CommandsTest, whatIsNotBuiltYetSaysSoInOneLine) {
    launch();
    const std::pair<const char*, const char*> lines[] = {
        {"Scrolling Capture", "Scrolling capture isn't built yet.\n"},
        {"Capture Text (OCR)", "Text capture isn't built yet.\n"},
        {"Record Screen", "Screen recording isn't built yet.\n"},
        {"Capture History...", "The capture history window isn't built yet.\n"},
        {"Settings...", "The settings window isn't built yet.\n"},
        {"Check for Updates...", "The update check isn't built yet.\n"},
    };
    for (const auto& [title, line] : lines) {
        CapturedOutput output;
        choose(QLatin1String(title));
        QApplication::processEvents();
        EXPECT_EQ(output.text(), QLatin1String(line));
    }
}

namespace {

// The controller by itself, with features of the test's own.
class PlayedFeatures : public testing::Test {
protected:
    // Whatever is captured is delivered from the start.
    PlayedFeatures() { delivery.open(); }

    FakeDesktop desktop;
    fake::FakeStatusItem item;
    ScreenCaptureManager manager;
    CaptureDelivery delivery;
    CommandTable table{CaptureCommands::preparation()};
    CaptureCommands captures{manager, delivery};
    StatusBarController controller{item, table};
};

} // namespace

TEST_F(PlayedFeatures, whatAScrollingCaptureYieldsTakesTheRoadOfAnyCapture) {
    QImage pixels(30, 400, QImage::Format_RGB32);
    pixels.fill(Qt::darkGreen);
    const Image stitched = Image::captured(pixels);
    table.provide(CommandID::scrollingCapture,
                  [&](const CommandRequest& request) { return captures.publish(stitched, request); });
    controller.scrollingCapture();
    ASSERT_TRUE(waitUntil([&] { return manager.capturedImage().has_value(); }));
    EXPECT_EQ(manager.capturedImage(), stitched);
}

TEST_F(PlayedFeatures, aScrollingCaptureThatYieldsNothingPublishesNothing) {
    table.provide(CommandID::scrollingCapture,
                  [](const CommandRequest&) { return settled<CommandResult>(cancelled()); });
    const Outcome<CommandResult> ended = table.run(CommandID::scrollingCapture);
    ASSERT_TRUE(waitUntil([&] { return ended.isSettled(); }));
    EXPECT_FALSE(manager.capturedImage().has_value());
}

TEST_F(PlayedFeatures, recordScreenTogglesTheRecorder) {
    int toggled = 0;
    table.provide(CommandID::recordScreen, [&](const CommandRequest&) {
        ++toggled;
        return settled<CommandResult>({});
    });
    controller.recordScreen();
    EXPECT_EQ(toggled, 1);
}
