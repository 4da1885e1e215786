#include "base/AtomicFile.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>
#include <cerrno>
#include <cstring>
#include <sys/stat.h>

namespace marrowfin {

Result<void> writeFileAtomically(const QString& path, const QByteArray& bytes) {
    QSaveFile file(path);
    file.setDirectWriteFallback(false);
    if (!file.open(QIODevice::WriteOnly))
        return failure(file.errorString());
    file.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    if (file.write(bytes) != bytes.size() || !file.commit())
        return failure(file.errorString());
    return {};
}

Result<void> makePrivateFolder(const QString& path) {
    const QFileInfo info(path);
    if (info.isDir())
        return {};
    const QString parent = info.absolutePath();
    if (parent != info.absoluteFilePath())
        if (Result<void> above = makePrivateFolder(parent); !above)
            return above;
    if (::mkdir(QFile::encodeName(path).constData(), 0700) != 0 && errno != EEXIST)
        return failure(QString::fromLocal8Bit(std::strerror(errno)));
    if (!QFileInfo(path).isDir())
        return failure(QString::fromLocal8Bit(std::strerror(ENOTDIR)));
    return {};
}

} // namespace marrowfin
