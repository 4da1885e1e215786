#include "base/AtomicFile.h"

#include "support/BadWorld.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <thread>

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
    void expectFailure(const QString& path, const QByteArray& bytes, const QString& why) const {
        const QStringList before = everything();
        for (const FileAppears appears : {FileAppears::OnceOnDisk, FileAppears::OnceWritten}) {
            const Result<void> result = writeFileAtomically(path, bytes, appears);
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
    ASSERT_TRUE(writeFileAtomically(at("file"), "b", FileAppears::OnceWritten));
    EXPECT_EQ(contentOf(at("file")), "b");
    EXPECT_EQ(stillOpen.readAll(), QByteArray(100000, 'a')); // who read the old one goes on reading it
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

TEST_F(AtomicFile, whatIsBeingWrittenIsWaitedForAndThenLeavesNoNeighbour) {
    const QByteArray large(64 << 20, 'x');
    std::thread writer([&] { EXPECT_TRUE(writeFileAtomically(at("large"), large)); });
    while (everything().isEmpty())
        std::this_thread::yield();
    finishWrites(std::chrono::minutes(1));
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
