#include "app/AppDelegate.h"

#include "app/AutomaticSave.h"
#include "app/ShortcutManager.h"
#include "app/StatusIcon.h"
#include "base/Invariant.h"
#include "base/Log.h"
#include "base/Memory.h"
#include "base/SystemColors.h"
#include "capture/ScreenCaptureManager.h"
#include "history/CaptureHistory.h"
#include "panel/CapturePanelController.h"
#include "platform/Pasteboard.h"
#include "platform/ScreenAccess.h"
#include "platform/Services.h"
#include "settings/SettingsStore.h"

#include <QPointer>

namespace marrowfin::app {

using namespace capture;
using namespace history;
using namespace imaging;
using namespace panel;
using namespace platform;
using namespace settings;

AppDelegate::AppDelegate() = default;
AppDelegate::~AppDelegate() = default;

void AppDelegate::applicationDidFinishLaunching() {
    flows.start(launch());
}

Flow<> AppDelegate::launch() {
    statusItem = services().statusBar.makeItem();
    MARROWFIN_INVARIANT(statusItem != nullptr);
    manager = std::make_unique<ScreenCaptureManager>();
    controller = std::make_unique<StatusBarController>(*statusItem, *manager, makeFeatures());
    makeStatusItem();
    shortcuts = std::make_unique<ShortcutManager>(*manager);
    co_await shortcuts->registerHotKeys();
    // While the alert is up the free hot keys work; what they capture waits here for the subscription below.
    co_await shortcuts->reportFailures();
    // The answer is tested for real before each capture.
    services().screenAccess.request();
    manager->observeCapturedImage(this, [this](const std::optional<Image>& image) { receive(image); });
    Q_EMIT launched();
}

void AppDelegate::makeStatusItem() {
    if (!statusItem->hasButton())
        return;
    statusItem->setIcon([](int pixels, bool darkTray) {
        return statusIcon(
            pixels, systemColor(SystemColor::controlText, darkTray ? ColorScheme::Dark : ColorScheme::Light));
    });
    statusItem->setToolTip(QStringLiteral("Marrowfin"));
    statusItem->setAction([this](StatusItemButton) { controller->showMenu(); });
}

void AppDelegate::receive(const std::optional<Image>& image) {
    if (!image)
        return;
    waiting.push_back(*image);
    if (!draining)
        flows.start(drainCaptures());
}

Flow<> AppDelegate::drainCaptures() {
    draining = true;
    while (!waiting.empty()) {
        const Image image = waiting.front();
        waiting.pop_front();
        // One encoding serves the history file, the clipboard and drag-out; it began when the frame arrived,
        // and the history's own queue waits for it: what keeps the main thread busy doesn't delay the file.
        co_await CaptureHistory::shared().saveAsync(image);
        co_await routeCapture(image);
        Q_EMIT captureRouted();
    }
    draining = false;
    giveFreeMemoryBackWhenCalm();
}

Flow<> AppDelegate::routeCapture(Image image) {
    services().pasteboard.clearContents();
    const Result<void> written = co_await services().pasteboard.writeImage(image);
    // A desktop that went away ends the program, and says so itself.
    if (!written && written.error().kind != Error::Kind::Dropped)
        logLine(QStringLiteral("[Marrowfin] clipboard: ") + written.error().message);
    const PostCaptureAction action = SettingsStore::shared().postCaptureAction();
    if (action == PostCaptureAction::copyToClipboard)
        co_return;
    if (action == PostCaptureAction::saveToFile)
        co_await saveCaptureToFile(image);
    CapturePanelController::shared().present(image, [self = QPointer(this)](const Image& saved) {
        if (self)
            self->flows.start(saveCaptureToFile(saved));
    });
}

void AppDelegate::applicationWillTerminate() {
    if (shortcuts)
        shortcuts->unregister();
}

} // namespace marrowfin::app
