// The program's menu and its operations, each of which runs its command of the table. Lives as long as the
// process; main thread.
#pragma once

#include "base/Flow.h"
#include "commands/CommandTable.h"
#include "imaging/Image.h"
#include "platform/StatusItem.h"

#include <QMenu>
#include <QPointer>
#include <memory>
#include <vector>

namespace marrowfin::editor {
class EditorWindowController;
}

namespace marrowfin::app {

class StatusBarController {
public:
    // Provides the table with what is the controller's own: the second menu, the clipboard's image, the end.
    StatusBarController(platform::StatusItem& statusItem, commands::CommandTable& table);
    ~StatusBarController();

    void showMenu();
    void captureAllInOne();
    void captureArea();
    void capturePreviousArea();
    void captureFullscreen();
    void captureWindow();
    void scrollingCapture();
    void selfTimerAction(int seconds);
    void captureText();
    void openFromClipboard();
    void pinToScreen();
    void recordScreen();
    void showHistory();
    void openSettings();
    void checkForUpdates();
    void quit();

private:
    using UseOfImage = void (StatusBarController::*)(const imaging::Image& image);
    void provideCommands();
    Flow<Result<commands::CommandResult>> withClipboardImage(UseOfImage use);
    void openEditor(const imaging::Image& image);
    void pin(const imaging::Image& image);
    enum class Place { AtItem, AtPointer };
    void popUp(std::unique_ptr<QMenu> menu, Place place);
    // In the middle of the main screen where nobody knows the pointer's place.
    static Flow<> popUpAtPointer(QPointer<QMenu> menu);

    platform::StatusItem& statusItem;
    commands::CommandTable& table;
    // Opened from the clipboard; an entry stays when its window closes.
    std::vector<std::shared_ptr<editor::EditorWindowController>> editorWindows;
    QPointer<QMenu> openMenu;
    FlowScope flows;
};

} // namespace marrowfin::app
