#include "app/AppDelegate.h"

#include "app/CaptureCommands.h"
#include "app/Introductions.h"
#include "app/ShortcutManager.h"
#include "app/StatusBarController.h"
#include "app/StatusIcon.h"
#include "base/Invariant.h"
#include "base/SystemColors.h"
#include "platform/ScreenAccess.h"
#include "platform/Services.h"

namespace marrowfin::app {

using namespace capture;
using namespace commands;
using namespace imaging;
using namespace platform;

AppDelegate::AppDelegate() {
    connect(&delivery, &CaptureDelivery::captureRouted, this, &AppDelegate::captureRouted);
}
AppDelegate::~AppDelegate() = default;

void AppDelegate::applicationDidFinishLaunching() {
    flows.start(launch());
}

Flow<> AppDelegate::launch() {
    statusItem = services().statusBar.makeItem();
    MARROWFIN_INVARIANT(statusItem != nullptr);
    manager = std::make_unique<ScreenCaptureManager>();
    // Everything that is captured from now on is kept in order; the last step of the launch lets it go on.
    manager->observeCapturedImage(&delivery, [this](const std::optional<Image>& image) {
        if (image)
            delivery.receive(*image);
    });
    makeCommands();
    makeStatusItem();
    introduceCards();
    shortcuts = std::make_unique<ShortcutManager>(*table);
    co_await shortcuts->registerHotKeys();
    // While the alert is up the free hot keys work already.
    co_await shortcuts->reportFailures();
    // The answer is tested for real before each capture.
    services().screenAccess.request();
    delivery.open();
    Q_EMIT launched();
}

// The table gets its runs from those who own what they need. What isn't provided says that it isn't built
// yet.
void AppDelegate::makeCommands() {
    table = std::make_unique<CommandTable>(CaptureCommands::preparation());
    captureCommands = std::make_unique<CaptureCommands>(*manager, delivery);
    captureCommands->provideTo(*table);
    controller = std::make_unique<StatusBarController>(*statusItem, *table);
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

void AppDelegate::routeCapture(const Image& image) {
    flows.start(delivery.route(image, QString()));
}

void AppDelegate::applicationWillTerminate() {
    if (shortcuts)
        shortcuts->unregister();
}

} // namespace marrowfin::app
