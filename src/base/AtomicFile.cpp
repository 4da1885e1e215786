#include "base/AtomicFile.h"

#include <QFile>
#include <QFileInfo>
#include <cerrno>
#include <condition_variable>
#include <cstring>
#include <fcntl.h>
#include <mutex>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>

namespace marrowfin {

namespace {

constexpr int mostLinks = 40; // as the kernel

std::mutex writesLock;
std::condition_variable writesChanged;
int writesUnderWay = 0;

struct UnderWay {
    UnderWay() {
        const std::lock_guard hold(writesLock);
        ++writesUnderWay;
    }
    ~UnderWay() {
        const std::lock_guard hold(writesLock);
        --writesUnderWay;
        writesChanged.notify_all();
    }
    UnderWay(const UnderWay&) = delete;
    UnderWay& operator=(const UnderWay&) = delete;
};

tl::unexpected<Error> systemFailure(int number) {
    return failure(QString::fromLocal8Bit(std::strerror(number)));
}

Result<QString> endOfLinks(const QString& path) {
    QString at = path;
    for (int links = 0; QFileInfo(at).isSymLink(); ++links) {
        if (links == mostLinks)
            return systemFailure(ELOOP);
        at = QFileInfo(at).symLinkTarget();
    }
    return at;
}

// Nothing when the name is free or an ordinary file that may be replaced.
int obstacleAt(const QString& path) {
    const QByteArray name = QFile::encodeName(path);
    struct stat found {};
    if (::stat(name.constData(), &found) != 0)
        return errno == ENOENT ? 0 : errno;
    if (S_ISDIR(found.st_mode))
        return EISDIR;
    if (!S_ISREG(found.st_mode))
        return EINVAL;
    return ::faccessat(AT_FDCWD, name.constData(), W_OK, AT_EACCESS) == 0 ? 0 : errno;
}

// A file that is replaced keeps its mode, unless the new one is its owner's alone.
std::optional<mode_t> modeToKeep(const QString& path, FileAccess access) {
    struct stat found {};
    if (access == FileAccess::OwnerOnly || ::stat(QFile::encodeName(path).constData(), &found) != 0)
        return std::nullopt;
    return found.st_mode & 0777;
}

bool fill(const DraftFile& draft, const QByteArray& bytes, std::optional<mode_t> mode, FileAppears appears) {
    return draft.write(bytes) && (!mode || draft.setMode(*mode)) &&
           (appears == FileAppears::OnceWritten || draft.flush());
}

} // namespace

Result<void> writeFileAtomically(const QString& path, const QByteArray& bytes, FileManners manners) {
    const UnderWay counted;
    const Result<QString> target = endOfLinks(path);
    if (!target)
        return tl::unexpected(target.error());
    if (const int obstacle = obstacleAt(*target))
        return systemFailure(obstacle);
    const std::optional<mode_t> mode = modeToKeep(*target, manners.access);
    DraftFile nameless(*target, DraftFile::Place::Nameless, manners.access);
    if (nameless.isOpen()) {
        if (!fill(nameless, bytes, mode, manners.appears))
            return systemFailure(errno);
        if (nameless.becomes(*target))
            return {};
    }
    // This file system has no nameless files, or can't name them.
    DraftFile neighbour(*target, DraftFile::Place::HiddenNeighbour, manners.access);
    if (!neighbour.isOpen() || !fill(neighbour, bytes, mode, manners.appears) || !neighbour.becomes(*target))
        return systemFailure(errno);
    return {};
}

bool finishWrites(std::chrono::milliseconds patience) {
    std::unique_lock hold(writesLock);
    return writesChanged.wait_for(hold, patience, [] { return writesUnderWay == 0; });
}

void flushToDisk(const QString& path) {
    const int descriptor = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0)
        return;
    ::fsync(descriptor);
    ::close(descriptor);
}

Result<void> makePrivateFolder(const QString& path) {
    const QFileInfo info(path);
    if (info.isDir())
        return {};
    const QString parent = info.absolutePath();
    if (parent != info.absoluteFilePath())
        if (Result<void> above = makePrivateFolder(parent); !above)
            return above;
    if (::mkdir(QFile::encodeName(info.absoluteFilePath()).constData(), 0700) != 0 && errno != EEXIST)
        return systemFailure(errno);
    if (!QFileInfo(path).isDir())
        return systemFailure(ENOTDIR);
    return {};
}

} // namespace marrowfin
