#include "base/Memory.h"

#include <malloc.h>

namespace marrowfin {

namespace {
constexpr int large = 128 * 1024;
}

void giveLargeMemoryBack() {
#ifdef M_MMAP_THRESHOLD
    // Setting the threshold, even to what it is, stops it from moving.
    mallopt(M_MMAP_THRESHOLD, large);
    mallopt(M_TRIM_THRESHOLD, large);
#endif
}

} // namespace marrowfin
