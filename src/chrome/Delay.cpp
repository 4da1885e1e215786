#include "chrome/Delay.h"

#include <utility>

namespace marrowfin::chrome {

void Delay::start(double seconds, std::function<void()> newBlock) {
    stop();
    block = std::move(newBlock);
    due = AnimationClock::shared().now() + seconds;
    AnimationClock::shared().schedule(*this, due);
}

void Delay::stop() {
    if (!block)
        return;
    block = nullptr;
    AnimationClock::shared().cancel(*this);
}

std::optional<double> Delay::tick(double) {
    const std::function<void()> run = std::exchange(block, nullptr);
    run();
    return std::nullopt;
}

} // namespace marrowfin::chrome
