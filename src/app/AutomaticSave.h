// Saves a capture into the Marrowfin folder of the user's Pictures folder, under the format and quality of
// the settings. Called on the main thread; encoding and writing happen on a queue of their own.
#pragma once

#include "base/Flow.h"
#include "imaging/Image.h"

#include <QDateTime>
#include <QString>

namespace marrowfin::app {

// "Marrowfin 2026-11-15T20.16.03.png", in GMT.
QString automaticSaveName(const QDateTime& time, const QString& extension);

// The file's path. Beeps when the folder can't be made or the image can't be encoded; silent when there is no
// Pictures folder or the file can't be written. Two saves within a second share a name, and the later one
// replaces the earlier.
Flow<Result<QString>> saveCaptureToFile(imaging::Image image);

} // namespace marrowfin::app
