#include "platform/x11/capture/X11ScreenStream.h"

#include "platform/x11/server/ConnectionLoss.h"

namespace marrowfin::x11 {

using namespace platform;

X11ScreenStream::X11ScreenStream(std::shared_ptr<GrabLink> link, ContentFilter filter,
                                 StreamConfiguration configuration)
    : link(std::move(link)), filter(filter), configuration(std::move(configuration)),
      loopQueue(QStringLiteral("io.tessaly.marrowfin.stream"),
                SerialQueue::QualityOfService::UserInteractive) {}

Result<void> X11ScreenStream::addOutput(OutputType type, std::shared_ptr<SerialQueue> sampleQueue,
                                        FrameHandler handler) {
    const std::lock_guard hold(lock);
    if (phase != Phase::Fresh)
        return failure(QStringLiteral("The capture runs already."));
    outputs.push_back(
        {type, std::move(sampleQueue), std::make_shared<const FrameHandler>(std::move(handler))});
    return {};
}

void X11ScreenStream::setEndedHandler(EndedHandler handler) {
    const std::lock_guard hold(lock);
    ended = std::move(handler);
}

Outcome<void> X11ScreenStream::startCapture() {
    {
        const std::lock_guard hold(lock);
        if (phase == Phase::Fresh)
            phase = Phase::First;
    }
    auto [settler, outcome] = makeOutcome<void>();
    firstQueue().async([self = shared_from_this(), settler = settler] { self->first(settler); });
    return outcome;
}

SerialQueue& X11ScreenStream::firstQueue() {
    return std::holds_alternative<WindowFilter>(filter) ? loopQueue : link->queue();
}

Result<Frame> X11ScreenStream::firstFrame() {
    if (std::holds_alternative<DisplayFilter>(filter))
        return link->grabber().and_then([this](Grabber* grabber) {
            return FrameGrab(*grabber, link->layouts(), filter, configuration).grab();
        });
    auto connection = Connection::open(link->displayName());
    if (!connection)
        return tl::unexpected(connection.error());
    Grabber grabber(**connection, SegmentPool::Reuse::No);
    return FrameGrab(grabber, link->layouts(), filter, configuration).grab();
}

void X11ScreenStream::first(const Settler<void>& started) {
    if (stopped) {
        started.settle(failure(QStringLiteral("The capture was stopped before it began.")));
        return;
    }
    const Result<Frame> frame = firstFrame();
    if (!frame) {
        // The server may be gone: of that the program tells, and ends, before anybody hears of this.
        link->queue().async([link = link, started, error = frame.error()] {
            [[maybe_unused]] const auto looked = link->grabber();
            link->failed();
            started.settle(tl::unexpected(error));
        });
        return;
    }
    started.settle({});
    // Most takers stop within this frame: a connection for more is only made once they haven't.
    deliver(*frame, [self = shared_from_this()] { self->goOn(); });
}

void X11ScreenStream::goOn() {
    const std::lock_guard hold(lock);
    if (phase != Phase::First)
        return;
    phase = Phase::Looping;
    loopQueue.async([self = shared_from_this()] {
        const auto sink = [&self](const Frame& frame) {
            self->deliver(frame, [self] { self->loop.frameTaken(); });
        };
        const auto error = self->loop.run(self->link->displayName(), self->link->layouts(), self->filter,
                                          self->configuration, sink);
        if (error)
            self->endedByItself(*error);
    });
}

void X11ScreenStream::endedByItself(const Error& error) {
    postToMain([] { ConnectionLoss::lookNow(); });
    EndedHandler telling;
    std::vector<Output> ending;
    {
        const std::lock_guard hold(lock);
        telling.swap(ended);
        ending.swap(outputs);
    }
    if (telling && !stopped)
        telling(error);
}

std::vector<X11ScreenStream::Output> X11ScreenStream::screenOutputs() {
    const std::lock_guard hold(lock);
    std::vector<Output> found;
    for (const Output& output : outputs) {
        if (output.type == OutputType::Screen)
            found.push_back(output);
    }
    return found;
}

void X11ScreenStream::deliver(const Frame& frame, std::function<void()> afterwards) {
    const std::vector<Output> takers = screenOutputs();
    for (std::size_t i = 0; i < takers.size(); ++i) {
        const bool last = i + 1 == takers.size();
        takers[i].queue->async([self = shared_from_this(), taker = takers[i], frame,
                                done = last ? std::move(afterwards) : std::function<void()>()] {
            if (!self->stopped)
                (*taker.handler)(frame, OutputType::Screen);
            if (done)
                done();
        });
    }
}

Outcome<void> X11ScreenStream::stopCapture() {
    auto [settler, outcome] = makeOutcome<void>();
    const std::lock_guard hold(lock);
    const bool looping = phase == Phase::Looping;
    stopped = true;
    loop.stop();
    if (!looping)
        phase = Phase::Stopped;
    auto end = [self = shared_from_this(), settler = settler] { self->finish(settler); };
    (looping ? loopQueue : firstQueue()).async(std::move(end));
    return outcome;
}

// On the queue that frames came from: no further one is handed out. Those handed out before are waited for by
// going through their queues.
void X11ScreenStream::finish(const Settler<void>& settler) {
    std::vector<Output> ending;
    EndedHandler unused;
    {
        const std::lock_guard hold(lock);
        ending.swap(outputs);
        unused.swap(ended);
    }
    if (ending.empty()) {
        settler.settle({});
        return;
    }
    auto left = std::make_shared<std::atomic<std::size_t>>(ending.size());
    for (Output& output : ending) {
        // Held here too: the block may be the queue's last owner and gone before async() returns.
        const std::shared_ptr<SerialQueue> queue = output.queue;
        queue->async([output = std::move(output), left, settler] {
            if (--*left == 0)
                settler.settle({});
        });
    }
}

} // namespace marrowfin::x11
