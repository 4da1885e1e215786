#include "history/CaptureHistory.h"

#include "base/Clock.h"
#include "base/Shared.h"
#include "history/CaptureName.h"
#include "support/BadWorld.h"
#include "support/EventLoop.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <atomic>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <map>
#include <mutex>
#include <optional>
#include <sys/stat.h>
#include <thread>
#include <vector>

using namespace marrowfin;
using namespace history;
using namespace imaging;

namespace {

constexpr qint64 second = 1'000'000'000;

Image picture(QRgb color = 0xff336699U, QSize size = {20, 10}) {
    QImage pixels(size, QImage::Format_RGB32);
    pixels.fill(color);
    return Image::captured(pixels);
}

QString nameOf(const QString& path) {
    return QFileInfo(path).fileName();
}

class History : public testing::Test {
protected:
    void SetUp() override { ::chmod(QFile::encodeName(root.path()).constData(), 0755); }
    void TearDown() override {
        Clock::reset();
        SharedObjects::destroyAll();
        CaptureHistory::useFolder({});
    }

    QString folder() const { return root.filePath(QStringLiteral("data/Marrowfin/History")); }
    QStringList visibleFiles() const { return QDir(folder()).entryList(QDir::Files | QDir::NoDotAndDotDot); }
    QStringList everything() const {
        return QDir(folder()).entryList(QDir::AllEntries | QDir::Hidden | QDir::System |
                                        QDir::NoDotAndDotDot);
    }
    void putFile(const QString& name) const {
        QFile file(folder() + u'/' + name);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("x");
    }
    static int modeOf(const QString& path) {
        struct stat found {};
        return ::stat(QFile::encodeName(path).constData(), &found) == 0
                   ? static_cast<int>(found.st_mode & 0777)
                   : -1;
    }
    // Dates as this test says: of the file names given, nothing for all others.
    static CaptureHistory::CreationDate dates(std::map<QString, qint64> known) {
        return [known](const QString& path) -> std::optional<qint64> {
            const auto found = known.find(nameOf(path));
            return found == known.end() ? std::nullopt : std::optional(found->second);
        };
    }
    static QStringList names(const QStringList& paths) {
        QStringList result;
        for (const QString& path : paths)
            result << nameOf(path);
        return result;
    }

    QTemporaryDir root;
};

} // namespace

TEST_F(History, savesAndLists) {
    CaptureHistory history(folder());
    const std::optional<QString> path = history.save(picture());
    ASSERT_TRUE(path);
    EXPECT_TRUE(QFileInfo(*path).isFile());
    EXPECT_EQ(history.list(), QStringList(*path));
    EXPECT_EQ(QImage(*path).convertToFormat(QImage::Format_RGB32), picture().pixels());
}

TEST_F(History, theFileIsTheImagesOnePng) {
    CaptureHistory history(folder());
    const Image image = picture();
    QFile file(*history.save(image));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), image.png());
}

TEST_F(History, namesHoldTheSecondAndAUuid) {
    Clock::setNow([] { return QDateTime::fromMSecsSinceEpoch(1700000000999, Qt::UTC); });
    CaptureHistory history(folder());
    const QString name = nameOf(*history.save(picture()));
    const QRegularExpression form(
        "^capture_1700000000_"
        "[0-9A-F]{8}-[0-9A-F]{4}-[0-9A-F]{4}-[89AB][0-9A-F]{3}-[0-9A-F]{12}\\.png$");
    EXPECT_TRUE(form.match(name).hasMatch()) << name.toStdString();
}

TEST_F(History, foldersAndFilesAreTheirOwnersAlone) {
    CaptureHistory history(folder());
    EXPECT_EQ(modeOf(folder()), 0700);
    EXPECT_EQ(modeOf(root.filePath("data/Marrowfin")), 0700);
    EXPECT_EQ(modeOf(*history.save(picture())), 0600);
}

TEST_F(History, rapidCapturesDoNotOverwriteEachOther) {
    Clock::setNow([] { return QDateTime::fromMSecsSinceEpoch(1700000000000, Qt::UTC); });
    CaptureHistory history(folder());
    const Image image = picture();
    const auto first = history.save(image);
    const auto second = history.save(image);
    ASSERT_TRUE(first && second);
    EXPECT_NE(*first, *second);
    EXPECT_TRUE(QFileInfo::exists(*first));
    EXPECT_TRUE(QFileInfo::exists(*second));
}

