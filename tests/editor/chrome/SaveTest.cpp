// The save dialog, driven as a person does, and the file that it leaves.
#include "RootFixture.h"

#include "annotation/ImageCompositor.h"
#include "base/Clock.h"
#include "support/BadWorld.h"

#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>

namespace marrowfin::editor {

using namespace annotation;
namespace {

using fake::waitUntil;

class Save : public RootFixture {
protected:
    Save() {
        // The toolkit remembers the folders of its dialogs in a file of the user's.
        qputenv("XDG_CONFIG_HOME", desktop.folders.configuration().toLocal8Bit());
        QDir().mkpath(pictures());
        Clock::setNow([] { return QDateTime::fromMSecsSinceEpoch(1763700123999, Qt::UTC); });
        root->onSave = [this](const QString& path) { saved.append(path); };
        dragImage({100, 100}, {300, 200});
    }
    ~Save() override { Clock::reset(); }

    QString pictures() { return *desktop.folders.pictures(); }
    QFileDialog* dialog() { return root->findChild<QFileDialog*>(QStringLiteral("save")); }
    QMessageBox* question() { return root->findChild<QMessageBox*>(QStringLiteral("replace")); }
    QLineEdit* nameField() { return dialog()->findChild<QLineEdit*>(QStringLiteral("fileNameEdit")); }
    QComboBox* typeField() { return dialog()->findChild<QComboBox*>(QStringLiteral("fileTypeCombo")); }
    void open() {
        press(controls().saveButton);
        ASSERT_NE(dialog(), nullptr);
        ASSERT_TRUE(dialog()->isVisible());
    }
    void saveAs(const QString& name) {
        open();
        nameField()->selectAll();
        QTest::keyClicks(nameField(), name);
        QTest::keyClick(nameField(), Qt::Key_Return);
    }
    bool closed() {
        return waitUntil([this] {
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            return !dialog();
        });
    }
    QStringList filesIn(const QString& folder) {
        return QDir(folder).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }
    QByteArray bytesOf(const QString& path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    QImage flattened() { return ImageCompositor::composite(document()).pixels(); }

    QStringList saved;
};

TEST_F(Save, ProposesANameInThePicturesFolder) {
    open();
    EXPECT_EQ(nameField()->text(), "Marrowfin-1763700123.png");
    EXPECT_EQ(dialog()->directory().absolutePath(), pictures());
    EXPECT_EQ(dialog()->acceptMode(), QFileDialog::AcceptSave);
    EXPECT_EQ(dialog()->windowModality(), Qt::WindowModal);
    ASSERT_EQ(dialog()->nameFilters().size(), 2);
    EXPECT_TRUE(dialog()->nameFilters()[0].startsWith(QStringLiteral("PNG")));
    EXPECT_TRUE(dialog()->nameFilters()[1].startsWith(QStringLiteral("JPEG")));
}

TEST_F(Save, WritesAPngOfTheInkUnderTheProposedName) {
    open();
    QTest::keyClick(nameField(), Qt::Key_Return);
    ASSERT_TRUE(waitUntil([this] { return !saved.isEmpty(); }));
    const QString path = QDir(pictures()).filePath(QStringLiteral("Marrowfin-1763700123.png"));
    EXPECT_EQ(saved, QStringList{path});
    EXPECT_EQ(QImage(path).convertToFormat(flattened().format()), flattened());
    EXPECT_EQ(filesIn(pictures()), QStringList{QStringLiteral("Marrowfin-1763700123.png")});
    EXPECT_TRUE(closed());
}

TEST_F(Save, SavesWhatWasThereWhenSaveWasPressed) {
    const QImage before = flattened();
    open();
    document().undo();
    QTest::keyClick(nameField(), Qt::Key_Return);
    ASSERT_TRUE(waitUntil([this] { return !saved.isEmpty(); }));
    EXPECT_EQ(QImage(saved[0]).convertToFormat(before.format()), before);
}

TEST_F(Save, TheTypeChangesTheNameAndNotTheBytes) {
    open();
    QTest::keyClick(typeField(), Qt::Key_Down);
    EXPECT_EQ(nameField()->text(), "Marrowfin-1763700123.jpg");
    QTest::keyClick(nameField(), Qt::Key_Return);
    ASSERT_TRUE(waitUntil([this] { return !saved.isEmpty(); }));
    EXPECT_TRUE(saved[0].endsWith(QStringLiteral("/Marrowfin-1763700123.jpg")));
    EXPECT_TRUE(bytesOf(saved[0]).startsWith("\x89PNG"));
}

TEST_F(Save, ANameWithoutAnEndingGetsTheTypes) {
    saveAs(QStringLiteral("plain"));
    ASSERT_TRUE(waitUntil([this] { return !saved.isEmpty(); }));
    EXPECT_EQ(saved[0], QDir(pictures()).filePath(QStringLiteral("plain.png")));
    ASSERT_TRUE(closed());
    open();
    QTest::keyClick(typeField(), Qt::Key_Down);
    nameField()->selectAll();
    QTest::keyClicks(nameField(), QStringLiteral("plain"));
    QTest::keyClick(nameField(), Qt::Key_Return);
    ASSERT_TRUE(waitUntil([this] { return saved.size() == 2; }));
    EXPECT_EQ(saved[1], QDir(pictures()).filePath(QStringLiteral("plain.jpg")));
}

TEST_F(Save, StartsWhereTheLastFileWent) {
    const QString elsewhere = desktop.folders.root.filePath(QStringLiteral("elsewhere"));
    QDir().mkpath(elsewhere);
    saveAs(elsewhere + QStringLiteral("/one.png"));
    ASSERT_TRUE(waitUntil([this] { return !saved.isEmpty(); }));
    ASSERT_TRUE(closed());
    open();
    EXPECT_EQ(dialog()->directory().absolutePath(), elsewhere);
}

TEST_F(Save, StartsAtHomeWithoutAPicturesFolder) {
    desktop.folders.hasPictures = false;
    open();
    EXPECT_EQ(dialog()->directory().absolutePath(), QDir::homePath());
}

TEST_F(Save, NothingHappensWhenItIsCancelled) {
    open();
    QTest::keyClick(nameField(), Qt::Key_Escape);
    EXPECT_TRUE(closed());
    EXPECT_EQ(filesIn(pictures()), QStringList());
    EXPECT_EQ(saved, QStringList());
}

TEST_F(Save, AsksBeforeItReplacesAFile) {
    const QString path = QDir(pictures()).filePath(QStringLiteral("mine.png"));
    QFile mine(path);
    ASSERT_TRUE(mine.open(QIODevice::WriteOnly));
    mine.write("mine");
    mine.close();
    saveAs(QStringLiteral("mine.png"));
    ASSERT_NE(question(), nullptr);
    EXPECT_TRUE(question()->isVisible());
    EXPECT_TRUE(question()->text().contains(QStringLiteral("mine.png")));
    QTest::keyClick(question(), Qt::Key_Return); // the safe answer is the default
    ASSERT_TRUE(dialog() && dialog()->isVisible());
    EXPECT_EQ(bytesOf(path), "mine");
    ASSERT_TRUE(waitUntil([this] {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return !question();
    }));
    QTest::keyClick(nameField(), Qt::Key_Return);
    ASSERT_NE(question(), nullptr);
    for (QAbstractButton* button : question()->buttons())
        if (button->text() == "Replace")
            QTest::mouseClick(button, Qt::LeftButton);
    ASSERT_TRUE(waitUntil([this] { return !saved.isEmpty(); }));
    EXPECT_EQ(QImage(path).convertToFormat(flattened().format()), flattened());
    EXPECT_TRUE(closed());
}

TEST_F(Save, GoesIntoAFolderThatIsTyped) {
    const QString folder = QDir(pictures()).filePath(QStringLiteral("inner"));
    QDir().mkpath(folder);
    saveAs(folder);
    ASSERT_TRUE(dialog() && dialog()->isVisible());
    EXPECT_EQ(question(), nullptr);
    EXPECT_EQ(dialog()->directory().absolutePath(), folder);
}

TEST_F(Save, AsksAlsoBeforeItTouchesWhatIsNoFile) {
    const QString path = QDir(pictures()).filePath(QStringLiteral("pipe.png"));
    ASSERT_EQ(mkfifo(path.toLocal8Bit().constData(), 0600), 0);
    saveAs(QStringLiteral("pipe.png"));
    EXPECT_NE(question(), nullptr);
}

TEST_F(Save, AFailedWriteIsNotReportedAndLeavesNothingBehind) {
    const QString locked = desktop.folders.root.filePath(QStringLiteral("locked"));
    QDir().mkpath(locked);
    chmod(desktop.folders.root.path().toLocal8Bit().constData(), 0755);
    ReadOnlyFolder readOnly(locked);
    saveAs(locked + QStringLiteral("/one.png"));
    ASSERT_TRUE(waitUntil([this] { return !saved.isEmpty(); }));
    EXPECT_EQ(saved, QStringList{locked + QStringLiteral("/one.png")});
    EXPECT_EQ(filesIn(locked), QStringList());
    EXPECT_EQ(root->findChildren<QMessageBox*>().size(), 0);
}

TEST_F(Save, OneDialogAtATime) {
    open();
    root->savePressed();
    EXPECT_EQ(root->findChildren<QFileDialog*>().size(), 1);
}

TEST_F(Save, CanBeAskedForAgainRightAfterItWasCancelled) {
    open();
    dialog()->reject();
    root->savePressed();
    const QList<QFileDialog*> all = root->findChildren<QFileDialog*>();
    EXPECT_TRUE(std::any_of(all.begin(), all.end(), [](const QFileDialog* one) { return one->isVisible(); }));
}

TEST_F(Save, TheEditorIsBlockedButTheProgramGoesOn) {
    open();
    const qsizetype before = count();
    dragImage({300, 100}, {400, 200});
    EXPECT_EQ(count(), before);
}

TEST_F(Save, ADialogGoesWithItsEditor) {
    open();
    root.reset();
    settle();
    EXPECT_EQ(filesIn(pictures()), QStringList());
}

TEST_F(Save, AQuestionGoesWithItsEditor) {
    QFile mine(QDir(pictures()).filePath(QStringLiteral("mine.png")));
    ASSERT_TRUE(mine.open(QIODevice::WriteOnly));
    saveAs(QStringLiteral("mine.png"));
    ASSERT_NE(question(), nullptr);
    root.reset();
    settle();
    EXPECT_EQ(mine.size(), 0);
}

TEST_F(Save, AnEditorThatClosesWhileItsFileIsWrittenStillLeavesTheFile) {
    const QImage wanted = flattened();
    open();
    QTest::keyClick(nameField(), Qt::Key_Return);
    root.reset();
    const QString path = QDir(pictures()).filePath(QStringLiteral("Marrowfin-1763700123.png"));
    ASSERT_TRUE(waitUntil([&] { return QFile::exists(path); }));
    settle();
    EXPECT_EQ(QImage(path).convertToFormat(wanted.format()), wanted);
}

} // namespace
} // namespace marrowfin::editor
