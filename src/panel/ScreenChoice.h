// Which screen a card belongs to. Points, DesktopRect. Main thread.
#pragma once

#include "platform/Screens.h"

#include <optional>

namespace marrowfin::panel {

// The first screen under the pointer, else the main one, also where nobody knows the pointer's place.
std::optional<platform::Screen> screenForNewCard(platform::Screens& screens,
                                                 const Result<DesktopPoint>& pointer);
std::optional<platform::Screen> screenOf(platform::Screens& screens, std::uint32_t displayID);

} // namespace marrowfin::panel
