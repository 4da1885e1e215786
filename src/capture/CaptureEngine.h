// Takes one frame: starts a stream, keeps the first complete frame, stops the stream and hands the frame
// back. One engine per capture; it is kept alive by its stream until it has finished. Frames arrive on the
// sample queue.
#pragma once

#include "imaging/Image.h"
#include "platform/ScreenSource.h"

#include <memory>
#include <mutex>

namespace marrowfin::capture {

class CaptureEngine : public std::enable_shared_from_this<CaptureEngine> {
public:
    static std::shared_ptr<CaptureEngine> make();

    // Once per engine. The image has one size unit per pixel, and its encoding has begun. A stream that never
    // delivers a complete frame leaves the caller waiting.
    Outcome<imaging::Image> capture(const platform::ContentFilter& filter,
                                    const platform::StreamConfiguration& configuration);

private:
    CaptureEngine();
    void receive(const platform::Frame& frame, platform::OutputType type);
    void finish(Result<imaging::Image> result);

    // Guards stream and continuation; never held while calling into the stream or settling.
    std::mutex lock;
    std::shared_ptr<platform::ScreenStream> stream;
    std::optional<Settler<imaging::Image>> continuation;
    std::shared_ptr<SerialQueue> sampleQueue;
};

} // namespace marrowfin::capture
