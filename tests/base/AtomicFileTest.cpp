#include "base/AtomicFile.h"

#include "base/Leftovers.h"
#include "support/BadWorld.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <algorithm>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

using namespace marrowfin;

namespace {

class AtomicFile : public testing::Test {
protected:
    void SetUp() override { ::chmod(QFile::encodeName(root.path()).constData(), 0755); }

    QString at(const QString& name) const { return root.filePath(name); }
    QStringList everything() const {
        return QDir(root.path())
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    }
    static QByteArray contentOf(const QString& path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
    }
    static int modeOf(const QString& path) {
        struct stat found {};
        return ::stat(QFile::encodeName(path).constData(), &found) == 0
                   ? static_cast<int>(found.st_mode & 0777)
                   : -1;
    }
    static bool aFileIsOpenIn(const QString& folder) {
        const QString root = QFileInfo(folder).canonicalFilePath() + u'/';
        const QFileInfoList open = QDir("/proc/self/fd").entryInfoList(QDir::AllEntries | QDir::System);
        return std::any_of(open.begin(), open.end(),
                           [&](const QFileInfo& one) { return one.symLinkTarget().startsWith(root); });
    }
    // A process that begins a file in the folder and is killed in the middle.
    void beginAndDie(DraftFile::Place place) const {
        const pid_t child = ::fork();
        if (child == 0) {
            const DraftFile draft(at("file"), place, FileAccess::OwnerOnly);
            ::_exit(draft.isOpen() && draft.write("half") ? 0 : 1);
        }
        int status = -1;
        ASSERT_EQ(::waitpid(child, &status, 0), child);
        ASSERT_EQ(status, 0);
    }
    void expectFailure(const QString& path, const QByteArray& bytes, const QString& why) const {
        const QStringList before = everything();
        for (const FileAppears appears : {FileAppears::OnceOnDisk, FileAppears::OnceWritten}) {
            const Result<void> result = writeFileAtomically(path, bytes, {.appears = appears});
            ASSERT_FALSE(result);
            EXPECT_EQ(result.error().message, why);
        }
        EXPECT_EQ(everything(), before);
    }

    QTemporaryDir root;
};

} // namespace

TEST_F(AtomicFile, makesAFileForItsOwnerAlone) {
    ASSERT_TRUE(writeFileAtomically(at("new.png"), "bytes"));
    EXPECT_EQ(contentOf(at("new.png")), "bytes");
    EXPECT_EQ(modeOf(at("new.png")), 0600);
    EXPECT_EQ(everything(), QStringList("new.png"));
}

TEST_F(AtomicFile, replacesAFileAsAWhole) {
    ASSERT_TRUE(writeFileAtomically(at("file"), QByteArray(100000, 'a')));
    QFile stillOpen(at("file"));
    ASSERT_TRUE(stillOpen.open(QIODevice::ReadOnly));
    ASSERT_TRUE(writeFileAtomically(at("file"), "b", {.appears = FileAppears::OnceWritten}));
    EXPECT_EQ(contentOf(at("file")), "b");
    EXPECT_EQ(stillOpen.readAll(), QByteArray(100000, 'a')); // who read the old one goes on reading it
    EXPECT_EQ(everything(), QStringList("file"));
}

// As it would be if the program had been started with another umask.
class AtomicFileUmask : public AtomicFile {
protected:
    AtomicFileUmask() : before(::umask(027)) {}
    ~AtomicFileUmask() override { ::umask(before); }
    static constexpr FileManners asUsual{FileAppears::OnceOnDisk, FileAccess::AsUsual};
    mode_t before;
};

TEST_F(AtomicFileUmask, whatTheUserSavesIsReadableAsNewFilesAre) {
    ASSERT_TRUE(writeFileAtomically(at("new"), "x", asUsual));
    EXPECT_EQ(modeOf(at("new")), 0640);
    ASSERT_TRUE(writeFileAtomically(at("ours"), "x"));
    EXPECT_EQ(modeOf(at("ours")), 0600);
}

TEST_F(AtomicFileUmask, whatTheUserReplacesKeepsItsMode) {
    ASSERT_TRUE(writeFileAtomically(at("shared"), "old", asUsual));
    ::chmod(QFile::encodeName(at("shared")).constData(), 0664);
    ASSERT_TRUE(writeFileAtomically(at("shared"), "new", asUsual));
    EXPECT_EQ(modeOf(at("shared")), 0664);
    EXPECT_EQ(contentOf(at("shared")), "new");
    ASSERT_TRUE(writeFileAtomically(at("shared"), "ours"));
    EXPECT_EQ(modeOf(at("shared")), 0600);
}

