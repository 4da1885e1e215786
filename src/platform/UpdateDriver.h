// Looks for a newer version of the program and tells the user, in windows of its own. Main thread.
#pragma once

#include "base/Outcome.h"

namespace marrowfin::platform {

class UpdateDriver {
public:
    virtual ~UpdateDriver() = default;
    // Before the first check; nothing is looked for yet.
    virtual Result<void> startUpdater() = 0;
    // The user asked: shows what comes of it, failures too. Settles when that is over.
    virtual Outcome<void> checkForUpdates() = 0;
};

} // namespace marrowfin::platform
