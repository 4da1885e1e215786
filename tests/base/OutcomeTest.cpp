#include "base/Outcome.h"

#include "base/Flow.h"
#include "base/Patience.h"
#include "support/EventLoop.h"

#include <QCoreApplication>
#include <gtest/gtest.h>
#include <thread>
#include <vector>

using namespace marrowfin;

namespace {

// What a coroutine saw: the result, and where and when it went on.
struct Story {
    std::vector<QString> lines;
    QEventLoop loop;
    FlowScope flows;

    void tell(const QString& line) { lines.push_back(line); }
};

Flow<> awaitAndTell(Outcome<int> outcome, Story* story) {
    const Result<int> result = co_await outcome;
    story->tell(result ? QString::number(*result) : result.error().message);
    if (!isMainThread())
        story->tell("not on the main thread");
    story->loop.quit();
}

} // namespace

TEST(Outcome, mayBeSettledBeforeAnyoneAwaits) {
    auto [settler, outcome] = makeOutcome<int>();
    EXPECT_FALSE(outcome.isSettled());
    settler.settle(7);
    EXPECT_TRUE(outcome.isSettled());
    EXPECT_TRUE(settler.isSettled());
    EXPECT_EQ(test::awaited(outcome), Result<int>(7));
}

TEST(Outcome, aSettledOneLetsACoroutineGoOnAtOnce) {
    Story story;
    story.flows.start(awaitAndTell(settled<int>(3), &story));
    EXPECT_EQ(story.lines, std::vector<QString>{"3"});
}

TEST(Outcome, isAwaitedNoLongerThanTold) {
    auto [settler, outcome] = makeOutcome<int>();
    EXPECT_FALSE(test::awaited(within(std::chrono::milliseconds(1), outcome)));
    settler.settle(5);
    EXPECT_EQ(test::awaited(within(std::chrono::hours(1), settled<int>(7))), Result<int>(7));
}

TEST(Outcome, neverResumesFromInsideSettle) {
    Story story;
    auto [settler, outcome] = makeOutcome<int>();
    story.flows.start(awaitAndTell(outcome, &story));
    settler.settle(5);
    story.tell("settle has returned");
    story.loop.exec();
    EXPECT_EQ(story.lines, (std::vector<QString>{"settle has returned", "5"}));
}

TEST(Outcome, aBlockOfASettledOneRunsFromTheEventLoopToo) {
    std::vector<QString> lines;
    settled<int>(1).then([&](const Result<int>&) { lines.emplace_back("block"); });
    lines.emplace_back("then has returned");
    QCoreApplication::processEvents();
    EXPECT_EQ(lines, (std::vector<QString>{"then has returned", "block"}));
}

TEST(Outcome, onlyTheFirstSettlingCounts) {
    auto [settler, outcome] = makeOutcome<int>();
    settler.settle(1);
    settler.settle(2);
    settler.settle(failure("late"));
    EXPECT_EQ(test::awaited(outcome), Result<int>(1));
}

TEST(Outcome, settlesFromAnotherThreadAndResumesOnTheMainOne) {
    for (int i = 0; i < 200; ++i) {
        Story story;
        auto [settler, outcome] = makeOutcome<int>();
        std::thread other([settler = settler, i] { settler.settle(i); });
        story.flows.start(awaitAndTell(outcome, &story));
        if (story.lines.empty())
            story.loop.exec();
        other.join();
        EXPECT_EQ(story.lines, std::vector<QString>{QString::number(i)});
    }
}

TEST(Outcome, manyThreadsSettleItOnce) {
    for (int i = 0; i < 50; ++i) {
        auto [settler, outcome] = makeOutcome<int>();
        std::vector<std::thread> threads;
        for (int thread = 0; thread < 4; ++thread)
            threads.emplace_back([settler = settler, thread] { settler.settle(thread); });
        int answers = 0;
        outcome.then([&](const Result<int>& result) {
            ++answers;
            EXPECT_TRUE(result && *result >= 0 && *result < 4);
        });
        for (std::thread& thread : threads)
            thread.join();
        QCoreApplication::processEvents();
        EXPECT_EQ(answers, 1);
    }
}

TEST(Outcome, droppedWhenTheLastSettlerGoes) {
    auto pair = std::make_unique<OutcomePair<int>>(makeOutcome<int>());
    const Outcome<int> outcome = pair->outcome;
    auto copy = std::make_unique<Settler<int>>(pair->settler);
    pair.reset();
    EXPECT_FALSE(outcome.isSettled());
    copy.reset();
    const Result<int> result = test::awaited(outcome);
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error().kind, Error::Kind::Dropped);
}

TEST(Outcome, aWaitingCoroutineGoesOnWhenItsSenderDies) {
    Story story;
    {
        auto [settler, outcome] = makeOutcome<int>();
        story.flows.start(awaitAndTell(outcome, &story));
    }
    story.loop.exec();
    EXPECT_EQ(story.lines, std::vector<QString>{"dropped"});
}

TEST(Outcome, anErrorIsAResult) {
    auto [settler, outcome] = makeOutcome<int>();
    settler.settle(unavailable("This desktop has no clipboard."));
    const Result<int> result = test::awaited(outcome);
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error(), (Error{Error::Kind::Unavailable, "This desktop has no clipboard."}));
}

TEST(Outcome, aBlockLetsGoOfWhatItHolds) {
    const auto held = std::make_shared<int>(1);
    auto [settler, outcome] = makeOutcome<int>();
    outcome.then([held](const Result<int>&) {});
    EXPECT_EQ(held.use_count(), 2);
    settler.settle(1);
    QCoreApplication::processEvents();
    EXPECT_EQ(held.use_count(), 1);
}

TEST(Outcome, aBlockDoesNotRunWhenItsContextHasGone) {
    auto [settler, outcome] = makeOutcome<int>();
    auto [lateSettler, late] = makeOutcome<int>();
    auto context = std::make_unique<QObject>();
    int ran = 0;
    outcome.then(context.get(), [&](const Result<int>&) { ++ran; });
    late.then(context.get(), [&](const Result<int>&) { ++ran; });
    settler.settle(1);
    QCoreApplication::processEvents();
    EXPECT_EQ(ran, 1) << "while it is there";
    lateSettler.settle(1); // posted, and not yet delivered
    context.reset();
    QCoreApplication::processEvents();
    EXPECT_EQ(ran, 1);
}

TEST(Outcome, twoWaitersAreABrokenInvariant) {
    auto [settler, outcome] = makeOutcome<int>();
    outcome.then([](const Result<int>&) {});
    EXPECT_DEATH(outcome.then([](const Result<int>&) {}), "invariant broken");
}

TEST(PostToMain, runsInTheOrderOfPosting) {
    std::vector<int> seen;
    std::thread other([&] {
        for (int i = 0; i < 10; ++i)
            postToMain([&seen, i] { seen.push_back(i); });
    });
    other.join();
    EXPECT_TRUE(seen.empty());
    QCoreApplication::processEvents();
    EXPECT_EQ(seen, (std::vector<int>{0, 1, 2, 3, 4, 5, 6, 7, 8, 9}));
}

TEST(PostToMain, knowsTheMainThread) {
    EXPECT_TRUE(isMainThread());
    bool elsewhere = true;
    std::thread([&] { elsewhere = isMainThread(); }).join();
    EXPECT_FALSE(elsewhere);
}
