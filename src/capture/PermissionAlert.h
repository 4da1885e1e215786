// What is shown when this desktop doesn't let the program see the screen. Main thread.
#pragma once

#include "base/Flow.h"

namespace marrowfin::capture {

// Opens the desktop's settings page when asked to; returns when the alert has closed.
Flow<> showPermissionAlert();

} // namespace marrowfin::capture
