#include "settings/FileLock.h"

#include <QFile>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/file.h>
#include <thread>
#include <unistd.h>
#include <utility>

namespace marrowfin::settings {

namespace {
constexpr std::chrono::milliseconds betweenTries{2};
}

Result<FileLock> FileLock::take(const QString& path, std::chrono::milliseconds patience) {
    const int descriptor = ::open(QFile::encodeName(path).constData(),
                                  O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, 0600);
    if (descriptor < 0)
        return failure(QString::fromLocal8Bit(std::strerror(errno)));
    FileLock lock(descriptor);
    const auto deadline = std::chrono::steady_clock::now() + patience;
    // flock() has no time limit of its own. A holder needs a millisecond or two, so a second try is rare
    // already.
    while (::flock(descriptor, LOCK_EX | LOCK_NB) != 0) {
        if (errno != EWOULDBLOCK && errno != EINTR)
            return failure(QString::fromLocal8Bit(std::strerror(errno)));
        if (std::chrono::steady_clock::now() >= deadline)
            return failure(QStringLiteral("another process holds %1").arg(path));
        std::this_thread::sleep_for(betweenTries);
    }
    return lock;
}

FileLock::FileLock(FileLock&& other) noexcept : descriptor(std::exchange(other.descriptor, -1)) {}

FileLock::~FileLock() {
    if (descriptor >= 0)
        ::close(descriptor);
}

} // namespace marrowfin::settings
