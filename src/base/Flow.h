// A flow is a coroutine of the main thread that awaits outcomes and other flows, and never outlives who it
// works for. Calling one runs nothing yet; it runs when another flow awaits it, or when a FlowScope starts
// it:
//
//     Flow<Result<Image>> Manager::areaCapture() { const Result<Image> image = co_await grab(); ... }
//     void Manager::captureArea() { flows.start(areaCapture()); }     // `FlowScope flows` is the last member
//
// When the scope goes, its flows end where they wait and are never resumed: the innermost frame goes first,
// the locals and arguments of each in the reverse order of their making, on the main thread, inside
// ~FlowScope (or end()). What awaits the outcome of start() gets Error::Kind::Dropped. A flow that is running
// while its scope goes (it closed its own owner) ends at its next co_await, so behind that it may use its
// owner no more.
//
// GCC 12 loses a frame when co_await stands in the condition of an `if` or in `? :`; give the answer a name.
#pragma once

#include "base/FlowRun.h"
#include "base/Outcome.h"

#include <optional>
#include <utility>
#include <vector>

namespace marrowfin {

template <class T>
class Flow;

namespace detail {

struct FlowPromiseBase {
    FlowRun* run = nullptr;
    std::coroutine_handle<> caller; // the flow that awaits this one

    // Hands over to the flow that waits for this one.
    struct FinalAwaiter {
        bool await_ready() const noexcept { return false; }
        template <class Promise>
        void await_suspend(std::coroutine_handle<Promise> ending) const noexcept {
            FlowPromiseBase& promise = ending.promise();
            promise.run->continueWith(promise.caller);
        }
        void await_resume() const noexcept {}
    };

    std::suspend_always initial_suspend() const noexcept { return {}; }
    FinalAwaiter final_suspend() const noexcept { return {}; }
    [[noreturn]] void unhandled_exception() const noexcept { std::terminate(); }

    template <class T>
    auto await_transform(Outcome<T> outcome);
    template <class T>
    auto await_transform(Flow<T>&& flow);
};

template <class T>
struct FlowPromise : FlowPromiseBase {
    std::optional<T> value;

    Flow<T> get_return_object();
    void return_value(T result) { value.emplace(std::move(result)); }
    T take() { return *std::move(value); }
};

template <>
struct FlowPromise<void> : FlowPromiseBase {
    Flow<void> get_return_object();
    void return_void() const {}
    void take() const {}
};

} // namespace detail

// Owns its frame: one that is neither awaited nor started does nothing and goes.
template <class T = void>
class [[nodiscard]] Flow {
public:
    using promise_type = detail::FlowPromise<T>;
    using Handle = std::coroutine_handle<promise_type>;

    explicit Flow(Handle frame) : frame(frame) {}
    Flow(Flow&& other) noexcept : frame(std::exchange(other.frame, nullptr)) {}
    Flow& operator=(Flow&&) = delete;
    ~Flow() {
        if (frame)
            frame.destroy();
    }

    Handle handle() const { return frame; }
    // Whoever takes it destroys it.
    Handle release() { return std::exchange(frame, nullptr); }

private:
    Handle frame;
};

namespace detail {

template <class T>
Flow<T> FlowPromise<T>::get_return_object() {
    return Flow<T>(std::coroutine_handle<FlowPromise>::from_promise(*this));
}
inline Flow<void> FlowPromise<void>::get_return_object() {
    return Flow<void>(std::coroutine_handle<FlowPromise>::from_promise(*this));
}

// Waits for an outcome. When the frame that it stands in goes, the outcome forgets it; an answer that is on
// its way already finds that its run has gone.
template <class T>
class OutcomeAwaiter {
public:
    OutcomeAwaiter(Outcome<T> outcome, FlowRun& run) : state(std::move(outcome.state)), run(run) {}
    OutcomeAwaiter(const OutcomeAwaiter&) = delete;
    OutcomeAwaiter& operator=(const OutcomeAwaiter&) = delete;
    ~OutcomeAwaiter() {
        if (waiting)
            state->forgetWaiter();
    }

    bool await_ready() const { return state->isSettled() && !run.isEnding(); }
    void await_suspend(std::coroutine_handle<> frame) {
        if (run.isEnding())
            return;
        waiting = true;
        state->whenSettled([weak = run.weak_from_this(), frame] {
            if (const std::shared_ptr<FlowRun> alive = weak.lock())
                alive->resume(frame);
        });
    }
    Result<T> await_resume() {
        waiting = false;
        return state->take();
    }

private:
    std::shared_ptr<OutcomeState<T>> state;
    FlowRun& run;
    bool waiting = false;
};

// Runs a flow within the one that awaits it, and owns its frame.
template <class T>
class FlowAwaiter {
public:
    FlowAwaiter(Flow<T>&& inner, FlowRun& run) : inner(std::move(inner)), run(run) {}
    FlowAwaiter(const FlowAwaiter&) = delete;
    FlowAwaiter& operator=(const FlowAwaiter&) = delete;
    ~FlowAwaiter() = default;

    bool await_ready() const { return false; }
    void await_suspend(std::coroutine_handle<> frame) {
        inner.handle().promise().run = &run;
        inner.handle().promise().caller = frame;
        run.continueWith(inner.handle());
    }
    T await_resume() { return inner.handle().promise().take(); }

private:
    Flow<T> inner;
    FlowRun& run;
};

template <class T>
auto FlowPromiseBase::await_transform(Outcome<T> outcome) {
    return OutcomeAwaiter<T>(std::move(outcome), *run);
}
template <class T>
auto FlowPromiseBase::await_transform(Flow<T>&& flow) {
    return FlowAwaiter<T>(std::move(flow), *run);
}

// What a flow that returns T is to those outside: a Result is an outcome's own answer.
template <class T>
struct Answered {
    using Type = T;
};
template <class T>
struct Answered<Result<T>> {
    using Type = T;
};

template <class T, class A = typename Answered<T>::Type>
Flow<> settling(Flow<T> flow, Settler<A> settler) {
    if constexpr (std::is_void_v<T>) {
        co_await std::move(flow);
        settler.settle({});
    } else {
        settler.settle(co_await std::move(flow));
    }
}

} // namespace detail

// Owns flows that run. A member of the object that the flows work for, and the last one: what they use goes
// after them.
class FlowScope {
public:
    FlowScope() = default;
    FlowScope(const FlowScope&) = delete;
    FlowScope& operator=(const FlowScope&) = delete;
    ~FlowScope() { end(); }

    // Runs the flow up to its first wait, before returning. The outcome has what the flow returned; it may be
    // left alone. A scope that has ended starts nothing.
    template <class T>
    Outcome<typename detail::Answered<T>::Type> start(Flow<T> flow) {
        auto [settler, outcome] = makeOutcome<typename detail::Answered<T>::Type>();
        run(detail::settling(std::move(flow), std::move(settler)));
        return outcome;
    }
    // Ends what runs, for good.
    void end();
    bool isIdle() const { return runs.empty(); }

private:
    void run(Flow<> flow);

    std::vector<std::shared_ptr<detail::FlowRun>> runs;
    bool ended = false;
};

} // namespace marrowfin
