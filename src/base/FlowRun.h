// One flow that a scope started, with the flows that it awaits: a chain of frames of which the innermost one
// waits or runs. The plumbing of base/Flow.h. Main thread; only the memory of its owner counts is shared.
#pragma once

#include <QtGlobal> // moc fails on <coroutine> unless it has seen a header of the toolkit's before
#include <coroutine>
#include <functional>
#include <memory>

namespace marrowfin::detail {

class FlowRun : public std::enable_shared_from_this<FlowRun> {
public:
    // Owns the outermost frame, which owns the inner ones.
    explicit FlowRun(std::coroutine_handle<> outermost) : outermost(outermost) {}
    FlowRun(const FlowRun&) = delete;
    FlowRun& operator=(const FlowRun&) = delete;
    ~FlowRun();

    // Goes on with a frame that waits, until the chain waits again or is through; does nothing when the run
    // has ended. Frames hand over to each other through continueWith() and not on each other's stack, so
    // that none is destroyed while a call of it is still open and no loop of awaits makes the stack grow.
    void resume(std::coroutine_handle<> frame);
    // The frame that runs next; none: the chain is through.
    void continueWith(std::coroutine_handle<> frame);
    // Destroys the frames: at once, or when the one that is running waits.
    void end();
    bool isEnding() const { return ending; }

    std::function<void()> onThrough; // the last frame has returned; not called by end()

private:
    void destroy();

    std::coroutine_handle<> outermost;
    std::coroutine_handle<> next;
    bool running = false;
    bool through = false;
    bool ending = false;
};

} // namespace marrowfin::detail
