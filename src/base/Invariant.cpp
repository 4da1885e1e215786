#include "base/Invariant.h"

#include <cstdio>
#include <cstdlib>

namespace marrowfin {

void invariantBroken(const char* what, const char* file, int line) {
    std::fprintf(stderr, "[Marrowfin] invariant broken: %s (%s:%d)\n", what, file, line);
    std::abort();
}

} // namespace marrowfin
