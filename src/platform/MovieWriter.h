// Makes MP4 files with an H.264 track and an AAC track out of samples as they come. Sizes in pixels, rates in
// bits per second. create() belongs to the main thread; a movie to one thread at a time, which its owner sees
// to.
#pragma once

#include "base/Outcome.h"
#include "platform/MediaSamples.h"

#include <QString>
#include <cstdint>
#include <memory>
#include <optional>

namespace marrowfin::platform {

struct MovieVideo {
    int width = 0; // even
    int height = 0;
    std::int64_t averageBitRate = 0;
    int expectedFrameRate = 30;
};

struct MovieAudio {
    int sampleRate = 48000;
    int channelCount = 2;
    int bitRate = 128000;
};

struct MovieSpec {
    QString path;
    MovieVideo video;
    std::optional<MovieAudio> audio;
};

enum class MovieStatus { Unknown = 0, Writing = 1, Completed = 2, Failed = 3, Cancelled = 4 };
enum class MovieTrack { Video, Audio };

// One file. Letting go of it before it was finished leaves what has been written.
class MovieOutput {
public:
    virtual ~MovieOutput() = default;
    // False when it can't begin; error() says why.
    virtual bool startWriting() = 0;
    virtual MovieStatus status() const = 0;
    virtual std::optional<Error> error() const = 0;
    // The movie's time 0. Once, before the first sample.
    virtual void startSession(std::chrono::nanoseconds sourceTime) = 0;
    // False while the encoder has enough to do; what comes then is to be dropped, never kept waiting.
    virtual bool isReadyForMoreMediaData(MovieTrack track) const = 0;
    // False when the movie has failed. Times rise within a track.
    virtual bool append(const VideoSample& sample) = 0;
    virtual bool append(const AudioSample& sample) = 0;
    virtual void markAsFinished(MovieTrack track) = 0;
    // Settles when the file is whole, or with why it isn't.
    virtual Outcome<void> finishWriting() = 0;
};

class MovieWriter {
public:
    virtual ~MovieWriter() = default;
    // Makes the file, which must not exist.
    virtual Outcome<std::shared_ptr<MovieOutput>> create(const MovieSpec& movie) = 0;
};

} // namespace marrowfin::platform
