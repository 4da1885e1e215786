// Saves a capture into the Marrowfin folder of the user's Pictures folder, under the format and quality of
// the settings. Called on the main thread; encoding and writing happen on the folder's queue.
#pragma once

#include "base/Outcome.h"
#include "imaging/Image.h"

#include <QDateTime>
#include <QString>
#include <optional>

namespace marrowfin::app {

// "Marrowfin 2026-11-15T20.16.03.png", in GMT.
QString automaticSaveName(const QDateTime& time, const QString& extension);
// The Marrowfin folder; nothing when there is no Pictures folder.
std::optional<QString> automaticSaveFolder();

// The file's path, as soon as it has its name. Beeps when the folder can't be made or the image can't be
// encoded; silent when there is no Pictures folder or the file can't be written. Two saves within a second
// share a name, and the later one replaces the earlier.
Outcome<QString> saveAutomatically(const imaging::Image& image);
// The same for callers who don't want to know.
void saveCaptureToFile(const imaging::Image& image);

} // namespace marrowfin::app
