// The frames of a stream after its first: a complete frame when something in the picture changed, one idle
// frame when it became still. It sleeps until the server tells of a change; the pointer, of which the server
// doesn't tell, is looked at once a frame, and only when the cursor is shown. run() belongs to one thread,
// the rest to any.
#pragma once

#include "platform/x11/capture/FrameGrab.h"

#include <atomic>
#include <chrono>
#include <functional>

namespace marrowfin::x11 {

class StreamLoop {
public:
    StreamLoop();
    ~StreamLoop();
    StreamLoop(const StreamLoop&) = delete;
    StreamLoop& operator=(const StreamLoop&) = delete;

    using Sink = std::function<void(const platform::Frame&)>;
    // Returns when told to stop, or with the error that ended it.
    std::optional<Error> run(const QByteArray& displayName, const LayoutBoard& layouts,
                             const platform::ContentFilter& filter,
                             const platform::StreamConfiguration& configuration, const Sink& sink);
    void stop();
    // Tells that the taker is done with a frame. With too many on their way the next one waits.
    void frameTaken();

private:
    class Session;
    void wake() const;

    int wakeDescriptor;
    std::atomic<bool> stopping = false;
    std::atomic<int> onTheirWay = 0;
};

} // namespace marrowfin::x11
