// Plays displays, windows and frames, and records which streams were asked for. Tests only.
#pragma once

#include "platform/ScreenSource.h"
#include "platform/fake/LateAnswers.h"

#include <mutex>

namespace marrowfin::fake {

// Test's side of one stream. Frames go to the sample queue as real ones do.
class FakeStream : public platform::ScreenStream {
public:
    platform::ContentFilter filter;
    platform::StreamConfiguration configuration;

    // What the calls answer.
    std::optional<Error> addOutputError;
    std::optional<Error> startError;
    // The start is told to have failed, but only after the frames that onStart plays.
    std::optional<Error> lateStartError;
    // Called on the sample queue after the start; plays frames, for instance.
    std::function<void(FakeStream&)> onStart;

    int startCount = 0;
    int stopCount = 0;

    Result<void> addOutput(platform::OutputType type, std::shared_ptr<SerialQueue> sampleQueue,
                           FrameHandler handler) override;
    void setEndedHandler(EndedHandler handler) override { ended = std::move(handler); }
    Outcome<void> startCapture() override;
    Outcome<void> stopCapture() override;

    // Plays a window that closed, or a user who took the permission back. On the sample queue, after what was
    // delivered before.
    void endByItself(std::optional<Error> error = std::nullopt);
    // On the sample queue, in order.
    void deliver(const platform::Frame& frame, platform::OutputType type = platform::OutputType::Screen);
    // Returns when everything played so far has been taken.
    void finishDeliveries();

private:
    std::shared_ptr<SerialQueue> queue;
    FrameHandler frameHandler;
    EndedHandler ended;
};

class FakeScreenSource : public platform::ScreenSource {
public:
    platform::ShareableContent shown;
    std::optional<Error> contentError;
    int contentRequests = 0;
    LateAnswers late; // the content
    // Every stream made, in order.
    std::vector<std::shared_ptr<FakeStream>> streams;
    // Prepares a stream when it is made; the default delivers one complete frame of the asked size, filled by
    // paint.
    std::function<void(FakeStream&)> prepare;
    // Pixels of the default frame.
    std::function<QImage(const platform::ContentFilter&, const platform::StreamConfiguration&)> paint;

    FakeScreenSource();
    Outcome<platform::ShareableContent> content() override;
    std::shared_ptr<platform::ScreenStream>
    makeStream(const platform::ContentFilter& filter,
               const platform::StreamConfiguration& configuration) override;

    // A display of this size in points at this scale, appended to the list.
    platform::Display addDisplay(std::uint32_t id, const QRectF& frame, int scale = 1);
    platform::Window addWindow(std::uint32_t id, std::int64_t pid, const QRectF& frame);
};

} // namespace marrowfin::fake