TEST_F(AtomicFile, aProcessThatIsKilledLeavesNothingWhereFilesMayBeNameless) {
    beginAndDie(DraftFile::Place::Nameless);
    EXPECT_EQ(everything(), QStringList());
}

TEST_F(AtomicFile, whatAKilledProcessLeftElsewhereIsClearedAwayAndNothingElse) {
    beginAndDie(DraftFile::Place::HiddenNeighbour);
    EXPECT_EQ(everything().size(), 1);
    const QString living = QStringLiteral(".marrowfin.%1.1").arg(::getppid());
    for (const QString& name : {living, QStringLiteral(".marrowfin.of.the.user"), QStringLiteral("file")})
        ASSERT_TRUE(writeFileAtomically(at(name), "x"));
    // Of a predecessor that had our own process id, and of ours.
    const QString predecessors = QStringLiteral(".marrowfin.%1.1").arg(::getpid());
    const QString ours = QStringLiteral(".marrowfin.%1.2").arg(::getpid());
    ASSERT_TRUE(writeFileAtomically(at(predecessors), "x") && writeFileAtomically(at(ours), "x"));
    QFile aged(at(predecessors));
    ASSERT_TRUE(aged.open(QIODevice::ReadWrite));
    ASSERT_TRUE(aged.setFileTime(QDateTime::currentDateTime().addDays(-1), QFile::FileModificationTime));
    removeDeadDrafts(root.path());
    EXPECT_FALSE(everything().contains(predecessors));
    EXPECT_TRUE(QFile::remove(at(ours)));
    EXPECT_EQ(everything(), QStringList({living, ".marrowfin.of.the.user", "file"}));
}

TEST_F(AtomicFile, aNeighbourTakesItsNameToo) {
    for (const char* bytes : {"first", "second"}) {
        DraftFile draft(at("file"), DraftFile::Place::HiddenNeighbour, FileAccess::OwnerOnly);
        ASSERT_TRUE(draft.write(bytes) && draft.flush() && draft.becomes(at("file")));
        EXPECT_EQ(contentOf(at("file")), bytes);
    }
    { const DraftFile unused(at("other"), DraftFile::Place::HiddenNeighbour, FileAccess::OwnerOnly); }
    EXPECT_EQ(everything(), QStringList("file"));
}

TEST_F(AtomicFile, writesNothingToo) {
    ASSERT_TRUE(writeFileAtomically(at("empty"), {}));
    EXPECT_EQ(contentOf(at("empty")), QByteArray());
}

TEST_F(AtomicFile, takesTheLongestNameThereIs) {
    const QString name(255, QChar('n'));
    ASSERT_TRUE(writeFileAtomically(at(name), "x"));
    EXPECT_EQ(everything(), QStringList(name));
    expectFailure(at(name + "n"), "x", "File name too long");
}

TEST_F(AtomicFile, aRelativePathIsBelowTheWorkingFolder) {
    const QString before = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(root.path()));
    EXPECT_TRUE(writeFileAtomically("relative", "x"));
    QDir::setCurrent(before);
    EXPECT_EQ(contentOf(at("relative")), "x");
}

TEST_F(AtomicFile, followsLinks) {
    QDir(root.path()).mkdir("folder");
    ASSERT_TRUE(QFile::link("folder/real", at("second")));
    ASSERT_TRUE(QFile::link(at("second"), at("first")));
    ASSERT_TRUE(writeFileAtomically(at("first"), "x"));
    EXPECT_TRUE(QFileInfo(at("first")).isSymLink() && QFileInfo(at("second")).isSymLink());
    EXPECT_EQ(contentOf(at("folder/real")), "x");
}

TEST_F(AtomicFile, aFolderThatIsMissing) {
    expectFailure(at("missing/file"), "x", "No such file or directory");
}

TEST_F(AtomicFile, aFileWhereAFolderShouldBe) {
    ASSERT_TRUE(writeFileAtomically(at("file"), "x"));
    expectFailure(at("file/below"), "x", "Not a directory");
}

TEST_F(AtomicFile, aFolderIsNotReplaced) {
    QDir(root.path()).mkdir("folder");
    expectFailure(at("folder"), "x", "Is a directory");
}

// A pipe of its own stands for everything that is neither file nor folder. Never the system's devices: were
// the code to break, root would lose them.
TEST_F(AtomicFile, whatIsNoOrdinaryFileIsNotReplaced) {
    ASSERT_EQ(::mkfifo(QFile::encodeName(at("pipe")).constData(), 0600), 0);
    ASSERT_TRUE(QFile::link(at("pipe"), at("link")));
    expectFailure(at("pipe"), "x", "Invalid argument");
    expectFailure(at("link"), "x", "Invalid argument");
}

