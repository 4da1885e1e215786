#include "base/Memory.h"

#include "base/Shared.h"

#include <QTimer>
#include <chrono>
#include <malloc.h>

namespace marrowfin {

namespace {
constexpr int large = 128 * 1024;
constexpr std::chrono::milliseconds calmAfter(750); // a new card stands still by then

struct Calm {
    Calm() {
        timer.setSingleShot(true);
        timer.setInterval(calmAfter);
        timer.callOnTimeout([] {
#ifdef __GLIBC__
            ::malloc_trim(0);
#endif
        });
    }
    QTimer timer;
};
} // namespace

void giveLargeMemoryBack() {
#ifdef M_MMAP_THRESHOLD
    // Setting the threshold, even to what it is, stops it from moving.
    mallopt(M_MMAP_THRESHOLD, large);
    mallopt(M_TRIM_THRESHOLD, large);
#endif
}

void giveFreeMemoryBackWhenCalm() {
    Shared<Calm>::instance().timer.start();
}

} // namespace marrowfin
