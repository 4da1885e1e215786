// Files of the user are written to a temporary neighbour and renamed, so that a reader sees the old file or
// the whole new one. Any thread.
#pragma once

#include "base/Result.h"

#include <QByteArray>
#include <QString>
#include <chrono>

namespace marrowfin {

// When the new file takes its name: once the disk has it, so that a power cut leaves the old file or the new
// one; or as soon as it is whole. The second is for new files that somebody is waiting for; flushToDisk()
// follows when that is no longer so.
enum class FileAppears { OnceOnDisk, OnceWritten };

// Replaces or makes the file, readable and writable by its owner alone. A link is followed. The temporary
// neighbour's name begins with a dot. The error is the system's own text; nothing is left behind after one.
// Anything but an ordinary, writable file is not replaced.
Result<void> writeFileAtomically(const QString& path, const QByteArray& bytes,
                                 FileAppears appears = FileAppears::OnceOnDisk);
// Waits until the disk has the file, where it can.
void flushToDisk(const QString& path);
// Waits until no other thread is in the middle of writing a file; for an end of the process that runs no
// destructors, so that it leaves no temporary neighbour behind. No longer than this: a disk that hangs must
// not keep the process.
void finishWrites(std::chrono::milliseconds patience);
// Makes the folder and those above it, for its owner alone (0700) where it is new.
Result<void> makePrivateFolder(const QString& path);

} // namespace marrowfin
