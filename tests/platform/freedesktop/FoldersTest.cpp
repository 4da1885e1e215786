// Where the user's folders are, by the environment and by user-dirs.dirs.
#include "platform/freedesktop/FreedesktopFolders.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <map>

using namespace marrowfin;
using freedesktop::FreedesktopFolders;

namespace {

class FoldersTest : public testing::Test {
protected:
    FoldersTest() {
        for (const char* name : {"HOME", "XDG_DATA_HOME", "XDG_CONFIG_HOME"}) {
            before[name] = qgetenv(name);
            qunsetenv(name);
        }
        qputenv("HOME", QFile::encodeName(home.path()));
    }
    ~FoldersTest() override {
        for (const auto& [name, value] : before)
            value.isEmpty() ? qunsetenv(name) : qputenv(name, value);
    }
    void writeUserDirectories(const QByteArray& text) {
        QDir(home.path()).mkpath(QStringLiteral(".config"));
        QFile file(home.filePath(QStringLiteral(".config/user-dirs.dirs")));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    }

    QTemporaryDir home;
    std::map<const char*, QByteArray> before;
    FreedesktopFolders folders;
};

} // namespace

TEST_F(FoldersTest, dataAndConfigurationAreBelowHomeByDefault) {
    EXPECT_EQ(folders.applicationSupport(), home.path() + QStringLiteral("/.local/share"));
    EXPECT_EQ(folders.configuration(), home.path() + QStringLiteral("/.config"));
}

TEST_F(FoldersTest, theEnvironmentMovesThem) {
    qputenv("XDG_DATA_HOME", "/elsewhere/data");
    qputenv("XDG_CONFIG_HOME", "/elsewhere/config/");
    EXPECT_EQ(folders.applicationSupport(), QStringLiteral("/elsewhere/data"));
    EXPECT_EQ(folders.configuration(), QStringLiteral("/elsewhere/config"));
}

TEST_F(FoldersTest, aRelativePathCountsAsUnset) {
    qputenv("XDG_DATA_HOME", "data");
    qputenv("XDG_CONFIG_HOME", "../config");
    EXPECT_EQ(folders.applicationSupport(), home.path() + QStringLiteral("/.local/share"));
    EXPECT_EQ(folders.configuration(), home.path() + QStringLiteral("/.config"));
}

TEST_F(FoldersTest, picturesAndMoviesFollowTheUsersOwnNames) {
    writeUserDirectories("XDG_PICTURES_DIR=\"$HOME/Bilder\"\nXDG_VIDEOS_DIR=\"/srv/films\"\n");
    EXPECT_EQ(folders.pictures(), home.path() + QStringLiteral("/Bilder"));
    EXPECT_EQ(folders.movies(), QStringLiteral("/srv/films"));
}

TEST_F(FoldersTest, withoutNamesOfTheUsersTheyHaveTheUsualOnes) {
    EXPECT_EQ(folders.pictures(), home.path() + QStringLiteral("/Pictures"));
    EXPECT_EQ(folders.movies(), home.path() + QStringLiteral("/Videos"));
}

TEST_F(FoldersTest, aFolderThatIsSwitchedOffIsNone) {
    writeUserDirectories("XDG_PICTURES_DIR=\"$HOME/\"\nXDG_VIDEOS_DIR=\"$HOME\"\n");
    EXPECT_EQ(folders.pictures(), std::nullopt);
    EXPECT_EQ(folders.movies(), std::nullopt);
}

TEST_F(FoldersTest, withoutAHomeThereAreNone) {
    qunsetenv("HOME");
    EXPECT_EQ(folders.pictures(), std::nullopt);
    EXPECT_EQ(folders.movies(), std::nullopt);
}
