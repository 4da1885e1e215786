#include "settings/Defaults.h"

#include "base/Shared.h"
#include "settings/SettingsFixture.h"
#include "support/BadWorld.h"

#include <QJsonArray>
#include <QRandomGenerator>
#include <atomic>
#include <fcntl.h>
#include <limits>
#include <sys/file.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

using namespace marrowfin;
using namespace settings;

namespace {

class DefaultsFile : public test::SettingsFixture {
protected:
    // A set that can't be written: one line says so, and the value counts in this run.
    void expectUnwritable(Defaults& defaults, const QString& why) const {
        testing::internal::CaptureStderr();
        defaults.setInteger("historyRetentionDays", 7);
        const std::string log = testing::internal::GetCapturedStderr();
        EXPECT_EQ(QString::fromStdString(log),
                  QStringLiteral("[Marrowfin] Saving settings failed: %1\n").arg(why));
        EXPECT_EQ(defaults.integerForKey("historyRetentionDays"), 7);
    }
};

} // namespace

TEST_F(DefaultsFile, typedReadsTakeTheirOwnTypeAlone) {
    put(R"({"s":"text","d":0.5,"i":30,"whole":30.0,"big":9007199254740993,"t":true,"f":false,"n":null,"a":[1]})");
    const Defaults defaults(file());
    EXPECT_EQ(defaults.stringForKey("s"), QString("text"));
    EXPECT_EQ(defaults.doubleForKey("d"), 0.5);
    EXPECT_EQ(defaults.doubleForKey("i"), 30.0);
    EXPECT_EQ(defaults.integerForKey("i"), 30);
    EXPECT_EQ(defaults.integerForKey("whole"), 30);
    EXPECT_EQ(defaults.integerForKey("big"), 9007199254740993);
    EXPECT_EQ(defaults.boolForKey("t"), true);
    EXPECT_EQ(defaults.boolForKey("f"), false);
    for (const char* key : {"d", "i", "t", "n", "a", "missing"})
        EXPECT_EQ(defaults.stringForKey(key), std::nullopt) << key;
    for (const char* key : {"s", "t", "n", "a", "missing"})
        EXPECT_EQ(defaults.doubleForKey(key), std::nullopt) << key;
    for (const char* key : {"s", "d", "t", "n", "a", "missing"})
        EXPECT_EQ(defaults.integerForKey(key), std::nullopt) << key;
    for (const char* key : {"s", "d", "i", "n", "a", "missing"})
        EXPECT_EQ(defaults.boolForKey(key), std::nullopt) << key;
    EXPECT_TRUE(defaults.holds("n"));
    EXPECT_FALSE(defaults.holds("missing"));
}

TEST_F(DefaultsFile, readingMakesNothing) {
    const Defaults defaults(file());
    EXPECT_FALSE(defaults.holds("anything"));
    EXPECT_FALSE(QFileInfo::exists(folder()));
}

TEST_F(DefaultsFile, theFolderIsItsOwnersAndSoAreTheFiles) {
    Defaults(file()).setBool("showCursor", false);
    EXPECT_EQ(modeOf(folder()), 0700);
    EXPECT_EQ(modeOf(file()), 0600);
    EXPECT_EQ(modeOf(file() + ".lock"), 0600);
    EXPECT_EQ(names(), QStringList({"defaults.json", "defaults.json.lock"}));
}

TEST_F(DefaultsFile, aSetKeepsEveryOtherKeyAsItIs) {
    put(R"({"showCursor":"maybe","unknown":{"deep":[1,2,{"x":null}],"π":"\u00e9"},"jpegQuality":1.5})");
    Defaults(file()).setString("saveFormat", "JPEG");
    const QJsonObject deep{{"deep", QJsonArray{1, 2, QJsonObject{{"x", QJsonValue::Null}}}}, {"π", "é"}};
    EXPECT_EQ(inFile(),
              (QJsonObject{
                  {"showCursor", "maybe"}, {"unknown", deep}, {"jpegQuality", 1.5}, {"saveFormat", "JPEG"}}));
}

TEST_F(DefaultsFile, whatAnotherProcessSetMeanwhileIsKeptAndSeen) {
    Defaults one(file());
    Defaults other(file());
    one.setBool("showCursor", false);
    other.setString("saveFormat", "JPEG");
    EXPECT_EQ(inFile(), (QJsonObject{{"saveFormat", "JPEG"}, {"showCursor", false}}));
    EXPECT_EQ(other.boolForKey("showCursor"), false);
}

TEST_F(DefaultsFile, processesThatSetAtOnceLoseNothing) {
    constexpr int processes = 4;
    constexpr int sets = 25;
    std::vector<pid_t> children;
    for (int child = 0; child < processes; ++child)
        if (const pid_t pid = fork(); pid != 0) {
            children.push_back(pid);
        } else {
            Defaults defaults(file());
            for (int i = 0; i < sets; ++i)
                defaults.setInteger(QString("key %1 %2").arg(child).arg(i), i);
            defaults.finish(std::chrono::minutes(1));
            _exit(0);
        }
    for (const pid_t pid : children)
        waitpid(pid, nullptr, 0);
    EXPECT_EQ(inFile().size(), processes * sets);
}

