// The program's icon in the status area, by whichever protocol the desktop's tray speaks. Main thread.
#pragma once

#include "platform/TrayIcon.h"

namespace marrowfin::freedesktop {

class FreedesktopStatusBar : public platform::StatusBar {
public:
    // The maker is for desktops where no host listens on D-Bus.
    explicit FreedesktopStatusBar(platform::TrayIconMaker makeTrayIcon)
        : makeTrayIcon(std::move(makeTrayIcon)) {}
    std::unique_ptr<platform::StatusItem> makeItem() override;

private:
    platform::TrayIconMaker makeTrayIcon;
};

} // namespace marrowfin::freedesktop