TEST_F(History, theHundredAndFirstSaveDeletesExactlyTheOldest) {
    CaptureHistory history(folder());
    QStringList saved;
    for (int i = 0; i < 101; ++i)
        saved.prepend(*history.save(picture()));
    const QString oldest = saved.takeLast();
    EXPECT_FALSE(QFileInfo::exists(oldest));
    EXPECT_EQ(history.list(), saved);
    EXPECT_EQ(visibleFiles().size(), 100);
}

TEST_F(History, quickCapturesStayInTheirOrderThoughTheirDatesAreEqual) {
    CaptureHistory history(folder(), [](const QString&) { return 5 * second; });
    QStringList saved;
    for (int i = 0; i < 60; ++i)
        saved.prepend(*history.save(picture()));
    EXPECT_EQ(history.list(), saved);
}

TEST_F(History, equalDatesKeepTheOrderOfSavingAfterARestart) {
    const auto oneDate = [](const QString&) { return 5 * second; };
    QStringList saved;
    {
        CaptureHistory history(folder(), oneDate);
        for (int i = 0; i < 20; ++i)
            saved.prepend(*history.save(picture()));
    }
    EXPECT_EQ(CaptureHistory(folder(), oneDate).list(), saved);
}

TEST_F(History, theOrderOfSavingHoldsWhenTheClockStepsBack) {
    qint64 now = 1700000000000;
    Clock::setNow([&now] { return QDateTime::fromMSecsSinceEpoch(now -= 10'000, Qt::UTC); });
    CaptureHistory history(folder(), [](const QString&) { return 5 * second; });
    QStringList saved;
    for (int i = 0; i < 20; ++i)
        saved.prepend(*history.save(picture()));
    EXPECT_EQ(history.list(), saved);
}

TEST_F(History, listsTheNewestFirst) {
    CaptureHistory history(folder(),
                           dates({{"a.png", 2 * second}, {"b.png", 3 * second}, {"c.png", 1 * second}}));
    for (const char* name : {"a.png", "b.png", "c.png"})
        putFile(name);
    EXPECT_EQ(names(history.list()), QStringList({"b.png", "a.png", "c.png"}));
}

TEST_F(History, aFileOfUnknownDateComesLast) {
    CaptureHistory history(folder(), dates({{"known.png", -8 * second}}));
    putFile("unknown.png");
    putFile("known.png");
    EXPECT_EQ(names(history.list()), QStringList({"known.png", "unknown.png"}));
}

TEST_F(History, theSecondsInTheNameStandInForADateThatIsNotKept) {
    const QString young = "capture_2000_0188D2B1-0000-7000-8000-000000000001.png";
    const QString old = "capture_1000_0188D2B1-0000-7000-8000-000000000002.png";
    CaptureHistory history(folder(), dates({{"between.png", 1500 * second}}));
    for (const QString& name : {old, young, QString("between.png"), QString("unknown.png")})
        putFile(name);
    EXPECT_EQ(names(history.list()), QStringList({young, "between.png", old, "unknown.png"}));
}

TEST_F(History, theFileSystemsOwnDateOrdersRealFiles) {
    CaptureHistory history(folder());
    const QString later = *history.save(picture());
    struct statx found {};
    ASSERT_EQ(::statx(AT_FDCWD, QFile::encodeName(later).constData(), 0, STATX_BTIME, &found), 0);
    const std::optional<qint64> expected =
        found.stx_mask & STATX_BTIME
            ? std::optional(found.stx_btime.tv_sec * second + found.stx_btime.tv_nsec)
            : std::nullopt;
    EXPECT_EQ(CaptureHistory::birthTime(later), expected);
    EXPECT_EQ(CaptureHistory::birthTime(folder() + "/missing"), std::nullopt);
}

TEST_F(History, anyVisibleFileIsListedAndCountedAndNoHiddenOne) {
    CaptureHistory history(folder());
    putFile("notes.txt");
    putFile(".hidden");
    EXPECT_EQ(names(history.list()), QStringList("notes.txt"));
    for (int i = 0; i < 100; ++i)
        history.save(picture());
    EXPECT_FALSE(QFileInfo::exists(folder() + "/notes.txt"));
    EXPECT_TRUE(QFileInfo::exists(folder() + "/.hidden"));
    EXPECT_EQ(history.list().size(), 100);
}

TEST_F(History, trimGoesOnAfterAnItemThatCannotBeDeletedAndTriesItAgain) {
    CaptureHistory history(folder(), [](const QString& path) {
        return nameOf(path) == "stuck" ? 1 * second : nameOf(path) == "old.png" ? 0 * second : 9 * second;
    });
    putFile("old.png");
    QDir().mkpath(folder() + "/stuck/inside");
    const QByteArray stuck = QFile::encodeName(folder() + "/stuck");
    for (const char* above : {"data", "data/Marrowfin"})
        ASSERT_EQ(::chmod(QFile::encodeName(root.filePath(above)).constData(), 0755), 0);
    ASSERT_TRUE(test::OrdinaryUser::owns(folder()) && test::OrdinaryUser::owns(folder() + "/stuck"));
    ASSERT_EQ(::chmod(stuck.constData(), 0500), 0);
    {
        const test::OrdinaryUser user;
        for (int i = 0; i < 100; ++i)
            ASSERT_TRUE(history.save(picture()));
        EXPECT_FALSE(QFileInfo::exists(folder() + "/old.png"));
        EXPECT_EQ(history.list().size(), 101);
    }
    ::chmod(stuck.constData(), 0700);
    history.save(picture());
    EXPECT_FALSE(QFileInfo::exists(folder() + "/stuck"));
    EXPECT_EQ(history.list().size(), 100);
}

TEST_F(History, amongFilesDatedInTheFutureTheNewOneStaysAndTheNextOldestGoes) {
    CaptureHistory history(folder(), [](const QString& path) {
        return nameOf(path).startsWith("capture_") ? 1000 * second : nameOf(path).toLongLong() * second;
    });
    for (int i = 0; i < 100; ++i)
        putFile(QString::number(2000 + i));
    const std::optional<QString> saved = history.save(picture());
    ASSERT_TRUE(saved);
    EXPECT_TRUE(QFileInfo::exists(*saved));
    EXPECT_FALSE(QFileInfo::exists(folder() + "/2000"));
    EXPECT_EQ(history.list().size(), 100);
}

TEST_F(History, changesAreTold) {
    CaptureHistory history(folder());
    int changes = 0;
    QObject::connect(&history, &CaptureHistory::changed, [&] {
        EXPECT_TRUE(isMainThread());
        ++changes;
    });
    ASSERT_TRUE(*test::awaited(history.saveAsync(picture())));
    QCoreApplication::processEvents();
    EXPECT_EQ(changes, 1);
    ASSERT_TRUE(test::awaited(history.clearAllAsync()));
    QCoreApplication::processEvents();
    EXPECT_EQ(changes, 2);
    static_cast<void>(history.save(Image()));
    QCoreApplication::processEvents();
    EXPECT_EQ(changes, 2) << "nothing came and nothing went";
}

TEST_F(History, aListingWaitsForNoSave) {
    // The save is held up where it trims; a slow disk or an encoding hold it up likewise.
    std::mutex disk;
    std::atomic<bool> saving{true};
    CaptureHistory history(folder(), [&](const QString&) {
        if (!isMainThread() && saving.exchange(false)) {
            const std::lock_guard wait(disk);
        }
        return std::optional(1 * second);
    });
    putFile("a.png");
    std::unique_lock slow(disk);
    const Outcome<std::optional<QString>> saved = history.saveAsync(picture());
    while (saving)
        std::this_thread::yield();
    EXPECT_EQ(history.list().size(), 2);
    EXPECT_EQ(test::awaited(history.listAsync())->size(), 2);
    EXPECT_FALSE(saved.isSettled());
    slow.unlock();
    EXPECT_TRUE(*test::awaited(saved));
}

TEST_F(History, anEndDoesNotWaitForADiskThatHangs) {
    CaptureHistory::useFolder(folder());
    std::mutex disk;
    std::unique_lock slow(disk);
    Shared<CaptureHistory>::replace(std::make_unique<CaptureHistory>(folder(), [&](const QString&) {
        const std::lock_guard wait(disk);
        return std::optional(1 * second);
    }));
    const Outcome<std::optional<QString>> saved = CaptureHistory::shared().saveAsync(picture());
    EXPECT_FALSE(CaptureHistory::finishSaves(std::chrono::milliseconds(1)));
    slow.unlock();
    EXPECT_TRUE(CaptureHistory::finishSaves(std::chrono::hours(1)));
    EXPECT_TRUE(*test::awaited(saved));
}

TEST_F(History, clearAllLeavesAnEmptyFolder) {
    CaptureHistory history(folder());
    history.save(picture());
    putFile(".hidden");
    QDir().mkpath(folder() + "/sub/folder");
    history.clearAll();
    EXPECT_TRUE(QFileInfo(folder()).isDir());
    EXPECT_EQ(everything(), QStringList());
    EXPECT_EQ(modeOf(folder()), 0700);
    EXPECT_EQ(history.list(), QStringList());
    EXPECT_TRUE(history.save(picture()));
}

TEST_F(History, clearAllEmptiesAFolderBehindALink) {
    QDir().mkpath(root.filePath("data/Marrowfin"));
    QDir().mkpath(root.filePath("large disk"));
    ASSERT_TRUE(QFile::link(root.filePath("large disk"), folder()));
    CaptureHistory history(folder());
    ASSERT_TRUE(history.save(picture()));
    history.clearAll();
    EXPECT_TRUE(QDir(root.filePath("large disk")).isEmpty());
    EXPECT_TRUE(history.save(picture()));
}

TEST_F(History, clearAllDoesNotFollowLinksOutOfTheFolder) {
    CaptureHistory history(folder());
    const QString outside = root.filePath("outside");
    QDir().mkpath(outside + "/kept");
    ASSERT_TRUE(QFile::link(outside, folder() + "/link"));
    history.clearAll();
    EXPECT_TRUE(QFileInfo::exists(outside + "/kept"));
    EXPECT_EQ(everything(), QStringList());
}

TEST_F(History, ageAloneDeletesNothing) {
    CaptureHistory history(folder(), dates({{"old.png", 1 * second}}));
    putFile("old.png");
    history.save(picture());
    EXPECT_TRUE(QFileInfo::exists(folder() + "/old.png"));
}

TEST_F(History, anImageWithoutPixelsGivesNothingInSilence) {
    CaptureHistory history(folder());
    testing::internal::CaptureStdout();
    EXPECT_EQ(history.save(Image()), std::nullopt);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(everything(), QStringList());
}

TEST_F(History, aFileInTheFoldersPlace) {
    QDir().mkpath(root.filePath("data/Marrowfin"));
    QFile inTheWay(folder());
    ASSERT_TRUE(inTheWay.open(QIODevice::WriteOnly));
    CaptureHistory history(folder());
    EXPECT_EQ(history.list(), QStringList());
    testing::internal::CaptureStdout();
    EXPECT_EQ(history.save(picture()), std::nullopt);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "Failed to save history: Not a directory\n");
    EXPECT_TRUE(QFileInfo(folder()).isFile());
    history.clearAll();
    EXPECT_TRUE(history.save(picture()));
}

TEST_F(History, aFolderThatIsGone) {
    CaptureHistory history(folder());
    QDir(folder()).removeRecursively();
    EXPECT_EQ(history.list(), QStringList());
    testing::internal::CaptureStdout();
    EXPECT_EQ(history.save(picture()), std::nullopt);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "Failed to save history: No such file or directory\n");
}

TEST_F(History, aFolderThatMayNotBeWritten) {
    CaptureHistory history(folder());
    ASSERT_EQ(::chmod(QFile::encodeName(root.filePath("data")).constData(), 0755), 0);
    ASSERT_EQ(::chmod(QFile::encodeName(root.filePath("data/Marrowfin")).constData(), 0755), 0);
    putFile("old.png");
    testing::internal::CaptureStdout();
    {
        const test::ReadOnlyFolder readOnly(folder());
        EXPECT_EQ(history.save(picture()), std::nullopt);
        EXPECT_EQ(names(history.list()), QStringList("old.png"));
    }
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "Failed to save history: Permission denied\n");
    EXPECT_EQ(everything(), QStringList("old.png"));
}

