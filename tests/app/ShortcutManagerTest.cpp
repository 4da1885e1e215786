#include "app/ShortcutManager.h"

#include "app/CaptureCommands.h"
#include "app/CaptureDelivery.h"
#include "capture/ScreenCaptureManager.h"
#include "platform/Services.h"
#include "platform/fake/FakeDesktop.h"
#include "support/Input.h"

#include <QMessageBox>
#include <gtest/gtest.h>

using namespace marrowfin;
using namespace app;
using namespace capture;
using namespace commands;
using namespace marrowfin::platform;
using namespace marrowfin::testsupport;
using marrowfin::fake::FakeDesktop;
using marrowfin::fake::waitUntil;

namespace {

class ShortcutManagerTest : public testing::Test {
protected:
    FakeDesktop desktop;
    ScreenCaptureManager captures;
    CaptureDelivery delivery;
    CaptureCommands captureCommands{captures, delivery};
    CommandTable table{CaptureCommands::preparation()};
    ShortcutManager shortcuts{table};

    ShortcutManagerTest() { captureCommands.provideTo(table); }

    void registerAll() {
        const Outcome<void> done = flows.start(shortcuts.registerHotKeys());
        ASSERT_TRUE(waitUntil([&] { return done.isSettled(); }));
    }
    // The alert of reportFailures(), once it is up.
    QMessageBox* alert() {
        flows.start(shortcuts.reportFailures()).then(&listening, [this](const Result<void>&) {
            reported = true;
        });
        EXPECT_TRUE(waitUntil([] { return onlyTopLevel<QMessageBox>() != nullptr; }));
        return onlyTopLevel<QMessageBox>();
    }
    bool reported = false;
    FlowScope flows;
    QObject listening; // ends with the test
};

} // namespace

TEST_F(ShortcutManagerTest, allThreeRegisterWithTheNumberRowsKeysAndOneMask) {
    registerAll();
    EXPECT_EQ(shortcuts.hotKeyRefs().size(), 3u);
    EXPECT_TRUE(shortcuts.failures().empty());
    std::vector<std::uint32_t> codes;
    for (const auto& [reference, held] : desktop.hotKeys.held) {
        codes.push_back(held.keyCode);
        EXPECT_EQ(held.modifiers, 768u);
        EXPECT_EQ(held.id.signature, 0x4B56454Cu);
    }
    EXPECT_EQ(codes, (std::vector<std::uint32_t>{20, 21, 23}));
}

TEST_F(ShortcutManagerTest, takenCombinationsAreReportedNeverSwallowed) {
    desktop.hotKeys.taken = {keyCode3, keyCode4, keyCode5};
    registerAll();
    EXPECT_TRUE(shortcuts.hotKeyRefs().empty());
    ASSERT_EQ(shortcuts.failures().size(), 3u);
    for (const auto& [hotKey, status] : shortcuts.failures())
        EXPECT_EQ(status, -9878);
}

TEST_F(ShortcutManagerTest, theAlertNamesEachTakenCombinationAndHoldsItsCallerWithoutANestedLoop) {
    desktop.hotKeys.taken = {keyCode3, keyCode4, keyCode5};
    registerAll();
    QMessageBox* box = alert();
    EXPECT_EQ(box->text(), QStringLiteral("Some Shortcuts Are Taken"));
    EXPECT_TRUE(box->informativeText().startsWith(QStringLiteral(
        "Another app already owns these key combinations, so Marrowfin could not register them:\n\n"
        "Cmd+Shift+3 (fullscreen capture) - error -9878\n"
        "Cmd+Shift+4 (area capture) - error -9878\n"
        "Cmd+Shift+5 (window capture) - error -9878\n\n"
        "macOS's own screenshot shortcuts use these keys by default. Free them under System Settings > "
        "Keyboard > Keyboard Shortcuts > Screenshots, then relaunch Marrowfin.")));
    EXPECT_TRUE(box->informativeText().contains(QStringLiteral("Cmd is the Super key")));
    EXPECT_TRUE(box->informativeText().contains(desktop.hotKeys.settingsPlace()));
    EXPECT_FALSE(reported);
    buttonNamed(*box, QStringLiteral("Open Keyboard Settings"))->click();
    ASSERT_TRUE(waitUntil([&] { return reported; }));
    EXPECT_EQ(desktop.opener.pages, std::vector{SettingsPage::Keyboard});
}

TEST_F(ShortcutManagerTest, notNowOpensNothing) {
    desktop.hotKeys.taken = {keyCode4};
    registerAll();
    buttonNamed(*alert(), QStringLiteral("Not Now"))->click();
    ASSERT_TRUE(waitUntil([&] { return reported; }));
    EXPECT_TRUE(desktop.opener.pages.empty());
}

