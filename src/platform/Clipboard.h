// The one way in which an image takes the clipboard's place. Main thread.
#pragma once

#include "base/Outcome.h"
#include "imaging/Image.h"

namespace marrowfin::platform {

// Clears the general clipboard and offers the image; settles as Pasteboard::writeImage() does.
Outcome<void> copyToClipboard(const imaging::Image& image);

} // namespace marrowfin::platform
