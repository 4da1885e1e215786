// Which window system the program runs on, and with which of the toolkit's plug-ins; and
// whether there is a session bus for the toolkit. Main thread.
#pragma once

#include "base/Result.h"

namespace marrowfin::session {

// Before QApplication is made, because it connects. The error is a sentence for the user.
Result<void> chooseWindowSystem();

} // namespace marrowfin::session