TEST_F(History, aFullDiskLeavesNoHalfFile) {
    CaptureHistory history(folder());
    const QString whole = *history.save(picture());
    QImage noise(200, 200, QImage::Format_RGB32);
    quint32 state = 1;
    for (int y = 0; y < 200; ++y)
        for (int x = 0; x < 200; ++x)
            noise.setPixel(x, y, state = state * 1664525U + 1013904223U);
    testing::internal::CaptureStdout();
    {
        const test::FullDisk full(4096);
        EXPECT_EQ(history.save(Image::captured(noise)), std::nullopt);
    }
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "Failed to save history: File too large\n");
    EXPECT_EQ(everything(), QStringList(nameOf(whole)));
}

TEST_F(History, asynchronousSavesKeepTheirOrder) {
    CaptureHistory history(folder(), [](const QString&) { return 5 * second; });
    std::vector<Outcome<std::optional<QString>>> outcomes;
    for (int i = 0; i < 20; ++i)
        outcomes.push_back(history.saveAsync(picture(0xff000000U + static_cast<QRgb>(i), {400, 300})));
    const QString last = *history.save(picture());
    QStringList saved(last);
    for (const auto& outcome : outcomes)
        saved.insert(1, **test::awaited(outcome));
    EXPECT_EQ(history.list(), saved);
}

