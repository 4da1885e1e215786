#include "base/FlowRun.h"

#include "base/Invariant.h"

#include <utility>

namespace marrowfin::detail {

FlowRun::~FlowRun() {
    MARROWFIN_INVARIANT(!outermost);
}

void FlowRun::resume(std::coroutine_handle<> frame) {
    if (ending)
        return;
    MARROWFIN_INVARIANT(!running);
    const std::shared_ptr<FlowRun> self = shared_from_this();
    running = true;
    next = frame;
    while (next && !ending)
        std::exchange(next, nullptr).resume();
    running = false;
    if (!through && !ending)
        return;
    // Told before the frames go: what they own may take the scope along.
    if (const std::function<void()> tell = std::exchange(onThrough, nullptr); tell && !ending)
        tell();
    destroy();
}

void FlowRun::continueWith(std::coroutine_handle<> frame) {
    next = frame;
    through = !frame;
}

void FlowRun::end() {
    if (std::exchange(ending, true) || running)
        return;
    destroy();
}

void FlowRun::destroy() {
    ending = true;
    onThrough = nullptr;
    if (const std::coroutine_handle<> frames = std::exchange(outermost, nullptr))
        frames.destroy();
}

} // namespace marrowfin::detail
