// Twenty starts and ends in every state that a program can be left in. What was built too late, freed twice
// or never shows under the address sanitizer.
#include "RuntimeFixture.h"

#include "app/StatusBarController.h"
#include "capture/CountdownDigit.h"
#include "capture/ScreenCaptureManager.h"
#include "capture/SelectionView.h"
#include "capture/WindowHighlightView.h"
#include "chrome/Alert.h"
#include "editor/EditorWindowController.h"
#include "panel/CapturePanelController.h"
#include "platform/HotKeyService.h"
#include "support/Input.h"

#include <QMenu>
#include <QMessageBox>

using namespace marrowfin;
using namespace app;
using namespace capture;
using namespace editor;
using namespace panel;
using namespace marrowfin::testsupport;
using marrowfin::fake::waitUntil;

namespace {

class StartsAndEnds : public RuntimeFixture {
protected:
    void liveTwentyTimes(const Story& story) {
        for (int n = 0; n < 20; ++n) {
            EXPECT_EQ(live(story), 0);
            if (HasFatalFailure())
                return;
        }
    }
    void putUpACard() {
        waitForLaunch();
        runtime->appDelegate()->captureManager()->setCapturedImage(picture());
        ASSERT_TRUE(waitUntil([] { return CapturePanelController::shared().panels().size() == 1; }));
    }
    StatusBarController& commands() { return *runtime->appDelegate()->statusBarController(); }
};

} // namespace

TEST_F(StartsAndEnds, atRest) {
    liveTwentyTimes([&] { waitForLaunch(); });
}

TEST_F(StartsAndEnds, beforeTheLaunchBegan) {
    liveTwentyTimes([] {});
}

TEST_F(StartsAndEnds, withACardUp) {
    liveTwentyTimes([&] { putUpACard(); });
}

TEST_F(StartsAndEnds, withACardOnItsWayOut) {
    liveTwentyTimes([&] {
        putUpACard();
        CapturePanelController::shared().dismiss(CapturePanelController::shared().panels().front(),
                                                 Animated::Yes);
    });
}

TEST_F(StartsAndEnds, withAnEditorOpenedFromACard) {
    liveTwentyTimes([&] {
        putUpACard();
        CapturePanelController::shared().openEditor(picture());
        ASSERT_TRUE(waitUntil([] { return EditorWindowController::openEditors().size() == 1; }));
    });
}

TEST_F(StartsAndEnds, withAnEditorOpenedFromTheClipboard) {
    liveTwentyTimes([&] {
        waitForLaunch();
        desktop->pasteboard.image = picture();
        commands().openFromClipboard();
        ASSERT_TRUE(waitUntil([] { return EditorWindowController::openEditors().size() == 1; }));
    });
}

TEST_F(StartsAndEnds, withAPin) {
    liveTwentyTimes([&] {
        waitForLaunch();
        desktop->pasteboard.image = picture();
        const std::size_t before = desktop->surfaceHost.surfaces.size();
        commands().pinToScreen();
        ASSERT_TRUE(waitUntil([&] { return desktop->surfaceHost.surfaces.size() == before + 1; }));
    });
}

TEST_F(StartsAndEnds, withTheAlertAboutTakenKeysOpen) {
    liveTwentyTimes([&] {
        desktop->hotKeys.taken = {platform::keyCode3};
        ASSERT_TRUE(waitUntil([] { return onlyTopLevel<QMessageBox>() != nullptr; }));
    });
}

TEST_F(StartsAndEnds, withThePermissionAlertOpen) {
    liveTwentyTimes([&] {
        waitForLaunch();
        desktop->screenSource.contentError = Error{Error::Kind::Unavailable, QStringLiteral("not permitted")};
        commands().captureArea();
        ASSERT_TRUE(waitUntil([] { return onlyTopLevel<QMessageBox>() != nullptr; }));
    });
}

TEST_F(StartsAndEnds, withAnAreaOverlayUp) {
    liveTwentyTimes([&] {
        waitForLaunch();
        commands().captureArea();
        ASSERT_TRUE(waitUntil([] { return onlyChildOfTopLevels<SelectionView>() != nullptr; }));
    });
}

TEST_F(StartsAndEnds, withAWindowSelectorUp) {
    liveTwentyTimes([&] {
        waitForLaunch();
        desktop->screenSource.addWindow(77, 1, {100, 100, 320, 200});
        commands().captureWindow();
        ASSERT_TRUE(waitUntil([] { return onlyChildOfTopLevels<WindowHighlightView>() != nullptr; }));
    });
}

TEST_F(StartsAndEnds, withACountdownRunning) {
    liveTwentyTimes([&] {
        waitForLaunch();
        commands().selfTimerAction(10);
        ASSERT_TRUE(waitUntil([] { return onlyChildOfTopLevels<CountdownDigit>() != nullptr; }));
    });
}

TEST_F(StartsAndEnds, withTheMenuOpen) {
    liveTwentyTimes([&] {
        waitForLaunch();
        commands().captureAllInOne();
        ASSERT_TRUE(waitUntil([] { return onlyTopLevel<QMenu>() != nullptr; }));
    });
}

TEST_F(StartsAndEnds, withACaptureOnItsWay) {
    liveTwentyTimes([&] {
        waitForLaunch();
        desktop->surfaceHost.holdBarriers = true;
        runtime->appDelegate()->captureManager()->captureFullscreen();
        runtime->appDelegate()->captureManager()->setCapturedImage(picture());
        // For the display and for the rectangle; the grab waits behind the barrier.
        ASSERT_TRUE(waitUntil([&] { return desktop->screenSource.contentRequests == 2; }));
    });
}

namespace {

// Shows an alert, which nobody answers.
class WaitingMode : public Mode {
public:
    Flow<> run(Runtime*) override {
        chrome::AlertSpec alert;
        alert.messageText = QStringLiteral("waiting");
        alert.buttons = {QStringLiteral("OK")};
        co_await chrome::runAlert(alert);
    }
};

} // namespace

TEST_F(StartsAndEnds, withAModeRunning) {
    options.makeMode = [](LaunchMode) { return std::make_unique<WaitingMode>(); };
    for (int n = 0; n < 20; ++n)
        EXPECT_EQ(live(
                      [&] {
                          ASSERT_TRUE(waitUntil([] { return onlyTopLevel<QMessageBox>() != nullptr; }));
                          EXPECT_EQ(runtime->appDelegate(), nullptr);
                          EXPECT_TRUE(desktop->hotKeys.held.empty());
                          EXPECT_EQ(desktop->statusBar.itemsMade, 0);
                          runtime->finish(7);
                      },
                      {QStringLiteral("--self-test")}),
                  7);
}
