#include "base/Clock.h"

#include <chrono>

namespace marrowfin {

namespace {
std::function<QDateTime()> injectedNow;
}

QDateTime Clock::now() {
    return injectedNow ? injectedNow() : QDateTime::currentDateTimeUtc();
}

double Clock::monotonicSeconds() {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

void Clock::setNow(std::function<QDateTime()> source) {
    injectedNow = std::move(source);
}
void Clock::reset() {
    injectedNow = nullptr;
}

} // namespace marrowfin
