// What is shown when this desktop doesn't let the program see the screen. Main thread.
#pragma once

#include "base/Flow.h"
#include "base/Result.h"

namespace marrowfin::capture {

// Where this desktop can't show it at all, no setting helps: a paragraph more says why. Opens the desktop's
// settings page when asked to; returns when the alert has closed.
Flow<> showPermissionAlert(Error why);

} // namespace marrowfin::capture