TEST_F(ShortcutManagerTest, withOneTakenTheOtherTwoWorkAndTheAlertNamesOnlyTheOne) {
    desktop.hotKeys.taken = {keyCode5};
    registerAll();
    EXPECT_EQ(shortcuts.hotKeyRefs().size(), 2u);
    QMessageBox* box = alert();
    EXPECT_TRUE(box->informativeText().contains(QStringLiteral("Cmd+Shift+5")));
    EXPECT_FALSE(box->informativeText().contains(QStringLiteral("Cmd+Shift+3")));
    EXPECT_FALSE(box->informativeText().contains(QStringLiteral("Cmd+Shift+4")));
    // While it is up.
    std::vector<std::uint32_t> seen;
    shortcuts.onHotKey = [&](const HotKey& hotKey) { seen.push_back(hotKey.id); };
    EXPECT_EQ(desktop.hotKeys.press({hotKeySignature, 1}), hotKeyNoError);
    EXPECT_EQ(desktop.hotKeys.press({hotKeySignature, 2}), hotKeyNoError);
    EXPECT_EQ(seen, (std::vector<std::uint32_t>{1, 2}));
    box->reject();
    ASSERT_TRUE(waitUntil([&] { return reported; }));
}

TEST_F(ShortcutManagerTest, withoutFailuresThereIsNoAlert) {
    registerAll();
    EXPECT_TRUE(flows.start(shortcuts.reportFailures()).isSettled());
    EXPECT_EQ(onlyTopLevel<QMessageBox>(), nullptr);
}

TEST_F(ShortcutManagerTest, eachIdReachesItsRow) {
    registerAll();
    QStringList names;
    shortcuts.onHotKey = [&](const HotKey& hotKey) { names << hotKey.displayName; };
    for (const std::uint32_t id : {1u, 2u, 3u})
        desktop.hotKeys.press({hotKeySignature, id});
    EXPECT_EQ(names, QStringList({QStringLiteral("Cmd+Shift+3"), QStringLiteral("Cmd+Shift+4"),
                                  QStringLiteral("Cmd+Shift+5")}));
}

TEST_F(ShortcutManagerTest, foreignPressesPassOnAndUnknownIdsDoNothing) {
    registerAll();
    bool called = false;
    shortcuts.onHotKey = [&](const HotKey&) { called = true; };
    EXPECT_EQ(desktop.hotKeys.press({0x41424344, 1}), -9874);
    EXPECT_EQ(desktop.hotKeys.press({hotKeySignature, 9}), 0);
    EXPECT_FALSE(called);
}

TEST_F(ShortcutManagerTest, aPressGoesStraightIntoItsFlowWithoutAskingForPermission) {
    desktop.addScreen(1, {0, 0, 800, 600});
    registerAll();
    desktop.hotKeys.press({hotKeySignature, 1});
    ASSERT_TRUE(waitUntil([&] { return captures.capturedImage().has_value(); }));
    EXPECT_EQ(captures.capturedImage()->size(), QSizeF(800, 600));
}

TEST_F(ShortcutManagerTest, eachKeyRunsItsCommandEvenWithoutPermission) {
    desktop.screenSource.contentError = Error{Error::Kind::Unavailable, QStringLiteral("not permitted")};
    std::vector<CommandID> ran;
    for (const CommandID id :
         {CommandID::captureArea, CommandID::captureFullscreen, CommandID::captureWindow})
        table.provide(id, [&ran, id](const CommandRequest&) {
            ran.push_back(id);
            return settled<CommandResult>({});
        });
    registerAll();
    for (const std::uint32_t id : {1u, 2u, 3u})
        desktop.hotKeys.press({hotKeySignature, id});
    EXPECT_EQ(ran,
              (std::vector{CommandID::captureFullscreen, CommandID::captureArea, CommandID::captureWindow}));
    EXPECT_EQ(desktop.screenSource.contentRequests, 0);
}

TEST_F(ShortcutManagerTest, aSecondRegisterAddsNothingAndKeepsTheFailures) {
    desktop.hotKeys.taken = {keyCode3};
    registerAll();
    registerAll();
    EXPECT_EQ(shortcuts.hotKeyRefs().size(), 2u);
    EXPECT_EQ(shortcuts.failures().size(), 1u);
    EXPECT_EQ(desktop.hotKeys.registrations, 3);
}

