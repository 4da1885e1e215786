// Writes a capture to the file that was asked for by name. Called on the main thread; the file is
// written on its folder's queue.
#pragma once

#include "base/Outcome.h"
#include "imaging/Image.h"

#include <QString>

namespace marrowfin::app {

// JPEG, in the quality of the settings, for a path that ends in .jpg or .jpeg; PNG for every other. A file
// that stands there is replaced. Failed, with a sentence, when it can't be written; no folder is made.
Outcome<void> writeOutput(const imaging::Image& image, const QString& path);

} // namespace marrowfin::app
