// What is in a finished movie, to check what was written. Main thread; the work is done elsewhere.
#pragma once

#include "base/Outcome.h"

#include <QString>
#include <chrono>

namespace marrowfin::platform {

struct MovieFacts {
    std::chrono::nanoseconds duration{0};
    int videoTracks = 0;
    int audioTracks = 0;
    // Of the first video track, all of it read.
    int videoSamples = 0;
    std::chrono::nanoseconds firstPresentationTime{0};
    std::chrono::nanoseconds lastPresentationTime{0};
};

class MovieReader {
public:
    virtual ~MovieReader() = default;
    virtual Outcome<MovieFacts> read(const QString& path) = 0;
};

} // namespace marrowfin::platform
