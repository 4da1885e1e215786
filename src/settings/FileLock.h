// An exclusive lock between processes, held while this object lives. It is a file of its own beside the one
// it protects, because that one is replaced by renaming. The system frees it when its holder dies.
// Any thread.
#pragma once

#include "base/Result.h"

#include <QString>
#include <chrono>

namespace marrowfin::settings {

class FileLock {
public:
    // Waits no longer than this for another holder: one that was stopped must not stop us too.
    static Result<FileLock> take(const QString& path, std::chrono::milliseconds patience);

    ~FileLock();
    FileLock(FileLock&& other) noexcept;
    FileLock& operator=(FileLock&&) = delete;

private:
    explicit FileLock(int descriptor) : descriptor(descriptor) {}
    int descriptor;
};

} // namespace marrowfin::settings
