// A system that has no shared memory to give for a moment.
#include "x11/Capturing.h"
#include "x11/PaintedWindow.h"

#include <cerrno>
#include <dlfcn.h>
#include <sys/shm.h>

using namespace marrowfin;
using namespace marrowfin::platform;
using namespace marrowfin::test;

namespace {
std::atomic<bool> refuses = false;
std::atomic<int> given = 0;
} // namespace

// In place of the C library's.
extern "C" int shmget(key_t key, std::size_t size, int flags) noexcept {
    if (refuses) {
        errno = ENOSPC;
        return -1;
    }
    ++given;
    using Call = int (*)(key_t, std::size_t, int);
    return reinterpret_cast<Call>(::dlsym(RTLD_NEXT, "shmget"))(key, size, flags);
}

TEST(SharedMemory, ThatIsRefusedOnceIsAskedForAgain) {
    const QByteArray here = qgetenv("DISPLAY");
    const PaintedWindow window(here, {.rect = {100, 100, 200, 200}, .seed = 1, .managed = false});
    window.waitUntilSeen();
    refuses = true;
    testing::internal::CaptureStderr();
    Eye eye(here);
    const auto without = eye.region({100, 100, 200, 200});
    const std::string said = testing::internal::GetCapturedStderr();
    refuses = false;
    ASSERT_TRUE(without) << without.error().message.toStdString();
    EXPECT_EQ(differences(*without, window.pattern()), 0);
    EXPECT_EQ(said.find("X server can't"), std::string::npos) << said;
    given = 0;
    const auto with = eye.region({100, 100, 200, 200});
    ASSERT_TRUE(with);
    EXPECT_EQ(differences(*with, window.pattern()), 0);
    EXPECT_EQ(given, 1);
    const auto again = eye.region({100, 100, 200, 200});
    ASSERT_TRUE(again);
    EXPECT_EQ(given, 1) << "what was given is kept";
}
