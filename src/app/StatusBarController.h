// The program's menu and the dispatcher of its commands. Lives as long as the process; main thread. Each
// command that may wait is a flow of its own: commands don't exclude each other.
#pragma once

#include "app/CaptureMenu.h"
#include "app/Features.h"
#include "platform/StatusItem.h"

#include <QCoro/QCoroTask>
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
    QCoro::Task<> captureArea();
    QCoro::Task<> capturePreviousArea();
    QCoro::Task<> captureFullscreen();
    QCoro::Task<> captureWindow();
    QCoro::Task<> scrollingCapture();
    QCoro::Task<> selfTimerAction(int seconds);
    QCoro::Task<> captureText();
    QCoro::Task<> openFromClipboard();
    QCoro::Task<> pinToScreen();
    QCoro::Task<> recordScreen();
    void showHistory();
    void openSettings();
    void checkForUpdates();
    void quit();

private:
    MenuActions actions();
    enum class Place { AtItem, AtPointer };
    void popUp(std::unique_ptr<QMenu> menu, Place place);

    platform::StatusItem& statusItem;
    capture::ScreenCaptureManager& captureManager;
    Features has;
    // Opened from the clipboard; an entry stays when its window closes.
    std::vector<std::shared_ptr<editor::EditorWindowController>> editorWindows;
    QPointer<QMenu> openMenu;
};

} // namespace marrowfin::app
