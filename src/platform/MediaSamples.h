// Pictures and sound with their times, as they go into a movie. Times count from any fixed moment, the same
// for both. Values; any thread.
#pragma once

#include "platform/ScreenSource.h"

#include <chrono>
#include <vector>

namespace marrowfin::platform {

struct VideoSample {
    QImage pixels; // as in Frame
    PixelFormat format = PixelFormat::Opaque;
    std::chrono::nanoseconds presentationTime{0};
    std::chrono::nanoseconds duration{0}; // 0 where it isn't known
};

struct AudioSample {
    int sampleRate = 48000;
    int channelCount = 2;
    std::vector<float> interleaved; // -1 to 1
    std::chrono::nanoseconds presentationTime{0};
};

} // namespace marrowfin::platform
