#include "base/DraftFile.h"

#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace marrowfin {

namespace {

// ".marrowfin.1234.0123456789abcdef": a process and a number of its own.
QByteArray newNeighbour(const QString& target) {
    const QString name = draftPrefix + QString::number(::getpid()) + u'.' +
                         QString::number(QRandomGenerator::global()->generate64(), 16);
    return QFile::encodeName(QFileInfo(target).absolutePath() + u'/' + name);
}

} // namespace

DraftFile::DraftFile(const QString& target, Place place, FileAccess access) {
    const mode_t mode = access == FileAccess::OwnerOnly ? 0600 : 0666;
    if (place == Place::Nameless) {
        const QByteArray folder = QFile::encodeName(QFileInfo(target).absolutePath());
        descriptor = ::open(folder.constData(), O_TMPFILE | O_WRONLY | O_CLOEXEC, mode);
        return;
    }
    do {
        name = newNeighbour(target);
        descriptor = ::open(name.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
    } while (descriptor < 0 && errno == EEXIST);
}

DraftFile::~DraftFile() {
    if (descriptor < 0)
        return;
    ::close(descriptor);
    if (!renamed && !name.isEmpty())
        ::unlink(name.constData());
}

bool DraftFile::write(const QByteArray& bytes) const {
    for (qsizetype done = 0; done < bytes.size();) {
        const ssize_t n =
            ::write(descriptor, bytes.constData() + done, static_cast<size_t>(bytes.size() - done));
        if (n < 0 && errno != EINTR)
            return false;
        done += n > 0 ? n : 0;
    }
    return true;
}

bool DraftFile::setMode(mode_t mode) const {
    return ::fchmod(descriptor, mode) == 0;
}

bool DraftFile::flush() const {
    // Some file systems can't, and say EINVAL; that is no reason to lose the file.
    return ::fsync(descriptor) == 0 || errno == EINVAL;
}

bool DraftFile::linkAs(const QByteArray& path) const {
    char self[32];
    std::snprintf(self, sizeof self, "/proc/self/fd/%d", descriptor);
    return ::linkat(AT_FDCWD, self, AT_FDCWD, path.constData(), AT_SYMLINK_FOLLOW) == 0;
}

bool DraftFile::becomes(const QString& target) {
    const QByteArray final = QFile::encodeName(target);
    if (name.isEmpty()) {
        if (linkAs(final))
            return true;
        if (errno != EEXIST)
            return false;
        // A link can't replace anything: a neighbour for a moment, and a rename.
        const QByteArray neighbour = newNeighbour(target);
        if (!linkAs(neighbour))
            return false;
        name = neighbour;
    }
    renamed = ::rename(name.constData(), final.constData()) == 0;
    return renamed;
}

} // namespace marrowfin
