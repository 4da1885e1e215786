#include "chrome/AnimationClock.h"

#include "base/Clock.h"
#include "base/Shared.h"

#include <algorithm>
#include <cmath>

namespace marrowfin::chrome {

namespace {
// A timer may come half a millisecond early: its resolution is a millisecond, and a frame a little early is
// better than one dropped.
constexpr double earliness = 0.0005;
} // namespace

AnimationClock& AnimationClock::shared() {
    return Shared<AnimationClock>::instance();
}

AnimationClock::AnimationClock() {
    timer.setSingleShot(true);
    timer.setTimerType(Qt::PreciseTimer);
    QObject::connect(&timer, &QTimer::timeout, &timer, [this] {
        tickDue(now() + earliness);
        arm();
    });
}

double AnimationClock::now() const {
    return heldTime ? *heldTime : Clock::monotonicSeconds();
}

double AnimationClock::nextFrame() const {
    // A tick that came a hair early belongs to the frame it was meant for.
    return (std::floor((now() + 2 * earliness) * framesPerSecond) + 1) / framesPerSecond;
}

void AnimationClock::schedule(Client& client, double due) {
    const auto known = std::find_if(waiting.begin(), waiting.end(),
                                    [&](const Waiting& entry) { return entry.client == &client; });
    if (known == waiting.end())
        waiting.push_back({&client, due});
    else
        known->due = std::min(known->due, due);
    arm();
}

void AnimationClock::cancel(Client& client) {
    std::erase_if(waiting, [&](const Waiting& entry) { return entry.client == &client; });
    arm();
}

void AnimationClock::tickDue(double until) {
    // One at a time: a tick may schedule or cancel others, and those of the same instant belong to this
    // round.
    const std::size_t limit = 4 * waiting.size() + 16;
    for (std::size_t round = 0; round < limit; ++round) {
        const auto due = std::min_element(waiting.begin(), waiting.end(),
                                          [](const Waiting& a, const Waiting& b) { return a.due < b.due; });
        if (due == waiting.end() || due->due > until)
            return;
        Client& client = *due->client;
        waiting.erase(due);
        if (const std::optional<double> next = client.tick(now()))
            schedule(client, *next);
    }
}

void AnimationClock::arm() {
    const auto next = std::min_element(waiting.begin(), waiting.end(),
                                       [](const Waiting& a, const Waiting& b) { return a.due < b.due; });
    if (next == waiting.end() || heldTime) {
        timer.stop();
        return;
    }
    const double delay = std::clamp((next->due - now()) * 1000, 0.0, 86400e3);
    timer.start(static_cast<int>(std::lround(delay)));
}

void AnimationClock::hold() {
    heldTime = 3600;
    timer.stop();
}

void AnimationClock::advance(double seconds) {
    const double target = now() + seconds;
    for (;;) {
        const auto next = std::min_element(waiting.begin(), waiting.end(),
                                           [](const Waiting& a, const Waiting& b) { return a.due < b.due; });
        if (next == waiting.end() || next->due > target)
            break;
        heldTime = std::max(now(), next->due);
        tickDue(now());
    }
    heldTime = target;
}

} // namespace marrowfin::chrome
