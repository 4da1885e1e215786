// Files of the user are written to a temporary neighbour and renamed, so that a reader sees the old file or
// the whole new one. Any thread.
#pragma once

#include "base/Result.h"

#include <QByteArray>
#include <QString>

namespace marrowfin {

// Replaces or makes the file, readable and writable by its owner alone. The error is the system's own text;
// nothing is left behind after one.
Result<void> writeFileAtomically(const QString& path, const QByteArray& bytes);
// Makes the folder and those above it, for its owner alone (0700) where it is new.
Result<void> makePrivateFolder(const QString& path);

} // namespace marrowfin