TEST_F(AtomicFile, aRingOfLinksEnds) {
    ASSERT_TRUE(QFile::link(at("b"), at("a")));
    ASSERT_TRUE(QFile::link(at("a"), at("b")));
    expectFailure(at("a"), "x", "Too many levels of symbolic links");
}

TEST_F(AtomicFile, aFolderThatMayNotBeWritten) {
    ASSERT_TRUE(writeFileAtomically(at("old"), "old"));
    ASSERT_TRUE(test::OrdinaryUser::owns(root.path()) && test::OrdinaryUser::owns(at("old")));
    {
        const test::ReadOnlyFolder readOnly(root.path());
        expectFailure(at("new"), "x", "Permission denied");
        expectFailure(at("old"), "x", "Permission denied");
    }
    EXPECT_EQ(contentOf(at("old")), "old");
}

TEST_F(AtomicFile, aFileThatMayNotBeWrittenIsNotReplaced) {
    ASSERT_TRUE(writeFileAtomically(at("old"), "old"));
    ASSERT_TRUE(test::OrdinaryUser::owns(root.path()) && test::OrdinaryUser::owns(at("old")));
    ::chmod(QFile::encodeName(at("old")).constData(), 0400);
    {
        const test::OrdinaryUser user;
        expectFailure(at("old"), "x", "Permission denied");
    }
    EXPECT_EQ(contentOf(at("old")), "old");
}

TEST_F(AtomicFile, aFullDiskLeavesTheOldFile) {
    ASSERT_TRUE(writeFileAtomically(at("old"), "old"));
    {
        const test::FullDisk full(1000);
        expectFailure(at("old"), QByteArray(100000, 'x'), "File too large");
    }
    EXPECT_EQ(contentOf(at("old")), "old");
}

TEST_F(AtomicFile, whatIsBeingWrittenIsWaitedForAndThenThereUnderItsNameAlone) {
    const QByteArray large(64 << 20, 'x');
    std::thread writer([&] { EXPECT_TRUE(writeFileAtomically(at("large"), large)); });
    while (!aFileIsOpenIn(root.path()))
        std::this_thread::yield();
    EXPECT_TRUE(finishWrites(std::chrono::minutes(1)));
    EXPECT_EQ(everything(), QStringList("large"));
    writer.join();
}

TEST_F(AtomicFile, withNothingBeingWrittenThereIsNothingToWaitFor) {
    ASSERT_TRUE(writeFileAtomically(at("file"), "bytes"));
    finishWrites(std::chrono::hours(1));
}

TEST_F(AtomicFile, flushingWhatIsNotThereIsNothing) {
    flushToDisk(at("missing"));
    EXPECT_EQ(everything(), QStringList());
}

TEST_F(AtomicFile, privateFoldersAreMadeWithThoseAbove) {
    ASSERT_TRUE(makePrivateFolder(at("one/two/three")));
    for (const char* path : {"one", "one/two", "one/two/three"})
        EXPECT_EQ(modeOf(at(path)), 0700) << path;
    EXPECT_TRUE(makePrivateFolder(at("one/two/three")));
}

TEST_F(AtomicFile, aPrivateFolderWithASlashAtItsEnd) {
    ASSERT_TRUE(makePrivateFolder(at("one/two/")));
    EXPECT_EQ(modeOf(at("one/two")), 0700);
}

TEST_F(AtomicFile, aFolderThatIsThereKeepsItsMode) {
    QDir(root.path()).mkdir("open");
    ::chmod(QFile::encodeName(at("open")).constData(), 0755);
    ASSERT_TRUE(makePrivateFolder(at("open/below")));
    EXPECT_EQ(modeOf(at("open")), 0755);
    EXPECT_EQ(modeOf(at("open/below")), 0700);
}

TEST_F(AtomicFile, aPrivateFolderBehindALinkIsThatFolder) {
    QDir(root.path()).mkdir("real");
    ASSERT_TRUE(QFile::link(at("real"), at("link")));
    EXPECT_TRUE(makePrivateFolder(at("link/below")));
    EXPECT_TRUE(QFileInfo(at("real/below")).isDir());
}

TEST_F(AtomicFile, aPrivateFolderThatCannotBeMade) {
    ASSERT_TRUE(writeFileAtomically(at("file"), "x"));
    EXPECT_EQ(makePrivateFolder(at("file")).error().message, "Not a directory");
    EXPECT_EQ(makePrivateFolder(at("file/below/more")).error().message, "Not a directory");
    ASSERT_TRUE(QFile::link("/nowhere/at/all", at("nowhere")));
    EXPECT_EQ(makePrivateFolder(at("nowhere")).error().message, "Not a directory");
    const test::ReadOnlyFolder readOnly(root.path());
    EXPECT_EQ(makePrivateFolder(at("new/below")).error().message, "Permission denied");
}
