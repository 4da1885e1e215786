// What a process that was killed left in a folder: its name says whose it is. Any thread.
#pragma once

#include <QString>
#include <sys/types.h>

namespace marrowfin {

// Whether that process has ended. Process ids come again, in containers even the same ones at each start:
// what has our own id but is older than this process is a leftover too.
bool isLeftover(const QString& path, pid_t owner);
// The number between the prefix and what follows it, ".1234." or "-1234-"; 0 where there is none.
pid_t ownerInName(const QString& name, const QString& prefix, QChar after);
// Takes out the hidden neighbours of files (DraftFile) that such processes left.
void removeDeadDrafts(const QString& folder);

} // namespace marrowfin
