// The program's menu and the dispatcher of its commands. Lives as long as the process; main thread. Each
// command that may wait is a flow of its own: commands don't exclude each other.
#pragma once

#include "app/CaptureMenu.h"
#include "app/Features.h"
#include "base/Flow.h"
#include "platform/StatusItem.h"

#include <QMenu>
#include <QPointer>
#include <memory>
#include <vector>

namespace marrowfin::capture {
class ScreenCaptureManager;
}

namespace marrowfin::editor {
class EditorWindowController;
}

namespace marrowfin::app {

class StatusBarController {
public:
    StatusBarController(platform::StatusItem& statusItem, capture::ScreenCaptureManager& captureManager,
                        Features features);
    ~StatusBarController();

    void showMenu();
    void captureAllInOne();
    // What they answer tells only when it is over.
    Outcome<void> captureArea();
    Outcome<void> capturePreviousArea();
    Outcome<void> captureFullscreen();
    Outcome<void> captureWindow();
    Outcome<void> scrollingCapture();
    Outcome<void> selfTimerAction(int seconds);
    Outcome<void> captureText();
    Outcome<void> openFromClipboard();
    Outcome<void> pinToScreen();
    Outcome<void> recordScreen();
    void showHistory();
    void openSettings();
    void checkForUpdates();
    void quit();

private:
    MenuActions actions();
    Flow<> permitted(Outcome<void> (capture::ScreenCaptureManager::*operation)());
    Flow<> scroll();
    Flow<> countDownAndCapture(int seconds);
    Flow<> openImageFromClipboard();
    Flow<> pinImageFromClipboard();
    enum class Place { AtItem, AtPointer };
    void popUp(std::unique_ptr<QMenu> menu, Place place);

    platform::StatusItem& statusItem;
    capture::ScreenCaptureManager& captureManager;
    Features has;
    // Opened from the clipboard; an entry stays when its window closes.
    std::vector<std::shared_ptr<editor::EditorWindowController>> editorWindows;
    QPointer<QMenu> openMenu;
    FlowScope flows;
};

} // namespace marrowfin::app
