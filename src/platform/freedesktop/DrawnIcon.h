// An icon that has its drawer draw it for exactly the pixels it is shown on. GUI thread.
#pragma once

#include "platform/StatusItem.h"

#include <QIcon>

namespace marrowfin::freedesktop {

QIcon drawnIcon(platform::StatusItem::IconDrawer drawer, bool darkTray);

} // namespace marrowfin::freedesktop
