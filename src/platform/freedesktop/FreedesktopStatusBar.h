// The program's icon in the status area, by whichever protocol the desktop's tray speaks. Main thread.
#pragma once

#include "platform/StatusItem.h"

namespace marrowfin::freedesktop {

class FreedesktopStatusBar : public platform::StatusBar {
public:
    std::unique_ptr<platform::StatusItem> makeItem() override;
};

} // namespace marrowfin::freedesktop
