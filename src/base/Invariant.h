// A broken invariant stops the program in every build: going on would put the user's captures at risk.
#pragma once

namespace marrowfin {

[[noreturn]] void invariantBroken(const char* what, const char* file, int line);

} // namespace marrowfin

#define MARROWFIN_INVARIANT(condition)                                                                       \
    ((condition) ? static_cast<void>(0) : ::marrowfin::invariantBroken(#condition, __FILE__, __LINE__))
