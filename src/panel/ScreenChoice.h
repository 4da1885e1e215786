// Which screen a card belongs to. Points, DesktopRect. Main thread.
#pragma once

#include "platform/Screens.h"

#include <optional>

namespace marrowfin::panel {

// The first screen under the pointer, else the main one.
std::optional<platform::Screen> screenForNewCard(platform::Screens& screens);
std::optional<platform::Screen> screenOf(platform::Screens& screens, std::uint32_t displayID);

} // namespace marrowfin::panel
