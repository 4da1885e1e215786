// Worlds in which writing fails: a full disk and a folder that may not be written, also when the tests run as
// root. Each is as it was when the object goes.
#pragma once

#include <QString>
#include <csignal>
#include <cstdlib>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace marrowfin::test {

// No file may grow beyond this many bytes, as on a disk with no more room.
class FullDisk {
public:
    explicit FullDisk(rlim_t bytes) {
        getrlimit(RLIMIT_FSIZE, &before);
        const rlimit small{bytes, before.rlim_max};
        handler = std::signal(SIGXFSZ, SIG_IGN);
        setrlimit(RLIMIT_FSIZE, &small);
    }
    ~FullDisk() {
        setrlimit(RLIMIT_FSIZE, &before);
        std::signal(SIGXFSZ, handler);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

private:
    rlimit before{};
    void (*handler)(int) = nullptr;
};

// A folder that can be read but not written. Root may write anywhere, so root becomes nobody meanwhile.
class ReadOnlyFolder {
public:
    explicit ReadOnlyFolder(const QString& folder) : path(folder.toLocal8Bit()), wasRoot(geteuid() == 0) {
        chmod(path.constData(), 0555);
        if (wasRoot && seteuid(nobody) != 0)
            wasRoot = false;
    }
    ~ReadOnlyFolder() {
        if (wasRoot && seteuid(0) != 0)
            std::abort();
        chmod(path.constData(), 0700);
    }
    ReadOnlyFolder(const ReadOnlyFolder&) = delete;
    ReadOnlyFolder& operator=(const ReadOnlyFolder&) = delete;

private:
    static constexpr uid_t nobody = 65534;
    QByteArray path;
    bool wasRoot;
};

} // namespace marrowfin::test
