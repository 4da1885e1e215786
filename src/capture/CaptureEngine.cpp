#include "capture/CaptureEngine.h"

#include "base/Invariant.h"
#include "capture/CaptureError.h"
#include "platform/Services.h"

namespace marrowfin::capture {

using namespace imaging;
using namespace platform;

namespace {

// The frame's pixels as they came, with no colour matching; null when memory runs out.
QImage imageOf(const QImage& pixels) {
    switch (pixels.format()) {
    case QImage::Format_RGB32:
    case QImage::Format_ARGB32_Premultiplied:
        return pixels;
    default:
        return pixels.convertToFormat(pixels.hasAlphaChannel() ? QImage::Format_ARGB32_Premultiplied
                                                               : QImage::Format_RGB32);
    }
}

} // namespace

std::shared_ptr<CaptureEngine> CaptureEngine::make() {
    return std::shared_ptr<CaptureEngine>(new CaptureEngine);
}

CaptureEngine::CaptureEngine()
    : sampleQueue(std::make_shared<SerialQueue>(QStringLiteral("io.tessaly.marrowfin.capture"),
                                                SerialQueue::QualityOfService::UserInitiated)) {}

Outcome<Image> CaptureEngine::capture(const ContentFilter& filter, const StreamConfiguration& configuration) {
    auto [settler, outcome] = makeOutcome<Image>();
    {
        const std::lock_guard hold(lock);
        MARROWFIN_INVARIANT(!continuation && !stream);
        continuation = settler;
    }
    const std::shared_ptr<ScreenStream> made = services().screenSource.makeStream(filter, configuration);
    // The stream's handler holds the engine, which holds the stream until it has finished: one of the two
    // always ends it, and then both go.
    const Result<void> added = made->addOutput(
        OutputType::Screen, sampleQueue,
        [engine = shared_from_this()](const Frame& frame, OutputType type) { engine->receive(frame, type); });
    if (!added) {
        finish(tl::unexpected(added.error()));
        return outcome;
    }
    made->setEndedHandler([engine = weak_from_this()](const std::optional<Error>& error) {
        if (const auto alive = engine.lock())
            alive->finish(tl::unexpected(error.value_or(toError(CaptureError::noImageBuffer))));
    });
    {
        const std::lock_guard hold(lock);
        stream = made;
    }
    made->startCapture().then([engine = weak_from_this()](const Result<void>& started) {
        if (const auto alive = engine.lock(); alive && !started)
            alive->finish(tl::unexpected(started.error()));
    });
    return outcome;
}

void CaptureEngine::receive(const Frame& frame, OutputType type) {
    if (type != OutputType::Screen)
        return;
    if (!frame.valid || frame.sampleCount < 1 || frame.status != FrameStatus::Complete)
        return;
    if (frame.pixels.isNull()) {
        finish(failure(CaptureError::noImageBuffer));
        return;
    }
    QImage pixels = imageOf(frame.pixels);
    if (pixels.isNull()) {
        finish(failure(CaptureError::imageCreationFailed));
        return;
    }
    finish(Image::captured(std::move(pixels)));
}

void CaptureEngine::finish(Result<Image> result) {
    std::shared_ptr<ScreenStream> stopping;
    std::optional<Settler<Image>> resuming;
    {
        const std::lock_guard hold(lock);
        if (!continuation)
            return;
        resuming.swap(continuation);
        stopping.swap(stream);
    }
    if (stopping)
        stopping->stopCapture();
    // By the time the flow has resumed, the encoding is on its way.
    if (result)
        result->startEncoding();
    resuming->settle(std::move(result));
}

} // namespace marrowfin::capture
