#include "base/Flow.h"

#include "base/Invariant.h"

namespace marrowfin {

using detail::FlowRun;

void FlowScope::run(Flow<> flow) {
    MARROWFIN_INVARIANT(isMainThread());
    if (ended)
        return;
    const Flow<>::Handle frame = flow.release();
    const auto begun = std::make_shared<FlowRun>(frame);
    begun->onThrough = [this, raw = begun.get()] {
        std::erase_if(runs, [raw](const std::shared_ptr<FlowRun>& each) { return each.get() == raw; });
    };
    frame.promise().run = begun.get();
    runs.push_back(begun);
    begun->resume(frame);
}

void FlowScope::end() {
    ended = true;
    // The youngest first. What a frame owns may reach this scope again while it goes.
    while (!runs.empty()) {
        const std::shared_ptr<FlowRun> youngest = std::move(runs.back());
        runs.pop_back();
        youngest->end();
    }
}

} // namespace marrowfin
