// A copy of every capture on disk: a plain folder of PNG files, no index. The file system is the store, and
// every operation reads it anew. At most 100 items; age plays no part. Everything runs in the order of the
// calls: saves that were asked for come before a later listing, save or clearing. Main thread; the disk work
// of saveAsync() is elsewhere.
#pragma once

#include "base/SerialQueue.h"
#include "imaging/Image.h"

#include <QString>
#include <QStringList>
#include <functional>
#include <optional>

namespace marrowfin::history {

class CaptureHistory {
public:
    static constexpr int maxHistoryItems = 100;
    // Nanoseconds since 1970 at which the file was made; nothing where that isn't known.
    using CreationDate = std::function<std::optional<qint64>(const QString& path)>;

    // The one instance, over the folder that useFolder() named.
    static CaptureHistory& shared();
    // Called once at start, before the first use of shared(). Tests call it with their own and reset shared
    // objects.
    static void useFolder(const QString& path);

    CaptureHistory();
    // Makes the folder. That this may fail is told by the later saves.
    explicit CaptureHistory(QString folder, CreationDate creationDate = birthTime);

    const QString& historyDirectory() const { return folder; }

    // The path of the new file; nothing on failure. Prints a line when the file can't be written.
    std::optional<QString> save(const imaging::Image& image);
    // The same without waiting for the disk on this thread. Encoding is awaited too, if it isn't done.
    Outcome<std::optional<QString>> saveAsync(const imaging::Image& image);
    // Returns when the saves that were asked for have ended; for an end of the process that runs no
    // destructors. Nothing to do, and no folder made, when no history was used yet.
    static void finishSaves();
    // Paths, newest first; empty on any error. Any visible file counts, whatever its name.
    QStringList list() const;
    // Removes the folder with all that is in it, and makes it again.
    void clearAll();

    // The date that the file system keeps.
    static std::optional<qint64> birthTime(const QString& path);

private:
    std::optional<QString> write(const imaging::Image& image) const;
    QStringList read() const;
    void trim() const;

    QString folder;
    CreationDate creationDate;
    mutable SerialQueue queue{QStringLiteral("io.tessaly.marrowfin.history"),
                              SerialQueue::QualityOfService::Default};
};

} // namespace marrowfin::history
