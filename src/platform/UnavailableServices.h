// What stands in for a service that this program or this desktop doesn't have: every answer is Unavailable,
// with a sentence for the user. Main thread.
#pragma once

#include "platform/InputPoster.h"
#include "platform/MovieReader.h"
#include "platform/MovieWriter.h"
#include "platform/ScrollPoster.h"
#include "platform/SystemAudio.h"
#include "platform/TextDetector.h"
#include "platform/TextRecognizer.h"
#include "platform/UpdateDriver.h"

namespace marrowfin::platform {

class UnavailableTextRecognizer final : public TextRecognizer {
public:
    Outcome<std::vector<RecognizedLine>> recognize(const imaging::Image& image) override;
};

class UnavailableTextDetector final : public TextDetector {
public:
    Outcome<std::vector<TextMatch>> matches(const QString& text) override;
};

class UnavailableMovieWriter final : public MovieWriter {
public:
    Outcome<std::shared_ptr<MovieOutput>> create(const MovieSpec& movie) override;
};

class UnavailableMovieReader final : public MovieReader {
public:
    Outcome<MovieFacts> read(const QString& path) override;
};

class UnavailableSystemAudio final : public SystemAudio {
public:
    Outcome<std::shared_ptr<AudioStream>> start(std::shared_ptr<SerialQueue> sampleQueue,
                                                SampleHandler handler, EndedHandler ended) override;
};

class UnavailableScrollPoster final : public ScrollPoster {
public:
    Outcome<void> scroll(const ScreenPoint& at, int lines) override;
};

class UnavailableInputPoster final : public InputPoster {
public:
    Outcome<void> postKey(QWidget& widget, const PostedKey& key) override;
    Outcome<void> postMouse(QWidget& widget, PostedMouse kind, const QPointF& position) override;
};

class UnavailableUpdateDriver final : public UpdateDriver {
public:
    Result<void> startUpdater() override;
    Outcome<void> checkForUpdates() override;
};

} // namespace marrowfin::platform
