#include "platform/freedesktop/FreedesktopStatusBar.h"

#include "platform/freedesktop/FreedesktopStatusItem.h"

namespace marrowfin::freedesktop {

std::unique_ptr<platform::StatusItem> FreedesktopStatusBar::makeItem() {
    return std::make_unique<FreedesktopStatusItem>(makeTrayIcon);
}

} // namespace marrowfin::freedesktop
