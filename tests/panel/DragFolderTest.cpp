// Where drag-out files lie when strangers hold the names.
#include "base/Shared.h"
#include "panel/DragExportFolder.h"
#include "platform/fake/FakeDesktop.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace marrowfin::panel {

class DragFolder : public testing::Test {
protected:
    DragFolder() { QDir().mkpath(temporary()); }

    QString temporary() const { return desktop.folders.temporary(); }
    QString common() const { return temporary() + QStringLiteral("/MarrowfinDragExports"); }
    QString own() const { return common() + QStringLiteral("-%1").arg(::geteuid()); }
    // A file in its place is as good as a stranger's folder: it can't be ours.
    static void take(const QString& path) {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    }
    QStringList everything() const {
        return QDir(temporary()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
    }

    fake::FakeDesktop desktop;
};

TEST_F(DragFolder, IsTheCommonOneAndElseOneOfTheUsersOwn) {
    EXPECT_EQ(dragExportFolder(), common());
    QDir(common()).removeRecursively();
    take(common());
    EXPECT_EQ(dragExportFolder(), own());
    EXPECT_TRUE(isOursAlone(own()));
}

TEST_F(DragFolder, WhereBothAreTakenIsAPrivateOneUntilTheEnd) {
    take(common());
    take(own());
    const QString folder = dragExportFolder();
    ASSERT_TRUE(isOursAlone(folder));
    EXPECT_TRUE(folder.startsWith(own() + QStringLiteral("-%1-").arg(::getpid())));
    struct stat found {};
    ASSERT_EQ(::stat(QFile::encodeName(folder).constData(), &found), 0);
    EXPECT_EQ(found.st_mode & 0777, 0700U);
    EXPECT_EQ(dragExportFolder(), folder) << "one for the run";
    take(folder + QStringLiteral("/Marrowfin.png"));
    SharedObjects::destroyAll();
    EXPECT_EQ(everything().size(), 2);
}

TEST_F(DragFolder, WhatKilledRunsLeftGoesAndNothingElse) {
    const pid_t dead = ::fork();
    if (dead == 0)
        ::_exit(0);
    ASSERT_EQ(::waitpid(dead, nullptr, 0), dead);
    const QString left = own() + QStringLiteral("-%1-abcdef").arg(dead);
    const QString living = own() + QStringLiteral("-%1-abcdef").arg(::getppid());
    for (const QString& folder : {left, living, common(), own()})
        QDir().mkpath(folder);
    take(left + QStringLiteral("/Marrowfin.png"));
    take(common() + QStringLiteral("/Marrowfin.png"));
    take(common() + QStringLiteral("/.marrowfin.%1.1").arg(dead));
    removeDragExportLeftovers(temporary());
    EXPECT_FALSE(QFileInfo::exists(left));
    for (const QString& folder : {living, common(), own()})
        EXPECT_TRUE(QFileInfo::exists(folder)) << folder.toStdString();
    EXPECT_EQ(QDir(common()).entryList(QDir::Files | QDir::Hidden), QStringList("Marrowfin.png"));
}

} // namespace marrowfin::panel
