#include "base/Leftovers.h"

#include "base/DraftFile.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <cerrno>
#include <csignal>
#include <unistd.h>

namespace marrowfin {

namespace {
// A little earlier: a file system's clock is coarse.
const QDateTime started = QDateTime::currentDateTimeUtc().addSecs(-1);
} // namespace

bool isLeftover(const QString& path, pid_t owner) {
    if (owner <= 0)
        return false;
    if (owner == ::getpid())
        return QFileInfo(path).lastModified() < started;
    return ::kill(owner, 0) != 0 && errno == ESRCH;
}

pid_t ownerInName(const QString& name, const QString& prefix, QChar after) {
    return name.startsWith(prefix) ? name.mid(prefix.size()).section(after, 0, 0).toInt() : 0;
}

void removeDeadDrafts(const QString& folder) {
    const QStringList drafts = QDir(folder).entryList({draftPrefix + u'*'}, QDir::Files | QDir::Hidden);
    for (const QString& draft : drafts) {
        const QString path = folder + u'/' + draft;
        if (isLeftover(path, ownerInName(draft, draftPrefix, u'.')))
            QFile::remove(path);
    }
}

} // namespace marrowfin