TEST_F(History, asynchronousSaveTellsOfItsFailure) {
    CaptureHistory history(folder());
    QDir(folder()).removeRecursively();
    testing::internal::CaptureStdout();
    EXPECT_EQ(*test::awaited(history.saveAsync(picture())), std::nullopt);
    EXPECT_EQ(*test::awaited(history.saveAsync(Image())), std::nullopt);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "Failed to save history: No such file or directory\n");
}

TEST_F(History, whatWasAskedForBeforeTheEndIsOnDisk) {
    {
        CaptureHistory history(folder());
        for (int i = 0; i < 5; ++i)
            static_cast<void>(history.saveAsync(picture()));
    }
    EXPECT_EQ(visibleFiles().size(), 5);
}

TEST_F(History, anEndWithoutDestructorsFindsOnDiskWhatWasAskedFor) {
    CaptureHistory::useFolder(folder());
    EXPECT_TRUE(CaptureHistory::finishSaves(std::chrono::hours(1)));
    EXPECT_FALSE(QFileInfo::exists(folder())) << "where nothing was captured nothing is made";
    for (int i = 0; i < 5; ++i)
        static_cast<void>(CaptureHistory::shared().saveAsync(picture(0xff336699U, {1200, 900})));
    EXPECT_TRUE(CaptureHistory::finishSaves(std::chrono::hours(1)));
    EXPECT_EQ(visibleFiles().size(), 5);
    EXPECT_EQ(everything().size(), 5) << "no temporary neighbour either";
}

