#include "base/Flow.h"

#include "support/EventLoop.h"

#include <QCoreApplication>
#include <gtest/gtest.h>
#include <thread>

using namespace marrowfin;

namespace {

using Lines = std::vector<QString>;

// A local of a flow that tells when it goes.
class Local {
public:
    Local(Lines& lines, QString name) : lines(lines), name(std::move(name)) {}
    ~Local() { lines.push_back(name + (isMainThread() ? " gone" : " gone on another thread")); }
    Local(const Local&) = delete;
    Local& operator=(const Local&) = delete;

private:
    Lines& lines;
    QString name;
};

Flow<int> waiting(Outcome<int> outcome, Lines* lines) {
    const Local local(*lines, "inner");
    const Result<int> result = co_await outcome;
    lines->push_back("inner resumed");
    co_return result.value_or(-1);
}

Flow<int> awaitingAnother(Outcome<int> outcome, Lines* lines) {
    const Local local(*lines, "middle");
    const int inner = co_await waiting(outcome, lines);
    lines->push_back("middle resumed");
    co_return inner * 2;
}

Flow<Result<int>> outermost(Outcome<int> outcome, Lines* lines) {
    const Local local(*lines, "outer");
    const int middle = co_await awaitingAnother(outcome, lines);
    lines->push_back("outer resumed");
    if (middle < 0)
        co_return cancelled();
    co_return middle + 1;
}

Flow<> countdown(int steps, int* reached) {
    const auto step = [](int n) -> Flow<int> { co_return n; };
    for (int n = 0; n < steps; ++n)
        *reached = co_await step(n) + 1;
}

// Turns the loop until nothing is posted any more.
void settleDown() {
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
}

} // namespace

TEST(Flow, runsUpToItsFirstWaitWhenItIsStartedAndNotBefore) {
    Lines lines;
    FlowScope flows;
    auto [settler, outcome] = makeOutcome<int>();
    { const Flow<int> neverStarted = waiting(outcome, &lines); }
    EXPECT_EQ(lines, Lines{});
    flows.start(waiting(settled<int>(3), &lines));
    EXPECT_EQ(lines, (Lines{"inner resumed", "inner gone"}));
    EXPECT_TRUE(flows.isIdle());
}

TEST(Flow, itsAnswerIsAnOutcomeForThoseOutside) {
    Lines lines;
    FlowScope flows;
    auto [settler, outcome] = makeOutcome<int>();
    const Outcome<int> answer = flows.start(outermost(outcome, &lines));
    EXPECT_FALSE(flows.isIdle());
    settler.settle(20);
    EXPECT_EQ(test::awaited(answer), Result<int>(41));
    EXPECT_EQ(lines, (Lines{"inner resumed", "inner gone", "middle resumed", "middle gone", "outer resumed",
                            "outer gone"}));
    EXPECT_TRUE(flows.isIdle());
}

TEST(Flow, aChangeOfMindIsToldFromAFailure) {
    Lines lines;
    FlowScope flows;
    const Result<int> result = test::awaited(flows.start(outermost(settled<int>(failure("none")), &lines)));
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error().kind, Error::Kind::Cancelled);
}

TEST(Flow, endsWhereItWaitsWhenItsOwnerGoes) {
    Lines lines;
    auto [settler, outcome] = makeOutcome<int>();
    auto flows = std::make_unique<FlowScope>();
    const Outcome<int> answer = flows->start(waiting(outcome, &lines));
    flows.reset();
    EXPECT_EQ(lines, Lines{"inner gone"});
    settler.settle(1);
    settleDown();
    EXPECT_EQ(lines, Lines{"inner gone"}) << "nothing resumes it later";
    EXPECT_EQ(test::awaited(answer).error().kind, Error::Kind::Dropped);
}

TEST(Flow, endsFromTheInnermostOutwardsWhenItsOwnerGoes) {
    Lines lines;
    auto [settler, outcome] = makeOutcome<int>();
    {
        FlowScope flows;
        flows.start(outermost(outcome, &lines));
    }
    settler.settle(1);
    settleDown();
    EXPECT_EQ(lines, (Lines{"inner gone", "middle gone", "outer gone"}));
}

TEST(Flow, anAnswerThatIsOnItsWayFindsItsFlowGone) {
    Lines lines;
    auto [settler, outcome] = makeOutcome<int>();
    {
        FlowScope flows;
        flows.start(outermost(outcome, &lines));
        settler.settle(1); // posted, and not yet delivered
    }
    settleDown();
    EXPECT_EQ(lines, (Lines{"inner gone", "middle gone", "outer gone"}));
}

