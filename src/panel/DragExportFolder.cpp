#include "panel/DragExportFolder.h"

#include "base/AtomicFile.h"
#include "base/Clock.h"
#include "base/Leftovers.h"
#include "base/Shared.h"
#include "platform/Desktop.h"
#include "platform/Services.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <cstdlib>
#include <unistd.h>

namespace marrowfin::panel {

namespace {

constexpr qint64 keptSeconds = 3600;
const QString commonName = QStringLiteral("MarrowfinDragExports");

// "MarrowfinDragExports-1000"
QString ownName() {
    return commonName + u'-' + QString::number(::geteuid());
}

class PrivateFolder {
public:
    ~PrivateFolder() {
        if (!path.isEmpty())
            QDir(path).removeRecursively();
    }
    // "MarrowfinDragExports-1000-4711-a8Gx2q"; a name that is no folder when none can be made.
    QString folder(const QString& temporary) {
        if (!path.isEmpty() && isOursAlone(path))
            return path;
        QByteArray name =
            QFile::encodeName(QStringLiteral("%1/%2-%3-XXXXXX").arg(temporary, ownName()).arg(::getpid()));
        path = ::mkdtemp(name.data()) ? QFile::decodeName(name) : QString();
        return path;
    }

private:
    QString path;
};

bool isFree(const QString& folder) {
    const QFileInfo info(folder);
    return !info.exists() && !info.isSymLink();
}

void remove(const QFileInfo& item) {
    if (item.isDir() && !item.isSymLink())
        QDir(item.absoluteFilePath()).removeRecursively();
    else
        QFile::remove(item.absoluteFilePath());
}

} // namespace

bool isOursAlone(const QString& folder) {
    const QFileInfo info(folder);
    return info.isDir() && !info.isSymLink() && info.ownerId() == ::geteuid();
}

QString dragExportFolder() {
    const QString temporary = platform::services().folders.temporary();
    // Anybody may write to the temporary folder: a stranger's folder or a link would let them read captures.
    for (const QString& name : {commonName, ownName()}) {
        const QString folder = temporary + u'/' + name;
        if (!isOursAlone(folder) && !isFree(folder))
            continue;
        (void)makePrivateFolder(folder); // without it there is simply no file
        if (isOursAlone(folder))
            QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        return folder;
    }
    return Shared<PrivateFolder>::instance().folder(temporary);
}

void pruneDragExports(const QString& folder) {
    const QDateTime oldest = Clock::now().addSecs(-keptSeconds);
    const QFileInfoList items =
        QDir(folder).entryInfoList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    for (const QFileInfo& item : items) {
        const QDateTime changed = item.lastModified();
        if (!changed.isValid() || changed < oldest)
            remove(item);
    }
}

void removeDragExportLeftovers(const QString& temporaryFolder) {
    const QString prefix = ownName() + u'-';
    const QFileInfoList folders = QDir(temporaryFolder).entryInfoList({commonName + u'*'}, QDir::Dirs);
    for (const QFileInfo& folder : folders) {
        const QString path = folder.absoluteFilePath();
        if (!isOursAlone(path))
            continue;
        removeDeadDrafts(path);
        if (isLeftover(path, ownerInName(folder.fileName(), prefix, u'-')))
            remove(folder);
    }
}

} // namespace marrowfin::panel
