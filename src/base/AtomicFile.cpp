#include "base/AtomicFile.h"

#include <QFile>
#include <QFileInfo>
#include <cerrno>
#include <condition_variable>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <mutex>
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

// The temporary neighbour: gone at the end unless it took its final name.
class Neighbour {
public:
    explicit Neighbour(const QString& target)
        : name(QFile::encodeName(QFileInfo(target).absolutePath() + QStringLiteral("/.marrowfin.XXXXXX"))),
          descriptor(::mkostemp(name.data(), O_CLOEXEC)) {}
    ~Neighbour() {
        if (descriptor < 0)
            return;
        ::close(descriptor);
        if (!renamed)
            ::unlink(name.constData());
    }
    Neighbour(const Neighbour&) = delete;
    Neighbour& operator=(const Neighbour&) = delete;

    bool isOpen() const { return descriptor >= 0; }
    bool write(const QByteArray& bytes) const {
        for (qsizetype done = 0; done < bytes.size();) {
            const ssize_t n =
                ::write(descriptor, bytes.constData() + done, static_cast<size_t>(bytes.size() - done));
            if (n < 0 && errno != EINTR)
                return false;
            done += n > 0 ? n : 0;
        }
        return true;
    }
    // Some file systems can't, and say EINVAL; that is no reason to lose the file.
    bool flush() const { return ::fsync(descriptor) == 0 || errno == EINVAL; }
    bool becomes(const QString& target) {
        renamed = ::rename(name.constData(), QFile::encodeName(target).constData()) == 0;
        return renamed;
    }

private:
    QByteArray name;
    int descriptor;
    bool renamed = false;
};

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

} // namespace

Result<void> writeFileAtomically(const QString& path, const QByteArray& bytes, FileAppears appears) {
    const UnderWay counted;
    const Result<QString> target = endOfLinks(path);
    if (!target)
        return tl::unexpected(target.error());
    if (const int obstacle = obstacleAt(*target))
        return systemFailure(obstacle);
    Neighbour file(*target);
    if (!file.isOpen() || !file.write(bytes))
        return systemFailure(errno);
    if (appears == FileAppears::OnceOnDisk && !file.flush())
        return systemFailure(errno);
    if (!file.becomes(*target))
        return systemFailure(errno);
    return {};
}

void finishWrites(std::chrono::milliseconds patience) {
    std::unique_lock hold(writesLock);
    writesChanged.wait_for(hold, patience, [] { return writesUnderWay == 0; });
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
