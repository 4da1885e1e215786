#include "app/ShortcutManager.h"

#include "base/Log.h"
#include "chrome/Alert.h"
#include "commands/CommandTable.h"
#include "platform/Desktop.h"
#include "platform/Services.h"

namespace marrowfin::app {

using namespace commands;
using namespace platform;

ShortcutManager::ShortcutManager(CommandTable& commands) : table(commands) {}

Flow<> ShortcutManager::registerHotKeys() {
    if (eventHandler || !references.empty())
        co_return;
    failed.clear();
    const HotKeyHandlerInstallation installed =
        services().hotKeys.installHandler([this](HotKeyID id) { return handle(id); });
    if (installed.status != hotKeyNoError) {
        for (const HotKey& hotKey : hotKeys())
            failed.emplace_back(hotKey, installed.status);
        co_return;
    }
    eventHandler = installed.reference;
    // All are asked for before the first is awaited: a desktop that asks the user asks once.
    std::vector<Outcome<HotKeyRegistration>> answers;
    for (const HotKey& hotKey : hotKeys())
        answers.push_back(services().hotKeys.registerHotKey({hotKey.keyCode,
                                                             hotKeyModifiers,
                                                             {hotKeySignature, hotKey.id},
                                                             hotKey.purpose,
                                                             installed.reference}));
    for (std::size_t i = 0; i < answers.size(); ++i) {
        const Result<HotKeyRegistration> answer = co_await answers[i];
        const HotKeyRegistration registration = answer.value_or(HotKeyRegistration{hotKeyNotHandled, 0});
        if (registration.reference != 0 && eventHandler != installed.reference)
            services().hotKeys.unregisterHotKey(registration.reference); // unregistered meanwhile
        else if (registration.status == hotKeyNoError && registration.reference != 0)
            references.push_back(registration.reference);
        else
            failed.emplace_back(hotKeys()[i], registration.status);
    }
}

Flow<> ShortcutManager::reportFailures() {
    if (failed.empty())
        co_return;
    QStringList lines;
    for (const auto& [hotKey, status] : failed)
        lines << QStringLiteral("%1 (%2) - error %3").arg(hotKey.displayName, hotKey.purpose).arg(status);
    chrome::AlertSpec alert;
    alert.messageText = QStringLiteral("Some Shortcuts Are Taken");
    alert.informativeText =
        QStringLiteral(
            "Another app already owns these key combinations, so Marrowfin could not register them:\n\n") +
        lines.join(u'\n') +
        QStringLiteral(
            "\n\nmacOS's own screenshot shortcuts use these keys by default. Free them under System "
            "Settings > Keyboard > Keyboard Shortcuts > Screenshots, then relaunch Marrowfin.") +
        // The texts above stand as everywhere; this is what they mean here.
        QStringLiteral("\n\nOn this desktop Cmd is the Super key, and keyboard shortcuts are under %1.")
            .arg(services().hotKeys.settingsPlace());
    alert.buttons = {QStringLiteral("Open Keyboard Settings"), QStringLiteral("Not Now")};
    const Result<int> response = co_await chrome::runAlert(alert);
    if (response != chrome::alertFirstButton)
        co_return;
    const Result<void> opened = co_await services().opener.openSettings(SettingsPage::Keyboard);
    if (!opened)
        printLine(opened.error().message);
}

void ShortcutManager::unregister() {
    for (const HotKeyRef reference : references)
        services().hotKeys.unregisterHotKey(reference);
    references.clear();
    if (eventHandler) {
        services().hotKeys.removeHandler(*eventHandler);
        eventHandler.reset();
    }
}

HotKeyStatus ShortcutManager::handle(HotKeyID id) {
    if (id.signature != hotKeySignature)
        return hotKeyNotHandled;
    dispatch(id.id);
    return hotKeyNoError;
}

void ShortcutManager::dispatch(std::uint32_t id) {
    for (const HotKey& hotKey : hotKeys()) {
        if (hotKey.id != id)
            continue;
        if (onHotKey) {
            onHotKey(hotKey);
            return;
        }
        // Straight into the flow, without the permission step of the menu's commands.
        table.run(commandOf(hotKey), {}, PermissionStep::Skipped);
        return;
    }
}

} // namespace marrowfin::app
