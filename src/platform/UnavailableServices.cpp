#include "platform/UnavailableServices.h"

namespace marrowfin::platform {

namespace {

const QString noRecognizer = QStringLiteral("This version can't read text from the screen.");
const QString noDetector = QStringLiteral("This version can't find links in text.");
const QString noMovies = QStringLiteral("This version can't record the screen.");
const QString noMovieReading = QStringLiteral("This version can't read movies.");
const QString noSound = QStringLiteral("This version can't record what the computer plays.");
const QString noWheel = QStringLiteral("Marrowfin can't turn the wheel on this desktop.");
const QString noInput = QStringLiteral("Marrowfin can't send keys to itself on this desktop.");
const QString noUpdates = QStringLiteral("This version can't look for updates.");

template <class T>
Outcome<T> no(const QString& sentence) {
    return settled<T>(unavailable(sentence));
}

} // namespace

Outcome<std::vector<RecognizedLine>> UnavailableTextRecognizer::recognize(const imaging::Image&) {
    return no<std::vector<RecognizedLine>>(noRecognizer);
}

Outcome<std::vector<TextMatch>> UnavailableTextDetector::matches(const QString&) {
    return no<std::vector<TextMatch>>(noDetector);
}

Outcome<std::shared_ptr<MovieOutput>> UnavailableMovieWriter::create(const MovieSpec&) {
    return no<std::shared_ptr<MovieOutput>>(noMovies);
}

Outcome<MovieFacts> UnavailableMovieReader::read(const QString&) {
    return no<MovieFacts>(noMovieReading);
}

Outcome<std::shared_ptr<AudioStream>> UnavailableSystemAudio::start(std::shared_ptr<SerialQueue>,
                                                                    SampleHandler, EndedHandler) {
    return no<std::shared_ptr<AudioStream>>(noSound);
}

Outcome<void> UnavailableScrollPoster::scroll(const ScreenPoint&, int) {
    return no<void>(noWheel);
}

Outcome<void> UnavailableInputPoster::postKey(QWidget&, const PostedKey&) {
    return no<void>(noInput);
}

Outcome<void> UnavailableInputPoster::postMouse(QWidget&, PostedMouse, const QPointF&) {
    return no<void>(noInput);
}

Result<void> UnavailableUpdateDriver::startUpdater() {
    return unavailable(noUpdates);
}

Outcome<void> UnavailableUpdateDriver::checkForUpdates() {
    return no<void>(noUpdates);
}

} // namespace marrowfin::platform