TEST_F(DefaultsFile, aReaderNeverSeesHalfAFile) {
    Defaults defaults(file());
    const QString text(20000, QChar('x'));
    defaults.setString("long", text);
    std::atomic<bool> finished{false};
    std::thread writer([&] {
        for (int i = 0; i < 100; ++i)
            defaults.setInteger("count", i);
        finished = true;
    });
    while (!finished)
        EXPECT_EQ(inFile().value("long"), text);
    writer.join();
}

TEST_F(DefaultsFile, aFileThatIsNoObjectReadsAsEmptyAndIsMovedAsideByTheFirstSet) {
    QByteArray noise(10'000'000, '\0');
    QRandomGenerator(4).fillRange(reinterpret_cast<quint32*>(noise.data()), noise.size() / 4);
    const QByteArray tooLarge = R"({"showCursor":false,"padding":")" + QByteArray(17 << 20, 'x') + R"("})";
    for (const QByteArray& content :
         {QByteArray(), QByteArray("{\"showCursor\":fal"), QByteArray("[1,2]"), QByteArray("null"),
          QByteArray("{} trailing"), QByteArray(5000, '['), noise, tooLarge}) {
        SCOPED_TRACE(content.left(20).toStdString());
        put(content);
        Defaults defaults(file());
        EXPECT_FALSE(defaults.holds("showCursor"));
        EXPECT_EQ(contentOf(file()), content); // reading changes nothing
        defaults.setBool("showCursor", false);
        EXPECT_EQ(contentOf(badFile()), content);
        EXPECT_EQ(inFile(), (QJsonObject{{"showCursor", false}}));
        EXPECT_EQ(modeOf(file()), 0600);
    }
}

TEST_F(DefaultsFile, aFileThatBreaksWhileTheProgramRunsIsMovedAsideToo) {
    Defaults defaults(file());
    defaults.setBool("showCursor", false);
    put("broken");
    defaults.setString("saveFormat", "JPEG");
    EXPECT_EQ(contentOf(badFile()), QByteArray("broken"));
    EXPECT_EQ(inFile(), (QJsonObject{{"saveFormat", "JPEG"}}));
}

TEST_F(DefaultsFile, aLinkIsFollowedAndStays) {
    put("{}");
    const QString real = root.filePath("elsewhere.json");
    ASSERT_TRUE(QFile::rename(file(), real));
    ASSERT_TRUE(QFile::link(real, file()));
    Defaults(file()).setBool("showCursor", false);
    EXPECT_TRUE(QFileInfo(file()).isSymLink());
    EXPECT_EQ(contentOf(real), contentOf(file()));
    EXPECT_EQ(inFile(), (QJsonObject{{"showCursor", false}}));
}

TEST_F(DefaultsFile, aLinkToAFileThatIsMissingMakesThatFile) {
    QDir().mkpath(folder());
    ASSERT_TRUE(QFile::link(root.filePath("later.json"), file()));
    Defaults defaults(file());
    EXPECT_FALSE(defaults.holds("showCursor"));
    defaults.setBool("showCursor", false);
    EXPECT_TRUE(QFileInfo::exists(root.filePath("later.json")));
    EXPECT_EQ(Defaults(file()).boolForKey("showCursor"), false);
}

TEST_F(DefaultsFile, aLinkToNowhereStaysAndTheValueLastsForTheRun) {
    QDir().mkpath(folder());
    ASSERT_TRUE(QFile::link("/nowhere/at/all.json", file()));
    Defaults defaults(file());
    expectUnwritable(defaults, "No such file or directory");
    EXPECT_TRUE(QFileInfo(file()).isSymLink());
}

TEST_F(DefaultsFile, aRingOfLinks) {
    QDir().mkpath(folder());
    ASSERT_TRUE(QFile::link(file() + "2", file()));
    ASSERT_TRUE(QFile::link(file(), file() + "2"));
    Defaults defaults(file());
    expectUnwritable(defaults, "Too many levels of symbolic links");
}

TEST_F(DefaultsFile, aFolderInItsPlaceStays) {
    QDir().mkpath(file() + "/kept");
    Defaults defaults(file());
    expectUnwritable(defaults, "Is a directory");
    EXPECT_TRUE(QFileInfo(file() + "/kept").isDir());
}

TEST_F(DefaultsFile, aNamedPipeInItsPlaceHoldsNothingUp) {
    QDir().mkpath(folder());
    ASSERT_EQ(mkfifo(QFile::encodeName(file()).constData(), 0600), 0);
    Defaults defaults(file());
    expectUnwritable(defaults, "Invalid argument");
}

TEST_F(DefaultsFile, aFileWhereTheFolderShouldBe) {
    QFile inTheWay(folder());
    ASSERT_TRUE(inTheWay.open(QIODevice::WriteOnly));
    Defaults defaults(file());
    expectUnwritable(defaults, "Not a directory");
}

