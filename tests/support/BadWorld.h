// Worlds in which writing fails: a full disk and a folder that may not be written, also when the tests run as
// root. Each is as it was when the object goes.
#pragma once

#include <QString>
#include <csignal>
#include <cstdlib>
#include <optional>
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

// Root may do anything, so for a while root is nobody. Whoever runs the tests as themselves stays so.
class OrdinaryUser {
public:
    static constexpr uid_t nobody = 65534;

    OrdinaryUser() : wasRoot(geteuid() == 0 && seteuid(nobody) == 0) {}
    ~OrdinaryUser() {
        if (wasRoot && seteuid(0) != 0)
            std::abort();
    }
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;

    // Called before: makes it that user's own.
    static bool owns(const QString& path) {
        return geteuid() != 0 || chown(path.toLocal8Bit().constData(), nobody, static_cast<gid_t>(-1)) == 0;
    }

private:
    bool wasRoot;
};

// A folder that can be read but not written.
class ReadOnlyFolder {
public:
    explicit ReadOnlyFolder(const QString& folder) : path(folder.toLocal8Bit()) {
        chmod(path.constData(), 0555);
        user.emplace();
    }
    ~ReadOnlyFolder() {
        user.reset();
        chmod(path.constData(), 0700);
    }
    ReadOnlyFolder(const ReadOnlyFolder&) = delete;
    ReadOnlyFolder& operator=(const ReadOnlyFolder&) = delete;

private:
    QByteArray path;
    std::optional<OrdinaryUser> user;
};

} // namespace marrowfin::test
