// Names of the history's files: "capture_", whole seconds since 1970, "_", a UUID, ".png". The UUID makes two
// captures of one second different files. It also counts upwards, because file systems stamp quick files
// alike: of two files with one date the later is the one with the greater UUID, after a restart too. Any
// thread.
#pragma once

#include <QDateTime>
#include <QString>
#include <optional>

namespace marrowfin::history {

struct CaptureName {
    qint64 seconds = 0;
    QString uuid; // upper case; later names of one process have greater ones, even when the clock steps back

    QString fileName() const;
};

CaptureName makeCaptureName(const QDateTime& now);
// Nothing for a file name that isn't of this form.
std::optional<CaptureName> parseCaptureName(const QString& fileName);

} // namespace marrowfin::history
