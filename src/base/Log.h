// The two voices of the program: plain lines for the user on standard output, the system log on standard
// error. Both take whole lines without the newline, from any thread.
#pragma once

#include <QString>

namespace marrowfin {

// One line on standard output, flushed, so that a pipe sees it when it happens.
void printLine(const QString& line);
// One line on standard error, exactly as given; background failures begin with "[Marrowfin] ".
void logLine(const QString& line);

} // namespace marrowfin
