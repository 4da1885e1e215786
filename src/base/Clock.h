// What time it is, with a place for tests to say otherwise. Thread-safe to read; set only while a test sets
// up.
#pragma once

#include <QDateTime>
#include <functional>

namespace marrowfin {

class Clock {
public:
    // Wall-clock time in UTC.
    static QDateTime now();
    // Seconds of a clock that never jumps, from an arbitrary start.
    static double monotonicSeconds();

    // Tests: replaces now() until reset.
    static void setNow(std::function<QDateTime()> source);
    static void reset();
};

} // namespace marrowfin
