#include "RuntimeFixture.h"

#include "base/Shared.h"
#include "capture/ScreenCaptureManager.h"
#include "history/CaptureHistory.h"
#include "settings/SettingsStore.h"
#include "support/CapturedOutput.h"

#include <QDir>

using namespace marrowfin;
using namespace app;
using namespace history;
using namespace settings;
using namespace marrowfin::testsupport;
using marrowfin::fake::waitUntil;

namespace {

// Tells that it ran, and then ends the process, or merely leaves the loop.
class PlayedMode : public Mode {
public:
    enum class End { Process, Loop };
    PlayedMode(QStringList& told, LaunchMode which, End end) : told(told), which(which), end(end) {}

    Flow<> run(Runtime* runtime) override {
        told << flag(which);
        if (end == End::Process)
            runtime->finish(3);
        else
            QApplication::quit();
        co_return;
    }

private:
    QStringList& told;
    LaunchMode which;
    End end;
};

class ModeWithItsOwnWords : public Mode {
public:
    int desktopMissing(const Error& error) override {
        told = error.message;
        return 5;
    }
    static inline QString told;
};

class RuntimeTest : public RuntimeFixture {
protected:
    void playModes(std::optional<LaunchMode> ending) {
        options.makeMode = [this, ending](LaunchMode which) {
            return std::make_unique<PlayedMode>(
                told, which, which == ending ? PlayedMode::End::Process : PlayedMode::End::Loop);
        };
    }
    QStringList told;
    const QStringList threeFlags{QStringLiteral("--crop-demo"), QStringLiteral("--self-test"),
                                 QStringLiteral("--hero-demo")};
};

} // namespace

TEST_F(RuntimeTest, aModeThatEndsTheProcessIsTheOnlyOne) {
    playModes(LaunchMode::selfTest);
    EXPECT_EQ(live([] {}, threeFlags, Afterwards::GoOn), 3);
    EXPECT_EQ(told, QStringList(QStringLiteral("--self-test")));
}

TEST_F(RuntimeTest, afterAModeThatReturnsTheNextFlagIsTestedAndThenTheApplicationStarts) {
    playModes(std::nullopt);
    int opened = 0;
    // The story is told within the first mode; a timer watches for the application.
    const QStringList order{QStringLiteral("--self-test"), QStringLiteral("--hero-demo"),
                            QStringLiteral("--crop-demo")};
    EXPECT_EQ(live(
                  [&] {
                      ++opened;
                      auto* watch = new QTimer(qApp);
                      QObject::connect(watch, &QTimer::timeout, qApp, [&] {
                          if (desktop->screenAccess.requests == 1)
                              runtime->finish(0);
                      });
                      watch->start(1);
                  },
                  threeFlags, Afterwards::GoOn),
              0);
    EXPECT_EQ(told, order);
    EXPECT_EQ(opened, 1) << "in the same desktop";
}

TEST_F(RuntimeTest, aModeDecidesItsWordsAndStatusWhereTheDesktopCantBeHad) {
    options.chooseWindowSystem = [] { return Result<void>(failure(QStringLiteral("no desktop"))); };
    options.makeMode = [](LaunchMode) { return std::make_unique<ModeWithItsOwnWords>(); };
    CapturedOutput output;
    Runtime bare(options);
    EXPECT_EQ(bare.run({QStringLiteral("--blur-demo")}), 5);
    EXPECT_EQ(ModeWithItsOwnWords::told, QStringLiteral("no desktop"));
    EXPECT_EQ(output.text(), QString());
}

TEST_F(RuntimeTest, withoutADesktopTheApplicationSaysWhyAndEndsWithOne) {
    options.chooseWindowSystem = [] { return Result<void>(failure(QStringLiteral("no desktop"))); };
    CapturedOutput output;
    Runtime bare(options);
    EXPECT_EQ(bare.run({}), 1);
    EXPECT_EQ(output.text(), QStringLiteral("no desktop\n"));
}

TEST_F(RuntimeTest, theToolkitSeesNoArgumentButTheProgramsPath) {
    options.program = "/usr/bin/marrowfin";
    live([&] { EXPECT_EQ(QCoreApplication::arguments(), QStringList(QStringLiteral("/usr/bin/marrowfin"))); },
         {QStringLiteral("-display"), QStringLiteral(":77"), QStringLiteral("--platform"),
          QStringLiteral("nonsense")});
}

TEST_F(RuntimeTest, theKeysAreGivenBackAndThenTheClipboardIsHandedOver) {
    int held = -1;
    live([&] {
        waitForLaunch();
        EXPECT_EQ(desktop->hotKeys.held.size(), 3u);
        desktop->pasteboard.onHandOver = [&] { held = static_cast<int>(desktop->hotKeys.held.size()); };
    });
    EXPECT_EQ(held, 0);
}

TEST_F(RuntimeTest, mayHaveAHistorySettingsAndABusNameOfItsOwn) {
    const QTemporaryDir folder;
    options.settingsFile = folder.filePath(QStringLiteral("own.json"));
    options.historyFolder = folder.filePath(QStringLiteral("History"));
    options.busName = QStringLiteral("io.tessaly.marrowfin.SelfTest");
    live([&] {
        waitForLaunch();
        SettingsStore::shared().setPostCaptureAction(PostCaptureAction::copyToClipboard);
        bool routed = false;
        QObject::connect(runtime->appDelegate(), &AppDelegate::captureRouted, qApp, [&] { routed = true; });
        runtime->appDelegate()->captureManager()->setCapturedImage(picture());
        ASSERT_TRUE(waitUntil([&] { return routed; }));
        EXPECT_FALSE(QDir(desktop->folders.applicationSupport() + QStringLiteral("/Marrowfin")).exists());
        EXPECT_FALSE(QDir(desktop->folders.configuration() + QStringLiteral("/Marrowfin")).exists());
    });
    EXPECT_EQ(QDir(options.historyFolder).entryList(QDir::Files).size(), 1);
    EXPECT_TRUE(QFile::exists(options.settingsFile));
    EXPECT_EQ(requested.busName, options.busName);
}

TEST_F(RuntimeTest, aCaptureThatIsBeingWrittenIsFinishedAtTheEnd) {
    const QTemporaryDir folder;
    options.historyFolder = folder.filePath(QStringLiteral("History"));
    live([&] {
        waitForLaunch();
        CaptureHistory::shared().saveAsync(picture());
    });
    EXPECT_EQ(QDir(options.historyFolder).entryList(QDir::Files).size(), 1);
}

namespace {

struct Late {
    int value = 1;
};
struct BuildsAtTheEnd {
    ~BuildsAtTheEnd() { Shared<Late>::instance(); }
};

} // namespace

TEST_F(RuntimeTest, buildingASharedObjectWhileTheProgramGoesDownIsABrokenInvariant) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_DEATH(live([&] { Shared<BuildsAtTheEnd>::instance(); }), "invariant broken");
}
