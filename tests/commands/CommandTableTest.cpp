// What stands before a command, and what comes of it.
#include "commands/CommandTable.h"

#include "support/CapturedOutput.h"
#include "support/EventLoop.h"

#include <QStringList>
#include <gtest/gtest.h>
#include <optional>
#include <set>

using namespace marrowfin;
using namespace commands;
using namespace std::chrono_literals;
using marrowfin::test::awaited;
using marrowfin::testsupport::CapturedOutput;

namespace {

Flow<bool> answer(QStringList* steps, bool permitted) {
    *steps << QStringLiteral("permission");
    co_return permitted;
}

Flow<> count(QStringList* steps, std::chrono::seconds delay) {
    *steps << QStringLiteral("countdown %1").arg(delay.count());
    co_return;
}

class CommandTableTest : public testing::Test {
protected:
    // A run that notes its request and answers this.
    void provide(CommandID id, const Result<CommandResult>& result) {
        table.provide(id, [this, result](const CommandRequest& request) {
            steps << QStringLiteral("run to '%1'").arg(request.output);
            return settled<CommandResult>(result);
        });
    }

    QStringList steps;
    bool permitted = true;
    CommandTable table{Preparation{[this] { return answer(&steps, permitted); },
                                   [this](std::chrono::seconds delay) { return count(&steps, delay); }}};
};

CommandResult somewhere() {
    return {QStringLiteral("/history/1.png"), {}, true, {800, 600}};
}

} // namespace

TEST_F(CommandTableTest, eachIdHasOneRow) {
    std::set<CommandID> ids;
    for (const Command& command : table.commands())
        ids.insert(command.id);
    EXPECT_EQ(ids.size(), table.commands().size());
    EXPECT_EQ(ids.size(), 15u);
}

TEST_F(CommandTableTest, aCaptureAsksThenCountsThenRunsAndTellsWhereItWent) {
    provide(CommandID::captureFullscreen, somewhere());
    const Result<CommandResult> result =
        awaited(table.run(CommandID::captureFullscreen, {QStringLiteral("/tmp/a.png"), 5s}));
    EXPECT_EQ(steps, QStringList({"permission", "countdown 5", "run to '/tmp/a.png'"}));
    ASSERT_TRUE(result.has_value());
    EXPECT_EQ(result->historyFile, "/history/1.png");
    EXPECT_TRUE(result->onClipboard);
    EXPECT_EQ(result->imageSize, QSize(800, 600));
}

TEST_F(CommandTableTest, withoutADelayNothingIsCounted) {
    provide(CommandID::captureArea, somewhere());
    awaited(table.run(CommandID::captureArea, {{}, -3s}));
    EXPECT_EQ(steps, QStringList({"permission", "run to ''"}));
}

TEST_F(CommandTableTest, withoutPermissionNothingIsCountedOrRun) {
    permitted = false;
    provide(CommandID::captureWindow, somewhere());
    CapturedOutput output;
    const Result<CommandResult> result = awaited(table.run(CommandID::captureWindow, {{}, 3s}));
    ASSERT_FALSE(result.has_value());
    EXPECT_EQ(result.error(),
              (Error{Error::Kind::Failed, QStringLiteral("Capturing the screen isn't permitted.")}));
    EXPECT_EQ(steps, QStringList("permission"));
    EXPECT_EQ(output.text(), "") << "the alert has said it";
}

TEST_F(CommandTableTest, aHotKeySkipsThePermissionStep) {
    permitted = false;
    provide(CommandID::captureFullscreen, somewhere());
    EXPECT_TRUE(awaited(table.run(CommandID::captureFullscreen, {}, PermissionStep::Skipped)).has_value());
    EXPECT_EQ(steps, QStringList("run to ''"));
}

TEST_F(CommandTableTest, onlyWhatLooksAtTheScreenAsks) {
    std::vector<CommandID> asking;
    for (const Command& command : table.commands())
        if (command.permission == Permission::Asked)
            asking.push_back(command.id);
    // Text capture and recording ask by themselves, in another way.
    EXPECT_EQ(asking, (std::vector{CommandID::captureArea, CommandID::capturePreviousArea,
                                   CommandID::captureFullscreen, CommandID::captureWindow,
                                   CommandID::scrollingCapture, CommandID::selfTimer}));
}