TEST(Flow, answersFromOtherThreadsMeetAnOwnerThatGoes) {
    for (int i = 0; i < 200; ++i) {
        Lines lines;
        auto [settler, outcome] = makeOutcome<int>();
        auto flows = std::make_unique<FlowScope>();
        flows->start(waiting(outcome, &lines));
        std::thread other([settler = settler] { settler.settle(1); });
        if (i % 2 == 0)
            settleDown();
        flows.reset();
        other.join();
        settleDown();
        ASSERT_FALSE(lines.empty());
        EXPECT_EQ(lines.back(), QString("inner gone"));
    }
}

TEST(Flow, anOutcomeWhoseWaiterWentMayBeAwaitedByAnother) {
    Lines lines;
    auto [settler, outcome] = makeOutcome<int>();
    {
        FlowScope gone;
        gone.start(waiting(outcome, &lines));
    }
    FlowScope flows;
    const Outcome<int> answer = flows.start(waiting(outcome, &lines));
    settler.settle(4);
    EXPECT_EQ(test::awaited(answer), Result<int>(4));
}

namespace {

class Owner {
public:
    explicit Owner(Lines& lines) : lines(lines) {}
    void begin(Outcome<int> outcome) { flows.start(closing(std::move(outcome))); }
    std::unique_ptr<Owner>* self = nullptr;

private:
    Flow<> closing(Outcome<int> outcome) {
        const Local local(lines, "closing");
        co_await outcome;
        Lines& outlives = lines;
        self->reset(); // the owner, in the middle of its own flow
        outlives.push_back("still running");
        co_await settled<int>(1);
        outlives.push_back("went on");
    }

    Lines& lines;
    FlowScope flows;
};

class StartsWhenItGoes {
public:
    StartsWhenItGoes(FlowScope& flows, Lines& lines) : flows(flows), lines(lines) {}
    ~StartsWhenItGoes() {
        EXPECT_EQ(test::awaited(flows.start(waiting(settled<int>(1), &lines))).error().kind,
                  Error::Kind::Dropped);
    }
    StartsWhenItGoes(const StartsWhenItGoes&) = delete;
    StartsWhenItGoes& operator=(const StartsWhenItGoes&) = delete;

private:
    FlowScope& flows;
    Lines& lines;
};

Flow<> holding(Outcome<int> outcome, FlowScope* flows, Lines* lines) {
    const StartsWhenItGoes held(*flows, *lines);
    co_await outcome;
}

} // namespace

TEST(Flow, thatClosesItsOwnOwnerEndsAtItsNextAwait) {
    Lines lines;
    auto owner = std::make_unique<Owner>(lines);
    owner->self = &owner;
    auto [settler, outcome] = makeOutcome<int>();
    owner->begin(outcome);
    settler.settle(1);
    settleDown();
    EXPECT_EQ(owner, nullptr);
    EXPECT_EQ(lines, (Lines{"still running", "closing gone"}));
}

TEST(Flow, aScopeThatIsEndingStartsNothing) {
    Lines lines;
    auto [settler, outcome] = makeOutcome<int>();
    FlowScope flows;
    flows.start(holding(outcome, &flows, &lines));
    flows.end();
    EXPECT_EQ(lines, Lines{});
    EXPECT_TRUE(flows.isIdle());
}

TEST(Flow, aLongLoopOfAwaitsDoesNotMakeTheStackGrow) {
    int reached = 0;
    FlowScope flows;
    flows.start(countdown(300'000, &reached));
    EXPECT_EQ(reached, 300'000);
}

TEST(Flow, manyRunAtOnceAndEachGoesWhenItIsThrough) {
    Lines lines;
    FlowScope flows;
    auto [first, one] = makeOutcome<int>();
    auto [second, two] = makeOutcome<int>();
    const Outcome<int> firstAnswer = flows.start(waiting(one, &lines));
    const Outcome<int> secondAnswer = flows.start(waiting(two, &lines));
    second.settle(2);
    EXPECT_EQ(test::awaited(secondAnswer), Result<int>(2));
    EXPECT_FALSE(firstAnswer.isSettled());
    EXPECT_FALSE(flows.isIdle());
    first.settle(1);
    EXPECT_EQ(test::awaited(firstAnswer), Result<int>(1));
    EXPECT_TRUE(flows.isIdle());
}
