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

QCoro::Task<> StatusBarController::captureArea() {
    const bool granted = co_await ScreenCaptureManager::screenPermissionGranted();
    if (granted)
        co_await captureManager.captureArea();
}

QCoro::Task<> StatusBarController::capturePreviousArea() {
    const bool granted = co_await ScreenCaptureManager::screenPermissionGranted();
    if (granted)
        co_await captureManager.capturePreviousArea();
}

QCoro::Task<> StatusBarController::captureFullscreen() {
    const bool granted = co_await ScreenCaptureManager::screenPermissionGranted();
    if (granted)
        co_await captureManager.captureFullscreen();
}

QCoro::Task<> StatusBarController::captureWindow() {
    const bool granted = co_await ScreenCaptureManager::screenPermissionGranted();
    if (granted)
        co_await captureManager.captureWindow();
}

QCoro::Task<> StatusBarController::scrollingCapture() {
    const bool granted = co_await ScreenCaptureManager::screenPermissionGranted();
    if (!granted)
        co_return;
    const std::optional<Image> stitched = co_await has.scrolling->run();
    // The same road as any capture.
    if (stitched)
        captureManager.setCapturedImage(*stitched);
}

QCoro::Task<> StatusBarController::selfTimerAction(int seconds) {
    const bool granted = co_await ScreenCaptureManager::screenPermissionGranted();
    if (!granted)
        co_return;
    SelfTimerOverlay overlay;
    co_await overlay.run(seconds);
    co_await captureManager.captureArea();
}

QCoro::Task<> StatusBarController::captureText() {
    co_await has.textCapture->start();
}

QCoro::Task<> StatusBarController::openFromClipboard() {
    const Result<std::optional<Image>> image = co_await platform::services().pasteboard.readImage();
    if (!image || !*image)
        co_return;
    editorWindows.push_back(EditorWindowController::make(**image));
    editorWindows.back()->showWindow();
}

QCoro::Task<> StatusBarController::pinToScreen() {
    const Result<std::optional<Image>> image = co_await platform::services().pasteboard.readImage();
    if (image && *image)
        has.pins->open(**image);
}

QCoro::Task<> StatusBarController::recordScreen() {
    if (has.recorder)
        co_await has.recorder->toggle();
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
