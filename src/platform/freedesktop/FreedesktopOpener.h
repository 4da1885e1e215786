// Opens addresses, settings pages and folders with the desktop's own programs. Nothing here waits. Main
// thread.
#pragma once

#include "platform/Desktop.h"

#include <QStringList>

namespace marrowfin::freedesktop {

// The program and arguments that show keyboard shortcuts on a desktop (XDG_CURRENT_DESKTOP); empty when we
// know none.
QStringList keyboardSettingsCommand(const QString& currentDesktop);

class FreedesktopOpener : public platform::Opener {
public:
    Outcome<void> openUrl(const QUrl& url) override;
    Outcome<void> openSettings(platform::SettingsPage page) override;
    Outcome<void> reveal(const QString& path) override;
    void beep() override;
};

} // namespace marrowfin::freedesktop
