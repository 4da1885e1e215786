#include "platform/UnavailableServices.h"

#include <QCoreApplication>
#include <gtest/gtest.h>

using namespace marrowfin;
using namespace marrowfin::platform;

namespace {

// Settled from the start, and a sentence that can be shown as it is.
template <class T>
void expectSentence(const Outcome<T>& outcome) {
    ASSERT_TRUE(outcome.isSettled());
    std::optional<Result<T>> answer;
    outcome.then([&](Result<T> result) { answer = std::move(result); });
    while (!answer)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    ASSERT_FALSE(answer->has_value());
    EXPECT_EQ(answer->error().kind, Error::Kind::Unavailable);
    EXPECT_TRUE(answer->error().message.endsWith(u'.'));
}

} // namespace

TEST(UnavailableServices, answerAtOnceWithASentence) {
    expectSentence(UnavailableTextRecognizer().recognize(imaging::Image()));
    expectSentence(UnavailableTextDetector().matches(QStringLiteral("www.example.org")));
    expectSentence(UnavailableMovieWriter().create({}));
    expectSentence(UnavailableMovieReader().read(QStringLiteral("/tmp/none.mp4")));
    expectSentence(UnavailableSystemAudio().start(nullptr, {}, {}));
    expectSentence(UnavailableScrollPoster().scroll({}, -3));
    expectSentence(UnavailableUpdateDriver().checkForUpdates());
    const Result<void> started = UnavailableUpdateDriver().startUpdater();
    ASSERT_FALSE(started);
    EXPECT_EQ(started.error().kind, Error::Kind::Unavailable);
}
