// What the desktop plays, as samples. Called from any thread; samples arrive on the queue that was given.
#pragma once

#include "base/Outcome.h"
#include "base/SerialQueue.h"
#include "platform/MediaSamples.h"

#include <functional>
#include <memory>
#include <optional>

namespace marrowfin::platform {

// Destroying it stops it, without waiting.
class AudioStream {
public:
    virtual ~AudioStream() = default;
    // Settles when no further sample will be handed out.
    virtual Outcome<void> stop() = 0;
};

class SystemAudio {
public:
    // Presentation times are CLOCK_MONOTONIC's, as in Frame.
    using SampleHandler = std::function<void(const AudioSample&)>;
    // At most once, on the same queue, when the sound ends without having been stopped.
    using EndedHandler = std::function<void(std::optional<Error>)>;

    virtual ~SystemAudio() = default;
    // Unavailable, with a sentence, where nothing plays sound or nobody may listen.
    virtual Outcome<std::shared_ptr<AudioStream>> start(std::shared_ptr<SerialQueue> sampleQueue,
                                                        SampleHandler handler, EndedHandler ended) = 0;
};

} // namespace marrowfin::platform