TEST_F(ShortcutManagerTest, unregisterGivesAllBackAndRegisterWorksAgain) {
    registerAll();
    shortcuts.unregister();
    EXPECT_TRUE(shortcuts.hotKeyRefs().empty());
    EXPECT_TRUE(desktop.hotKeys.held.empty());
    EXPECT_EQ(desktop.hotKeys.press({hotKeySignature, 1}), hotKeyNotHandled);
    registerAll();
    EXPECT_EQ(shortcuts.hotKeyRefs().size(), 3u);
    EXPECT_TRUE(shortcuts.failures().empty());
}

TEST_F(ShortcutManagerTest, unregisterLeavesTheFailures) {
    desktop.hotKeys.taken = {keyCode3};
    registerAll();
    shortcuts.unregister();
    EXPECT_EQ(shortcuts.failures().size(), 1u);
}

TEST_F(ShortcutManagerTest, aHandlerThatCantBeInstalledFailsAllThreeWithItsStatus) {
    desktop.hotKeys.installStatus = -50;
    registerAll();
    ASSERT_EQ(shortcuts.failures().size(), 3u);
    EXPECT_EQ(shortcuts.failures()[2].second, -50);
    EXPECT_EQ(desktop.hotKeys.registrations, 0);
    EXPECT_FALSE(shortcuts.hasEventHandler());
}

TEST_F(ShortcutManagerTest, successWithoutAReferenceIsAFailureWithStatusZero) {
    desktop.hotKeys.withoutReference = {keyCode4};
    registerAll();
    ASSERT_EQ(shortcuts.failures().size(), 1u);
    EXPECT_EQ(shortcuts.failures()[0].first.id, 2u);
    EXPECT_EQ(shortcuts.failures()[0].second, 0);
}

TEST_F(ShortcutManagerTest, allAreAskedForBeforeTheFirstIsAnsweredEachWithWhatItDoes) {
    desktop.hotKeys.late.hold = true;
    const Outcome<void> done = flows.start(shortcuts.registerHotKeys());
    EXPECT_EQ(desktop.hotKeys.late.waitingCount(), 3u);
    EXPECT_FALSE(done.isSettled());
    desktop.hotKeys.late.release();
    ASSERT_TRUE(waitUntil([&] { return done.isSettled(); }));
    QStringList descriptions;
    for (const auto& [reference, held] : desktop.hotKeys.held)
        descriptions << held.description;
    EXPECT_EQ(descriptions, QStringList({QStringLiteral("fullscreen capture"), QStringLiteral("area capture"),
                                         QStringLiteral("window capture")}));
}

TEST_F(ShortcutManagerTest, aCombinationThatIsGrantedAfterUnregisterIsGivenBack) {
    desktop.hotKeys.late.hold = true;
    const Outcome<void> done = flows.start(shortcuts.registerHotKeys());
    shortcuts.unregister();
    desktop.hotKeys.late.release();
    ASSERT_TRUE(waitUntil([&] { return done.isSettled(); }));
    EXPECT_TRUE(desktop.hotKeys.held.empty());
    EXPECT_TRUE(shortcuts.hotKeyRefs().empty());
    EXPECT_TRUE(shortcuts.failures().empty());
}

TEST_F(ShortcutManagerTest, aSecondManagerDoesNotTakeTheFirstOnesPresses) {
    registerAll();
    int first = 0;
    shortcuts.onHotKey = [&](const HotKey&) { ++first; };
    desktop.hotKeys.taken = {keyCode3, keyCode4, keyCode5};
    ShortcutManager second{table};
    int seconds = 0;
    second.onHotKey = [&](const HotKey&) { ++seconds; };
    const Outcome<void> done = flows.start(second.registerHotKeys());
    ASSERT_TRUE(waitUntil([&] { return done.isSettled(); }));
    EXPECT_EQ(second.failures().size(), 3u);
    EXPECT_EQ(desktop.hotKeys.press({hotKeySignature, 2}), hotKeyNoError);
    second.unregister();
    EXPECT_EQ(desktop.hotKeys.press({hotKeySignature, 2}), hotKeyNoError);
    EXPECT_EQ(first, 2);
    EXPECT_EQ(seconds, 0);
}

TEST_F(ShortcutManagerTest, aPostedEventReachesAManagerThatHoldsNoCombination) {
    desktop.hotKeys.taken = {keyCode3, keyCode4, keyCode5};
    registerAll();
    QStringList names;
    shortcuts.onHotKey = [&](const HotKey& hotKey) { names << hotKey.displayName; };
    EXPECT_EQ(services().hotKeys.postEvent({hotKeySignature, 2}), hotKeyNoError);
    EXPECT_EQ(names, QStringList{QStringLiteral("Cmd+Shift+4")});
}
