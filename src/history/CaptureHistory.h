// A copy of every capture on disk: a plain folder of PNG files, no index. The file system is the store, and
// every operation reads it anew. At most 100 items; age plays no part. Saves and clearings run in the order
// of the calls; a listing waits for nobody and shows what is there. Main thread; what answers by an Outcome
// does its work elsewhere.
#pragma once

#include "base/SerialQueue.h"
#include "imaging/Image.h"

#include <QObject>
#include <QString>
#include <QStringList>
#include <chrono>
#include <functional>
#include <optional>

namespace marrowfin::history {

class CaptureHistory : public QObject {
    Q_OBJECT
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
    // The same, as soon as the file has its name. Encoding is awaited too, if it isn't done.
    Outcome<std::optional<QString>> saveAsync(const imaging::Image& image);
    // Paths, newest first; empty on any error. Any visible file counts, whatever its name.
    QStringList list() const;
    Outcome<QStringList> listAsync() const;
    // Removes the folder with all that is in it, and makes it again.
    void clearAll();
    Outcome<void> clearAllAsync();
    // Waits until the saves that were asked for have ended, no longer than this; false when the time was up.
    // Nothing to do, and no folder made, when no history was used yet.
    static bool finishSaves(std::chrono::milliseconds patience);

    // The date that the file system keeps.
    static std::optional<qint64> birthTime(const QString& path);

Q_SIGNALS:
    // Files came or went by what was asked of this object.
    void changed();

private:
    std::optional<QString> write(const imaging::Image& image);
    QStringList read() const;
    void trim(const QString& justWritten) const;
    void clear();

    QString folder;
    CreationDate creationDate;
    // The second is for listings, so that they don't wait for an encoding or a slow write.
    SerialQueue queue{QStringLiteral("io.tessaly.marrowfin.history"), SerialQueue::QualityOfService::Default};
    mutable SerialQueue listing{QStringLiteral("io.tessaly.marrowfin.history.list"),
                                SerialQueue::QualityOfService::Default};
};

} // namespace marrowfin::history