TEST_F(DefaultsFile, aFolderThatMayNotBeWritten) {
    put(R"({"showCursor":false})");
    ASSERT_EQ(chmod(QFile::encodeName(file()).constData(), 0644), 0);
    const QByteArray before = contentOf(file());
    const test::ReadOnlyFolder readOnly(folder());
    Defaults defaults(file());
    EXPECT_EQ(defaults.boolForKey("showCursor"), false);
    expectUnwritable(defaults, "Permission denied");
    EXPECT_EQ(contentOf(file()), before);
}

TEST_F(DefaultsFile, aFileThatMayNotBeReadIsNotReplaced) {
    put(R"({"showCursor":false})");
    const QByteArray path = QFile::encodeName(file());
    ASSERT_TRUE(test::OrdinaryUser::owns(folder()) && test::OrdinaryUser::owns(file()));
    ASSERT_EQ(chmod(path.constData(), 0200), 0);
    {
        const test::OrdinaryUser user;
        Defaults defaults(file());
        EXPECT_FALSE(defaults.holds("showCursor"));
        expectUnwritable(defaults, "Permission denied");
    }
    ASSERT_EQ(chmod(path.constData(), 0600), 0);
    EXPECT_EQ(inFile(), (QJsonObject{{"showCursor", false}}));
}

TEST_F(DefaultsFile, aFullDiskLeavesTheOldFileWhole) {
    Defaults(file()).setString("long", QString(3000, QChar('x')));
    const QByteArray before = contentOf(file());
    Defaults defaults(file());
    {
        const test::FullDisk full(1000); // the captured log is a file as well, and has room for its line
        expectUnwritable(defaults, "File too large");
    }
    EXPECT_EQ(contentOf(file()), before);
    EXPECT_EQ(names(), QStringList({"defaults.json", "defaults.json.lock"}));
}

TEST_F(DefaultsFile, theSameTroubleIsToldOnce) {
    QDir().mkpath(file());
    Defaults defaults(file());
    testing::internal::CaptureStderr();
    for (int i = 0; i < 5; ++i)
        defaults.setInteger("historyRetentionDays", i);
    const QString log = QString::fromStdString(testing::internal::GetCapturedStderr());
    EXPECT_EQ(log.count("\n"), 1);
}

TEST_F(DefaultsFile, whatCouldNotBeWrittenGoesAlongWithTheNextSet) {
    QDir().mkpath(file());
    Defaults defaults(file());
    testing::internal::CaptureStderr();
    defaults.setInteger("historyRetentionDays", 7);
    testing::internal::GetCapturedStderr();
    ASSERT_TRUE(QDir().rmdir(file()));
    defaults.setBool("showCursor", false);
    EXPECT_EQ(inFile(), (QJsonObject{{"historyRetentionDays", 7}, {"showCursor", false}}));
}

TEST_F(DefaultsFile, aHolderOfTheLockThatWasStoppedDoesNotStopUs) {
    QDir().mkpath(folder());
    const int holder = ::open(QFile::encodeName(file() + ".lock").constData(), O_RDWR | O_CREAT, 0600);
    ASSERT_EQ(::flock(holder, LOCK_EX), 0);
    Defaults defaults(file());
    expectUnwritable(defaults, QString("another process holds %1.lock").arg(file()));
    ::close(holder);
    defaults.setBool("showCursor", false);
    EXPECT_EQ(inFile(), (QJsonObject{{"historyRetentionDays", 7}, {"showCursor", false}}));
}

TEST_F(DefaultsFile, whatALockKeptBackIsWrittenAtTheEnd) {
    QDir().mkpath(folder());
    const int holder = ::open(QFile::encodeName(file() + ".lock").constData(), O_RDWR | O_CREAT, 0600);
    ASSERT_EQ(::flock(holder, LOCK_EX), 0);
    Defaults::useFile(file());
    testing::internal::CaptureStderr();
    Defaults::shared().setBool("showCursor", false);
    testing::internal::GetCapturedStderr();
    EXPECT_EQ(inFile(), QJsonObject());
    ::close(holder);
    EXPECT_TRUE(Defaults::finishSets(std::chrono::hours(1)));
    EXPECT_EQ(inFile(), (QJsonObject{{"showCursor", false}}));
    SharedObjects::destroyAll();
    Defaults::useFile({});
}

TEST_F(DefaultsFile, aCounterAtTheEndOfItsRangeStaysThere) {
    put(R"({"top":9223372036854775807,"bottom":-9223372036854775808})");
    Defaults defaults(file());
    defaults.addInteger("top", 1);
    defaults.addInteger("bottom", -1);
    EXPECT_EQ(defaults.integerForKey("top"), std::numeric_limits<qint64>::max());
    EXPECT_EQ(defaults.integerForKey("bottom"), std::numeric_limits<qint64>::min());
}

TEST_F(DefaultsFile, numbersThatJsonCannotHoldReadAsTheDefault) {
    Defaults(file()).setDouble("jpegQuality", std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ(Defaults(file()).doubleForKey("jpegQuality"), std::nullopt);
}
