#include "app/StatusBarController.h"

#include "app/CaptureMenu.h"
#include "app/Introductions.h"
#include "editor/EditorWindowController.h"
#include "pin/PinManager.h"
#include "platform/Pasteboard.h"
#include "platform/Screens.h"
#include "platform/Services.h"
#include "platform/SurfaceHost.h"

#include <QApplication>

namespace marrowfin::app {

using namespace commands;
using namespace editor;
using namespace imaging;

StatusBarController::StatusBarController(platform::StatusItem& item, CommandTable& commands)
    : statusItem(item), table(commands) {
    provideCommands();
}

StatusBarController::~StatusBarController() {
    delete openMenu;
}

void StatusBarController::provideCommands() {
    table.provide(CommandID::captureAllInOne, [this](const CommandRequest&) {
        popUp(makeMenu(Menu::AllInOne, table), Place::AtPointer);
        return settled<CommandResult>({});
    });
    table.provide(CommandID::openFromClipboard, [this](const CommandRequest&) {
        return flows.start(withClipboardImage(&StatusBarController::openEditor));
    });
    table.provide(CommandID::pinToScreen, [this](const CommandRequest&) {
        return flows.start(withClipboardImage(&StatusBarController::pin));
    });
    table.provide(CommandID::quit, [](const CommandRequest&) {
        QApplication::quit();
        return settled<CommandResult>({});
    });
}

void StatusBarController::showMenu() {
    popUp(makeMenu(Menu::Main, table), Place::AtItem);
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
        flows.start(popUpAtPointer(shown));
}

Flow<> StatusBarController::popUpAtPointer(QPointer<QMenu> menu) {
    const Result<DesktopPoint> pointer = co_await platform::services().screens.pointerLocation();
    const std::optional<platform::Screen> screen = platform::services().screens.mainScreen();
    if (menu && pointer)
        platform::services().surfaceHost.popUp(*menu, *pointer);
    else if (menu && screen)
        platform::services().surfaceHost.popUp(*menu, DesktopPoint{screen->visibleFrame.rect.center()});
}

// Nothing happens, in silence, where the clipboard holds no image.
Flow<Result<CommandResult>> StatusBarController::withClipboardImage(UseOfImage use) {
    const Result<std::optional<Image>> image = co_await platform::services().pasteboard.readImage();
    if (!image)
        co_return tl::unexpected(image.error());
    if (!*image)
        co_return failure(QStringLiteral("The clipboard holds no image."));
    (this->*use)(**image);
    co_return CommandResult{};
}

void StatusBarController::openEditor(const Image& image) {
    editorWindows.push_back(makeEditor(image));
    editorWindows.back()->showWindow();
}

void StatusBarController::pin(const Image& image) {
    pin::PinManager::shared().pin(image);
}

void StatusBarController::captureAllInOne() {
    table.run(CommandID::captureAllInOne);
}
void StatusBarController::captureArea() {
    table.run(CommandID::captureArea);
}
void StatusBarController::capturePreviousArea() {
    table.run(CommandID::capturePreviousArea);
}
void StatusBarController::captureFullscreen() {
    table.run(CommandID::captureFullscreen);
}
void StatusBarController::captureWindow() {
    table.run(CommandID::captureWindow);
}
void StatusBarController::scrollingCapture() {
    table.run(CommandID::scrollingCapture);
}
void StatusBarController::selfTimerAction(int seconds) {
    table.run(CommandID::selfTimer, {{}, std::chrono::seconds(seconds)});
}
void StatusBarController::captureText() {
    table.run(CommandID::captureText);
}
void StatusBarController::openFromClipboard() {
    table.run(CommandID::openFromClipboard);
}
void StatusBarController::pinToScreen() {
    table.run(CommandID::pinToScreen);
}
void StatusBarController::recordScreen() {
    table.run(CommandID::recordScreen);
}
void StatusBarController::showHistory() {
    table.run(CommandID::showHistory);
}
void StatusBarController::openSettings() {
    table.run(CommandID::openSettings);
}
void StatusBarController::checkForUpdates() {
    table.run(CommandID::checkForUpdates);
}
void StatusBarController::quit() {
    table.run(CommandID::quit);
}

} // namespace marrowfin::app
