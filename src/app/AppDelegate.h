// Builds the long-lived objects in their fixed order, connects captures to what happens to them, and gives
// the hot keys back at the end. One per process, in the normal mode only; main thread.
#pragma once

#include "app/CaptureDelivery.h"
#include "base/Flow.h"
#include "imaging/Image.h"
#include "platform/StatusItem.h"

#include <QObject>
#include <memory>

namespace marrowfin::capture {
class ScreenCaptureManager;
}

namespace marrowfin::commands {
class CommandTable;
}

namespace marrowfin::app {

class CaptureCommands;
class ShortcutManager;
class StatusBarController;

class AppDelegate : public QObject {
    Q_OBJECT
public:
    AppDelegate();
    ~AppDelegate() override;

    // Called once the main loop runs. The steps behind the hot-key alert wait for its answer; everything
    // before them works already.
    void applicationDidFinishLaunching();
    void applicationWillTerminate();

    // Clipboard first, then what the settings say. One capture at a time.
    void routeCapture(const imaging::Image& image);
    // What still waits for its turn, at the end of the program.
    void finishCaptures(Clipboard clipboard) { delivery.finish(clipboard); }

    capture::ScreenCaptureManager* captureManager() const { return manager.get(); }
    commands::CommandTable* commandTable() const { return table.get(); }
    StatusBarController* statusBarController() const { return controller.get(); }
    ShortcutManager* shortcutManager() const { return shortcuts.get(); }

Q_SIGNALS:
    // The last step of the launch is done.
    void launched();
    // A capture has been through history and routing.
    void captureRouted();

private:
    Flow<> launch();
    void makeCommands();
    void makeStatusItem();

    std::unique_ptr<platform::StatusItem> statusItem;
    std::unique_ptr<capture::ScreenCaptureManager> manager;
    CaptureDelivery delivery;
    std::unique_ptr<CaptureCommands> captureCommands;
    std::unique_ptr<commands::CommandTable> table;
    std::unique_ptr<StatusBarController> controller;
    std::unique_ptr<ShortcutManager> shortcuts;
    FlowScope flows;
};

} // namespace marrowfin::app
