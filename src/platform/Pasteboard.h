// The general clipboard. Images are offered as the image's one PNG encoding; nothing is encoded again on a
// paste. Main thread.
#pragma once

#include "base/Outcome.h"
#include "imaging/Image.h"

#include <QString>
#include <optional>

namespace marrowfin::platform {

class Pasteboard {
public:
    virtual ~Pasteboard() = default;
    virtual void clearContents() = 0;
    // Offered from now on; settles when another program can read it, or says why none can.
    virtual Outcome<void> writeImage(const imaging::Image& image) = 0;
    virtual Outcome<void> writeText(const QString& text) = 0;
    // Nothing when the clipboard holds no image that can be read.
    virtual Outcome<std::optional<imaging::Image>> readImage() = 0;
    // At the end of the process: gives what we offer to the clipboard manager, if there is one, waiting for
    // it at most a moment.
    virtual void handOver() = 0;
};

} // namespace marrowfin::platform