TEST_F(CommandTableTest, aRowThatIsNotBuiltYetSaysSoAndAnswersUnavailable) {
    const std::pair<CommandID, QString> rows[] = {
        {CommandID::scrollingCapture, "Scrolling capture isn't built yet."},
        {CommandID::captureText, "Text capture isn't built yet."},
        {CommandID::recordScreen, "Screen recording isn't built yet."},
        {CommandID::showHistory, "The capture history window isn't built yet."},
        {CommandID::openSettings, "The settings window isn't built yet."},
        {CommandID::checkForUpdates, "The update check isn't built yet."},
    };
    for (const auto& [id, sentence] : rows) {
        CapturedOutput output;
        const Result<CommandResult> result = awaited(table.run(id, {{}, 3s}));
        EXPECT_EQ(output.text(), sentence + u'\n');
        ASSERT_FALSE(result.has_value());
        EXPECT_EQ(result.error(), (Error{Error::Kind::Unavailable, sentence}));
    }
    EXPECT_EQ(steps, QStringList("permission")) << "nobody counts down for what isn't there";
}

TEST_F(CommandTableTest, whatMakesNoFileRefusesOne) {
    provide(CommandID::pinToScreen, CommandResult{});
    const Result<CommandResult> result =
        awaited(table.run(CommandID::pinToScreen, {QStringLiteral("/tmp/a.png")}));
    ASSERT_FALSE(result.has_value());
    EXPECT_EQ(result.error().message, "This command makes no file.");
    EXPECT_TRUE(steps.isEmpty());
}

TEST_F(CommandTableTest, aFileIsGivenByItsWholePath) {
    provide(CommandID::captureArea, somewhere());
    const Result<CommandResult> result =
        awaited(table.run(CommandID::captureArea, {QStringLiteral("a.png")}));
    ASSERT_FALSE(result.has_value());
    EXPECT_EQ(result.error().message, "a.png isn't a whole path.");
    EXPECT_TRUE(steps.isEmpty());
}

TEST_F(CommandTableTest, aChangeOfMindAndAFailureAreToldApart) {
    provide(CommandID::captureArea, cancelled());
    provide(CommandID::captureWindow, failure(QStringLiteral("streamStartFailed")));
    EXPECT_EQ(awaited(table.run(CommandID::captureArea)).error().kind, Error::Kind::Cancelled);
    EXPECT_EQ(awaited(table.run(CommandID::captureWindow)).error(),
              (Error{Error::Kind::Failed, QStringLiteral("streamStartFailed")}));
}

TEST_F(CommandTableTest, twoAtOnceEachGetTheirOwnOutcome) {
    std::vector<Settler<CommandResult>> waiting;
    table.provide(CommandID::captureArea, [&waiting](const CommandRequest&) {
        auto [settler, outcome] = makeOutcome<CommandResult>();
        waiting.push_back(settler);
        return outcome;
    });
    const Outcome<CommandResult> first = table.run(CommandID::captureArea);
    const Outcome<CommandResult> second = table.run(CommandID::captureArea);
    ASSERT_EQ(waiting.size(), 2u) << "the first doesn't hold the second up";
    waiting[1].settle(CommandResult{QStringLiteral("/history/2.png"), {}, true, {}});
    EXPECT_EQ(awaited(second)->historyFile, "/history/2.png");
    EXPECT_FALSE(first.isSettled());
    waiting[0].settle(CommandResult{QStringLiteral("/history/1.png"), {}, true, {}});
    EXPECT_EQ(awaited(first)->historyFile, "/history/1.png");
}

TEST_F(CommandTableTest, whoAwaitsACommandLearnsThatTheTableWent) {
    std::optional<Settler<CommandResult>> waiting;
    auto dying = std::make_unique<CommandTable>(Preparation{});
    dying->provide(CommandID::openFromClipboard, [&waiting](const CommandRequest&) {
        auto [settler, outcome] = makeOutcome<CommandResult>();
        waiting.emplace(settler);
        return outcome;
    });
    const Outcome<CommandResult> outcome = dying->run(CommandID::openFromClipboard);
    dying.reset();
    waiting->settle(somewhere());
    EXPECT_EQ(awaited(outcome).error().kind, Error::Kind::Dropped);
}

TEST_F(CommandTableTest, withoutARecorderNothingIsRecorded) {
    EXPECT_EQ(table.state().recorder, RecorderState::idle);
}
