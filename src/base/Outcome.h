// A one-shot result that may settle before anyone awaits it. The maker keeps the Settler, the taker the
// Outcome:
//
//     auto [settler, outcome] = makeOutcome<QRectF>();
//     view.onComplete = [settler](QRectF rect) { settler.settle(rect); };
//     Result<QRectF> rect = co_await outcome;
//
// Settling is thread-safe and only the first one counts. The flow that awaits it (base/Flow.h) resumes on the
// main thread, from the event loop (never from inside settle()). When the last Settler goes without settling,
// the outcome is Error::Kind::Dropped, so a flow never hangs on a sender that died. One flow may await an
// outcome.
#pragma once

#include "base/Invariant.h"
#include "base/MainThread.h"
#include "base/Result.h"

#include <QPointer>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>

namespace marrowfin {

namespace detail {

template <class T>
class OutcomeAwaiter; // base/Flow.h

template <class T>
struct OutcomeState {
    std::mutex lock;
    std::optional<Result<T>> result;
    std::function<void()> waiter;

    void settle(Result<T> value) {
        std::function<void()> wake;
        {
            const std::lock_guard hold(lock);
            if (result)
                return;
            result.emplace(std::move(value));
            wake = std::move(waiter);
            waiter = nullptr;
        }
        if (wake)
            postToMain(std::move(wake));
    }
    bool isSettled() {
        const std::lock_guard hold(lock);
        return result.has_value();
    }
    // Calls the block from the main loop once settled; at once is never inside this call.
    void whenSettled(std::function<void()> block) {
        {
            const std::lock_guard hold(lock);
            MARROWFIN_INVARIANT(!waiter);
            if (!result) {
                waiter = std::move(block);
                return;
            }
        }
        postToMain(std::move(block));
    }
    // Whoever waits has gone; another may wait in its place.
    void forgetWaiter() {
        std::function<void()> forgotten;
        const std::lock_guard hold(lock);
        forgotten = std::exchange(waiter, nullptr);
    }
    Result<T> take() {
        const std::lock_guard hold(lock);
        MARROWFIN_INVARIANT(result.has_value());
        return *result;
    }
};

// Lives as long as any copy of the settler.
template <class T>
struct SettlerLife {
    std::shared_ptr<OutcomeState<T>> state;
    ~SettlerLife() { state->settle(failure(QStringLiteral("dropped"), Error::Kind::Dropped)); }
};

} // namespace detail

template <class T>
class Settler {
public:
    explicit Settler(std::shared_ptr<detail::OutcomeState<T>> state)
        : life(std::make_shared<detail::SettlerLife<T>>(std::move(state))) {}

    void settle(Result<T> value) const { life->state->settle(std::move(value)); }
    bool isSettled() const { return life->state->isSettled(); }

private:
    std::shared_ptr<detail::SettlerLife<T>> life;
};

template <class T>
class Outcome {
public:
    explicit Outcome(std::shared_ptr<detail::OutcomeState<T>> state) : state(std::move(state)) {}

    bool isSettled() const { return state->isSettled(); }
    // For callers that aren't flows: the block gets the result on the main thread, from the event loop. It
    // doesn't run when the context, an object of the main thread, has gone by then.
    void then(const QObject* context, std::function<void(Result<T>)> block) const {
        state->whenSettled([state = state, guard = QPointer(context), block = std::move(block)] {
            if (guard)
                block(state->take());
        });
    }
    // For a block that owns all it touches.
    void then(std::function<void(Result<T>)> block) const {
        state->whenSettled([state = state, block = std::move(block)] { block(state->take()); });
    }

private:
    friend class detail::OutcomeAwaiter<T>;
    std::shared_ptr<detail::OutcomeState<T>> state;
};

template <class T>
struct OutcomePair {
    Settler<T> settler;
    Outcome<T> outcome;
};

template <class T>
OutcomePair<T> makeOutcome() {
    auto state = std::make_shared<detail::OutcomeState<T>>();
    return {Settler<T>(state), Outcome<T>(state)};
}

// An outcome that is settled from the start.
template <class T>
Outcome<T> settled(Result<T> value) {
    auto state = std::make_shared<detail::OutcomeState<T>>();
    state->settle(std::move(value));
    return Outcome<T>(state);
}

} // namespace marrowfin