TEST_F(History, clearAllComesAfterTheSavesBeforeIt) {
    CaptureHistory history(folder());
    for (int i = 0; i < 5; ++i)
        static_cast<void>(history.saveAsync(picture()));
    history.clearAll();
    EXPECT_EQ(everything(), QStringList());
}

TEST_F(History, theSharedHistoryUsesTheInstalledFolder) {
    CaptureHistory::useFolder(folder());
    EXPECT_FALSE(QFileInfo::exists(folder()));
    EXPECT_EQ(CaptureHistory::shared().historyDirectory(), folder());
    EXPECT_TRUE(QFileInfo(folder()).isDir());
    EXPECT_EQ(CaptureHistory::maxHistoryItems, 100);
}

TEST(CaptureName, readsWhatItMade) {
    const CaptureName made = makeCaptureName(QDateTime::fromSecsSinceEpoch(1700000000, Qt::UTC));
    const std::optional<CaptureName> read = parseCaptureName(made.fileName());
    ASSERT_TRUE(read);
    EXPECT_EQ(read->seconds, 1700000000);
    EXPECT_EQ(read->uuid, made.uuid);
}

TEST(CaptureName, otherNamesAreNone) {
    for (const char* name :
         {"", "capture_.png", "capture_12_.png", "capture_x_0188D2B1-0000-7000-8000-000000000001.png",
          "capture_12_0188D2B1-0000-7000-8000-000000000001.jpg", "capture_12_not-a-uuid.png",
          "shot_12_0188D2B1-0000-7000-8000-000000000001.png"})
        EXPECT_FALSE(parseCaptureName(name)) << name;
}

TEST(CaptureName, uuidsCountUpwardsAndDiffer) {
    const QDateTime now = QDateTime::fromMSecsSinceEpoch(1700000000000, Qt::UTC);
    QString last;
    for (int i = 0; i < 20000; ++i) {
        const QString next = makeCaptureName(now).uuid;
        ASSERT_GT(next, last);
        last = next;
    }
}
