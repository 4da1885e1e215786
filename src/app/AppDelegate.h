// Builds the long-lived objects in their fixed order, connects captures to what happens to them, and gives
// the hot keys back at the end. One per process, in the normal mode only; main thread.
#pragma once

#include "app/StatusBarController.h"
#include "base/Flow.h"
#include "imaging/Image.h"

#include <QObject>
#include <deque>
#include <memory>

namespace marrowfin::capture {
class ScreenCaptureManager;
}

namespace marrowfin::app {

class ShortcutManager;

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
    Flow<> routeCapture(imaging::Image image);

    capture::ScreenCaptureManager* captureManager() const { return manager.get(); }
    StatusBarController* statusBarController() const { return controller.get(); }
    ShortcutManager* shortcutManager() const { return shortcuts.get(); }

Q_SIGNALS:
    // The last step of the launch is done.
    void launched();
    // A capture has been through history and routing.
    void captureRouted();

private:
    Flow<> launch();
    void makeStatusItem();
    void receive(const std::optional<imaging::Image>& image);
    Flow<> drainCaptures();

    std::unique_ptr<platform::StatusItem> statusItem;
    std::unique_ptr<capture::ScreenCaptureManager> manager;
    std::unique_ptr<StatusBarController> controller;
    std::unique_ptr<ShortcutManager> shortcuts;
    std::deque<imaging::Image> waiting; // captures on their way to history and routing
    bool draining = false;
    FlowScope flows;
};

} // namespace marrowfin::app
