#include "platform/fake/FakeScreenSource.h"

#include "base/Invariant.h"

namespace marrowfin::fake {

using namespace platform;

Result<void> FakeStream::addOutput(OutputType, std::shared_ptr<SerialQueue> sampleQueue,
                                   FrameHandler handler) {
    if (addOutputError)
        return tl::unexpected(*addOutputError);
    queue = std::move(sampleQueue);
    frameHandler = std::move(handler);
    return {};
}

Outcome<void> FakeStream::startCapture() {
    ++startCount;
    MARROWFIN_INVARIANT(queue != nullptr);
    auto [settler, outcome] = makeOutcome<void>();
    queue->async([this, settler = settler, error = startError] {
        if (error)
            settler.settle(tl::unexpected(*error));
        else if (!lateStartError)
            settler.settle({});
        if (!error && onStart)
            onStart(*this);
        if (!error && lateStartError)
            queue->async([settler, late = *lateStartError] { settler.settle(tl::unexpected(late)); });
    });
    return outcome;
}

Outcome<void> FakeStream::stopCapture() {
    ++stopCount;
    return settled<void>({});
}

void FakeStream::endByItself(std::optional<Error> error) {
    MARROWFIN_INVARIANT(queue != nullptr);
    queue->async([telling = std::exchange(ended, nullptr), error = std::move(error)] {
        if (telling)
            telling(error);
    });
}

void FakeStream::deliver(const Frame& frame, OutputType type) {
    MARROWFIN_INVARIANT(queue != nullptr);
    queue->async([handler = frameHandler, frame, type] { handler(frame, type); });
}

void FakeStream::finishDeliveries() {
    // What is played at the start is queued by a block of the queue itself.
    queue->sync([] {});
    queue->sync([] {});
}

FakeScreenSource::FakeScreenSource() {
    paint = [](const ContentFilter&, const StreamConfiguration& configuration) {
        QImage pixels(configuration.width, configuration.height, QImage::Format_RGB32);
        pixels.fill(Qt::darkCyan);
        return pixels;
    };
    prepare = [this](FakeStream& made) {
        made.onStart = [this](FakeStream& stream) {
            Frame frame;
            frame.pixels = paint(stream.filter, stream.configuration);
            stream.deliver(frame);
        };
    };
}

Outcome<ShareableContent> FakeScreenSource::content() {
    ++contentRequests;
    return late.give<ShareableContent>([this]() -> Result<ShareableContent> {
        if (contentError)
            return tl::unexpected(*contentError);
        return shown;
    });
}

std::shared_ptr<ScreenStream> FakeScreenSource::makeStream(const ContentFilter& filter,
                                                           const StreamConfiguration& configuration) {
    auto stream = std::make_shared<FakeStream>();
    stream->filter = filter;
    stream->configuration = configuration;
    if (prepare)
        prepare(*stream);
    streams.push_back(stream);
    return stream;
}

Display FakeScreenSource::addDisplay(std::uint32_t id, const QRectF& frame, int scale) {
    Display display;
    display.displayID = id;
    display.frame = ScreenRect{frame};
    display.modeWidth = static_cast<int>(frame.width());
    display.pixelWidth = display.modeWidth * scale;
    shown.displays.push_back(display);
    return display;
}

Window FakeScreenSource::addWindow(std::uint32_t id, std::int64_t pid, const QRectF& frame) {
    Window window;
    window.windowID = id;
    window.ownerPID = pid;
    window.frame = ScreenRect{frame};
    shown.windows.push_back(window);
    return window;
}

} // namespace marrowfin::fake
