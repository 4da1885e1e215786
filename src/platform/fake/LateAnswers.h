// Answers that come when the test lets them, as those of a desktop that is slow or asks its user first. What
// is answered is found out then, not when it was asked. Main thread; tests only.
#pragma once

#include "base/Outcome.h"

#include <functional>
#include <utility>
#include <vector>

namespace marrowfin::fake {

class LateAnswers {
public:
    // When set, answers wait for release().
    bool hold = false;

    template <class T>
    Outcome<T> give(std::function<Result<T>()> answer) {
        if (!hold)
            return settled<T>(answer());
        auto [settler, outcome] = makeOutcome<T>();
        waiting.push_back([settler = settler, answer = std::move(answer)] { settler.settle(answer()); });
        return outcome;
    }
    std::size_t waitingCount() const { return waiting.size(); }
    void release() {
        for (const auto& each : std::exchange(waiting, {}))
            each();
    }

private:
    std::vector<std::function<void()>> waiting;
};

} // namespace marrowfin::fake
