// One running capture of a display or a window. A display's first frame comes from the shared grab queue. A
// window's, which may have to wait for the window's program, and all further ones come from a connection and
// thread of the stream's own (StreamLoop), so that they hold nothing else up. Frames
// have native pixels, never resampled: a display's frame has the configuration's size, a window's the size
// that the window has. Outputs of type Audio are accepted and get nothing.
//
// Called from any thread; nothing here waits. Blocks in the queues keep the stream alive from startCapture()
// until stopCapture() has finished.
#pragma once

#include "platform/ScreenSource.h"
#include "platform/x11/capture/GrabLink.h"
#include "platform/x11/capture/StreamLoop.h"

#include <atomic>
#include <mutex>

namespace marrowfin::x11 {

class X11ScreenStream final : public platform::ScreenStream,
                              public std::enable_shared_from_this<X11ScreenStream> {
public:
    X11ScreenStream(std::shared_ptr<GrabLink> link, platform::ContentFilter filter,
                    platform::StreamConfiguration configuration);

    Result<void> addOutput(platform::OutputType type, std::shared_ptr<SerialQueue> sampleQueue,
                           FrameHandler handler) override;
    void setEndedHandler(EndedHandler handler) override;
    Outcome<void> startCapture() override;
    Outcome<void> stopCapture() override;

private:
    struct Output {
        platform::OutputType type;
        std::shared_ptr<SerialQueue> queue;
        std::shared_ptr<const FrameHandler> handler;
    };
    enum class Phase { Fresh, First, Looping, Stopped };

    // Where the first frame comes from.
    SerialQueue& firstQueue();
    Result<platform::Frame> firstFrame();
    void first(const Settler<void>& started);
    // Runs the loop on the stream's own thread, unless the stream was stopped meanwhile.
    void goOn();
    void deliver(const platform::Frame& frame, std::function<void()> afterwards);
    void finish(const Settler<void>& settler);
    // The loop ended although nobody stopped it.
    void endedByItself(const Error& error);
    std::vector<Output> screenOutputs();

    std::shared_ptr<GrabLink> link;
    platform::ContentFilter filter;
    platform::StreamConfiguration configuration;
    std::mutex lock;
    Phase phase = Phase::Fresh;
    std::vector<Output> outputs;
    EndedHandler ended;
    std::atomic<bool> stopped = false;
    StreamLoop loop;
    SerialQueue loopQueue;
};

} // namespace marrowfin::x11
