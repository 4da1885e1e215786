#include "app/StatusBarController.h"

#include "capture/ScreenCaptureManager.h"
#include "capture/SelfTimerOverlay.h"
#include "editor/EditorWindowController.h"
#include "platform/Pasteboard.h"
#include "platform/Services.h"

#include <QApplication>
#include <QCursor>

namespace marrowfin::app {

using namespace capture;
using namespace editor;
using namespace imaging;

StatusBarController::StatusBarController(platform::StatusItem& item, ScreenCaptureManager& manager,
                                         Features features)
    : statusItem(item), captureManager(manager), has(std::move(features)) {}

StatusBarController::~StatusBarController() {
    delete openMenu;
}

MenuActions StatusBarController::actions() {
    MenuActions made;
    made.captureAllInOne = [this] { captureAllInOne(); };
    made.captureArea = [this] { captureArea(); };
    made.capturePreviousArea = [this] { capturePreviousArea(); };
    made.captureFullscreen = [this] { captureFullscreen(); };
    made.captureWindow = [this] { captureWindow(); };
    made.scrollingCapture = [this] { scrollingCapture(); };
    made.selfTimer = [this](int seconds) { selfTimerAction(seconds); };
    made.captureText = [this] { captureText(); };
    made.openFromClipboard = [this] { openFromClipboard(); };
    made.pinToScreen = [this] { pinToScreen(); };
    made.recordScreen = [this] { recordScreen(); };
    made.showHistory = [this] { showHistory(); };
    made.openSettings = [this] { openSettings(); };
    made.checkForUpdates = [this] { checkForUpdates(); };
    made.quit = [this] { quit(); };
    return made;
}

void StatusBarController::showMenu() {
    popUp(makeMainMenu(actions(), has.recorder.get()), Place::AtItem);
}

void StatusBarController::captureAllInOne() {
    popUp(makeAllInOneMenu(actions(), has.recorder.get()), Place::AtPointer);
}

void StatusBarController::popUp(std::unique_ptr<QMenu> menu, Place place) {
    // A second click while a menu is open replaces it.
    if (openMenu)
        openMenu->close();
    QMenu* shown = menu.release();
    openMenu = shown;
    // Nothing is cached: a menu goes when it has closed, after its action has run.
    QObject::connect(shown, &QMenu::aboutToHide, shown, &QObject::deleteLater);
    if (place == Place::AtItem)
        statusItem.popUp(*shown);
    else
        shown->popup(QCursor::pos());
}

Flow<> StatusBarController::permitted(Outcome<void> (ScreenCaptureManager::*operation)()) {
    const bool granted = co_await ScreenCaptureManager::screenPermissionGranted();
    if (granted)
        co_await (captureManager.*operation)();
}

Outcome<void> StatusBarController::captureArea() {
    return flows.start(permitted(&ScreenCaptureManager::captureArea));
}
Outcome<void> StatusBarController::capturePreviousArea() {
    return flows.start(permitted(&ScreenCaptureManager::capturePreviousArea));
}
Outcome<void> StatusBarController::captureFullscreen() {
    return flows.start(permitted(&ScreenCaptureManager::captureFullscreen));
}
Outcome<void> StatusBarController::captureWindow() {
    return flows.start(permitted(&ScreenCaptureManager::captureWindow));
}
Outcome<void> StatusBarController::scrollingCapture() {
    return flows.start(scroll());
}
Outcome<void> StatusBarController::selfTimerAction(int seconds) {
    return flows.start(countDownAndCapture(seconds));
}
Outcome<void> StatusBarController::captureText() {
    return flows.start(has.textCapture->start());
}
Outcome<void> StatusBarController::openFromClipboard() {
    return flows.start(openImageFromClipboard());
}
Outcome<void> StatusBarController::pinToScreen() {
    return flows.start(pinImageFromClipboard());
}
Outcome<void> StatusBarController::recordScreen() {
    return has.recorder ? flows.start(has.recorder->toggle()) : settled<void>({});
}

Flow<> StatusBarController::scroll() {
    const bool granted = co_await ScreenCaptureManager::screenPermissionGranted();
    if (!granted)
        co_return;
    const std::optional<Image> stitched = co_await has.scrolling->run();
    // The same road as any capture.
    if (stitched)
        captureManager.setCapturedImage(*stitched);
}

Flow<> StatusBarController::countDownAndCapture(int seconds) {
    const bool granted = co_await ScreenCaptureManager::screenPermissionGranted();
    if (!granted)
        co_return;
    SelfTimerOverlay overlay;
    co_await overlay.run(seconds);
    co_await captureManager.captureArea();
}

Flow<> StatusBarController::openImageFromClipboard() {
    const Result<std::optional<Image>> image = co_await platform::services().pasteboard.readImage();
    if (!image || !*image)
        co_return;
    editorWindows.push_back(EditorWindowController::make(**image));
    editorWindows.back()->showWindow();
}

Flow<> StatusBarController::pinImageFromClipboard() {
    const Result<std::optional<Image>> image = co_await platform::services().pasteboard.readImage();
    if (image && *image)
        has.pins->open(**image);
}

void StatusBarController::showHistory() {
    has.history->show();
}
void StatusBarController::openSettings() {
    has.settings->show();
}
void StatusBarController::checkForUpdates() {
    has.updates->show();
}
void StatusBarController::quit() {
    QApplication::quit();
}

} // namespace marrowfin::app
