// Files of the user get their name when they are whole, so that a reader sees the old file or the whole new
// one. Any thread.
#pragma once

#include "base/DraftFile.h"
#include "base/Result.h"

#include <QByteArray>
#include <QString>
#include <chrono>

namespace marrowfin {

// When the new file takes its name: once the disk has it, so that a power cut leaves the old file or the new
// one; or as soon as it is whole. The second is for files that somebody is waiting for; flushToDisk() follows
// when that is no longer so.
enum class FileAppears { OnceOnDisk, OnceWritten };

struct FileManners {
    FileAppears appears = FileAppears::OnceOnDisk;
    FileAccess access = FileAccess::OwnerOnly;
};

// Replaces or makes the file. A link is followed. One that is replaced keeps its mode where the access is as
// usual. The error is the system's own text; nothing is left behind after one. Anything but an ordinary,
// writable file is not replaced.
Result<void> writeFileAtomically(const QString& path, const QByteArray& bytes, FileManners manners = {});
// Waits until the disk has the file, where it can.
void flushToDisk(const QString& path);
// Waits until no other thread is in the middle of writing a file; for an end of the process that runs no
// destructors, so that it leaves no draft behind. No longer than this: a disk that hangs must not keep the
// process. False when the time was up.
bool finishWrites(std::chrono::milliseconds patience);
// Makes the folder and those above it, for its owner alone (0700) where it is new.
Result<void> makePrivateFolder(const QString& path);

} // namespace marrowfin
