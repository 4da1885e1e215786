// A measured time beside its reference: both run in turns, and the best of each counts, because the machine
// is shared and only ever adds time.
#pragma once

#include <algorithm>
#include <ctime>
#include <limits>

namespace marrowfin::bench {

inline double threadSeconds() {
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
}

template <class Run>
double secondsOf(Run&& run) {
    const double start = threadSeconds();
    run();
    return threadSeconds() - start;
}

struct Times {
    double ours = std::numeric_limits<double>::infinity();
    double reference = std::numeric_limits<double>::infinity();
    double ratio() const { return reference / ours; }

    template <class Ours, class Reference>
    void take(Ours&& runOurs, Reference&& runReference) {
        ours = std::min(ours, secondsOf(runOurs));
        reference = std::min(reference, secondsOf(runReference));
    }
};

} // namespace marrowfin::bench
