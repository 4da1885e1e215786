// What is started when something is opened, with programs played by scripts.
#include "desktop/support/Waiting.h"
#include "platform/freedesktop/FreedesktopOpener.h"

#include <QDBusConnection>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace marrowfin;
using namespace marrowfin::testsupport;
using freedesktop::FreedesktopOpener;

namespace {

// Plays the file manager.
class FileManager : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.FileManager1")
public:
    FileManager()
        : bus(QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("played-files"))) {
        bus.registerObject(QStringLiteral("/org/freedesktop/FileManager1"), this,
                           QDBusConnection::ExportAllSlots);
        bus.registerService(QStringLiteral("org.freedesktop.FileManager1"));
    }
    ~FileManager() override {
        bus.unregisterService(QStringLiteral("org.freedesktop.FileManager1"));
        QDBusConnection::disconnectFromBus(QStringLiteral("played-files"));
    }
    QStringList shown;

public Q_SLOTS:
    void ShowItems(const QStringList& addresses, const QString&) { shown << addresses; }

private:
    QDBusConnection bus;
};

// A folder of programs that note what they were started with; in front of the real ones.
class OpenerTest : public testing::Test {
protected:
    OpenerTest() : pathBefore(qgetenv("PATH")) {
        qputenv("PATH", QFile::encodeName(programs.path()) + ':' + pathBefore);
        // The toolkit looks once, so it has to be there from the first test on.
        play(QStringLiteral("xdg-open"));
    }
    ~OpenerTest() override { qputenv("PATH", pathBefore); }

    void play(const QString& program) {
        QFile script(programs.filePath(program));
        ASSERT_TRUE(script.open(QIODevice::WriteOnly));
        script.write("#!/bin/sh\nprintf '%s' \"$*\" > \"" + QFile::encodeName(notePath(program)) +
                     ".part\" && mv \"" + QFile::encodeName(notePath(program)) + ".part\" \"" +
                     QFile::encodeName(notePath(program)) + "\"\n");
        script.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }
    QString notePath(const QString& program) const {
        return programs.filePath(program + QStringLiteral(".note"));
    }
    // The arguments, once it was started.
    QByteArray startedWith(const QString& program) const {
        QFile note(notePath(program));
        waitUntil([&note] { return note.exists(); });
        return note.open(QIODevice::ReadOnly) ? note.readAll() : QByteArray("never started");
    }

    static inline QTemporaryDir programs;
    QByteArray pathBefore;
    FreedesktopOpener opener;
};

} // namespace

TEST_F(OpenerTest, addressesGoToTheDesktopsOpener) {
    QFile::remove(notePath(QStringLiteral("xdg-open")));
    EXPECT_TRUE(await(opener.openUrl(QUrl(QStringLiteral("https://example.org/a?b=c d")))));
    EXPECT_EQ(startedWith(QStringLiteral("xdg-open")), QByteArray("https://example.org/a?b=c%20d"));
}

TEST_F(OpenerTest, aFileIsShownInTheFileManager) {
    const FileManager manager;
    EXPECT_TRUE(await(opener.reveal(QStringLiteral("/tmp/Marrowfin 100% gr\u00fcn.png"))));
    EXPECT_EQ(manager.shown, QStringList{QStringLiteral("file:///tmp/Marrowfin%20100%25%20gr%C3%BCn.png")});
}

TEST_F(OpenerTest, withoutAFileManagerItsFolderIsOpened) {
    QFile::remove(notePath(QStringLiteral("xdg-open")));
    EXPECT_TRUE(await(opener.reveal(QStringLiteral("/tmp/some folder/file.png"))));
    EXPECT_EQ(startedWith(QStringLiteral("xdg-open")), QByteArray("file:///tmp/some%20folder"));
}

TEST_F(OpenerTest, keyboardSettingsAreTheDesktopsOwn) {
    play(QStringLiteral("xfce4-keyboard-settings"));
    qputenv("XDG_CURRENT_DESKTOP", "XFCE");
    EXPECT_TRUE(await(opener.openSettings(platform::SettingsPage::Keyboard)));
    EXPECT_EQ(startedWith(QStringLiteral("xfce4-keyboard-settings")), QByteArray());
}

TEST_F(OpenerTest, whatADesktopLacksIsSaidInASentence) {
    for (const char* desktop : {"i3", "", "MATE"}) { // the last has settings, but they aren't installed
        qputenv("XDG_CURRENT_DESKTOP", desktop);
        const Result<void> opened = await(opener.openSettings(platform::SettingsPage::Keyboard));
        ASSERT_FALSE(opened) << desktop;
        EXPECT_EQ(opened.error().kind, Error::Kind::Unavailable);
        EXPECT_TRUE(opened.error().message.endsWith(u'.'));
    }
    EXPECT_FALSE(await(opener.openSettings(platform::SettingsPage::ScreenRecording)));
}

#include "OpenerTest.moc"
