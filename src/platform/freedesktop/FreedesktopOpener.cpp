#include "platform/freedesktop/FreedesktopOpener.h"

#include "platform/dbus/FileManagerProxy.h"
#include "platform/dbus/SessionBus.h"

#include <QApplication>
#include <QDBusPendingCallWatcher>
#include <QDesktopServices>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>

namespace marrowfin::freedesktop {

namespace {

Result<void> start(QStringList command) {
    const QString program = QStandardPaths::findExecutable(command.takeFirst());
    if (program.isEmpty() || !QProcess::startDetached(program, command))
        return unavailable(
            QStringLiteral("The keyboard settings of this desktop can't be opened from here."));
    return {};
}

} // namespace

QStringList keyboardSettingsCommand(const QString& currentDesktop) {
    // XDG_CURRENT_DESKTOP is a list, the most particular name first.
    for (const QString& name : currentDesktop.toLower().split(u':', Qt::SkipEmptyParts)) {
        if (name == QLatin1String("gnome") || name == QLatin1String("unity") ||
            name == QLatin1String("budgie"))
            return {QStringLiteral("gnome-control-center"), QStringLiteral("keyboard")};
        if (name == QLatin1String("kde"))
            return {QStringLiteral("systemsettings"), QStringLiteral("kcm_keys")};
        if (name == QLatin1String("xfce"))
            return {QStringLiteral("xfce4-keyboard-settings")};
        if (name == QLatin1String("mate"))
            return {QStringLiteral("mate-keybinding-properties")};
        if (name == QLatin1String("x-cinnamon") || name == QLatin1String("cinnamon"))
            return {QStringLiteral("cinnamon-settings"), QStringLiteral("keyboard")};
        if (name == QLatin1String("lxqt"))
            return {QStringLiteral("lxqt-config-globalkeyshortcuts")};
    }
    return {};
}

Outcome<void> FreedesktopOpener::openUrl(const QUrl& url) {
    if (QDesktopServices::openUrl(url))
        return settled<void>({});
    return settled<void>(
        unavailable(QStringLiteral("No program on this desktop opens %1.").arg(url.toDisplayString())));
}

Outcome<void> FreedesktopOpener::openSettings(platform::SettingsPage page) {
    if (page == platform::SettingsPage::ScreenRecording)
        return settled<void>(
            unavailable(QStringLiteral("This desktop has no settings for screen recording.")));
    const QStringList command = keyboardSettingsCommand(qEnvironmentVariable("XDG_CURRENT_DESKTOP"));
    if (command.isEmpty())
        return settled<void>(unavailable(
            QStringLiteral("This desktop has no keyboard settings that Marrowfin knows how to open.")));
    return settled<void>(start(command));
}

Outcome<void> FreedesktopOpener::reveal(const QString& path) {
    FileManagerProxy files(QStringLiteral("org.freedesktop.FileManager1"),
                           QStringLiteral("/org/freedesktop/FileManager1"), dbus::sessionBus());
    const QString address = QUrl::fromLocalFile(path).toString(QUrl::FullyEncoded);
    auto [settler, outcome] = makeOutcome<void>();
    auto* watcher = new QDBusPendingCallWatcher(files.ShowItems({address}, QString()));
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, watcher,
                     [path, settler = settler](QDBusPendingCallWatcher* done) {
                         // A file manager that can't show one file can show its folder.
                         const QUrl folder = QUrl::fromLocalFile(QFileInfo(path).absolutePath());
                         if (!done->isError() || QDesktopServices::openUrl(folder))
                             settler.settle({});
                         else
                             settler.settle(unavailable(QStringLiteral("This desktop has no file manager.")));
                         done->deleteLater();
                     });
    return outcome;
}

void FreedesktopOpener::beep() {
    QApplication::beep();
}

} // namespace marrowfin::freedesktop
