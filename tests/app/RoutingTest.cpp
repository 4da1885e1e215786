// What happens to a finished capture, over the settings.
#include "AppFixture.h"

#include "app/AutomaticSave.h"
#include "app/FileHousekeeping.h"
#include "base/Clock.h"
#include "capture/ScreenCaptureManager.h"
#include "editor/EditorRootView.h"
#include "editor/EditorWindowController.h"
#include "imaging/ImageReader.h"
#include "pin/PinManager.h"

#include <QDir>
#include <QFile>
#include <QWidget>
#include <array>

using namespace marrowfin;
using namespace app;
using namespace editor;
using namespace history;
using namespace imaging;
using namespace panel;
using namespace settings;
using namespace marrowfin::testsupport;
using marrowfin::fake::waitUntil;

class RoutingTest : public AppFixture {
protected:
    RoutingTest() {
        desktop.addScreen(1, {0, 0, 1600, 1000});
        Clock::setNow([] { return QDateTime(QDate(2026, 11, 15), QTime(20, 16, 3), Qt::UTC); });
    }
    ~RoutingTest() override { Clock::reset(); }
    QStringList saves() const {
        return QDir(picturesFolder()).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }
    FlowScope flows;
    static std::size_t cards() { return CapturePanelController::shared().panels().size(); }
};

TEST_F(RoutingTest, copyToClipboardShowsNoCardAndWritesNoFile) {
    launch();
    SettingsStore::shared().setPostCaptureAction(PostCaptureAction::copyToClipboard);
    capture(picture());
    EXPECT_TRUE(desktop.pasteboard.image.has_value());
    EXPECT_EQ(CaptureHistory::shared().list().size(), 1);
    EXPECT_EQ(cards(), 0u);
    EXPECT_FALSE(QDir(picturesFolder()).exists()) << "the folder comes into being with the first save";
}

TEST_F(RoutingTest, openEditorPutsUpACardAndOpensNoEditor) {
    launch();
    capture(picture());
    EXPECT_EQ(desktop.pasteboard.calls.at(0), QStringLiteral("clearContents"));
    EXPECT_EQ(desktop.pasteboard.calls.at(1), QStringLiteral("writeImage"));
    EXPECT_EQ(cards(), 1u);
    EXPECT_FALSE(QDir(picturesFolder()).exists());
}

TEST_F(RoutingTest, saveToFileReachesClipboardHistoryFolderAndCard) {
    launch();
    SettingsStore::shared().setPostCaptureAction(PostCaptureAction::saveToFile);
    capture(picture());
    EXPECT_TRUE(desktop.pasteboard.image.has_value());
    EXPECT_EQ(CaptureHistory::shared().list().size(), 1);
    EXPECT_EQ(saves(), QStringList(QStringLiteral("Marrowfin 2026-11-15T20.16.03.png")));
    EXPECT_EQ(cards(), 1u);
}

TEST_F(RoutingTest, twoSavesWithinOneSecondShareANameAndTheLaterReplacesTheEarlier) {
    launch();
    SettingsStore::shared().setPostCaptureAction(PostCaptureAction::saveToFile);
    capture(picture(Qt::red));
    capture(picture(Qt::blue));
    ASSERT_EQ(saves().size(), 1);
    const Result<Image> kept = readImageFile(QDir(picturesFolder()).filePath(saves().first()));
    ASSERT_TRUE(kept.has_value());
    EXPECT_EQ(kept->pixels().pixelColor(3, 3), QColor(Qt::blue));
    EXPECT_EQ(CaptureHistory::shared().list().size(), 2) << "the history keeps both";
}

TEST_F(RoutingTest, jpegHasTheExtensionJpgAndTheQualityOfTheSettings) {
    launch();
    SettingsStore::shared().setPostCaptureAction(PostCaptureAction::saveToFile);
    SettingsStore::shared().setSaveFormat(ImageFormat::jpeg);
    const Image image = picture(Qt::magenta);
    capture(image);
    ASSERT_EQ(saves(), QStringList(QStringLiteral("Marrowfin 2026-11-15T20.16.03.jpg")));
    QFile file(QDir(picturesFolder()).filePath(saves().first()));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), *encodeImage(image, ImageFormat::jpeg, 0.85));
}

TEST_F(RoutingTest, theCardsSaveGoesToTheSameFolderUnderTheSameRule) {
    launch();
    SettingsStore::shared().setSaveFormat(ImageFormat::jpeg);
    const Image image = picture(Qt::magenta);
    capture(image);
    CapturePanelController& controller = CapturePanelController::shared();
    ASSERT_EQ(cards(), 1u);
    controller.entryFor(controller.panels().front())->onSave(image);
    const QString name = QStringLiteral("Marrowfin 2026-11-15T20.16.03.jpg");
    ASSERT_TRUE(waitUntil([&] { return saves() == QStringList(name); }));
    QFile file(QDir(picturesFolder()).filePath(name));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), *encodeImage(image, ImageFormat::jpeg, 0.85));
}

TEST_F(RoutingTest, aCardOpensAnEditorAndBothPin) {
    launch();
    capture(picture());
    CapturePanelController& controller = CapturePanelController::shared();
    controller.openEditor(picture(Qt::cyan));
    ASSERT_EQ(EditorWindowController::openEditors().size(), 1u);
    EXPECT_EQ(controller.editors().size(), 1u);
    const std::shared_ptr<EditorWindowController> editor = EditorWindowController::openEditors().front();
    EXPECT_TRUE(editor->window()->isVisible());
    editor->rootView()->pinPressed();
    EXPECT_EQ(pin::PinManager::shared().pinnedWindows().size(), 1u);
    editor->window()->close();
    EXPECT_TRUE(controller.editors().empty());
}

TEST_F(RoutingTest, whatWaitsForItsTurnAtTheEndIsKept) {
    launch();
    SettingsStore::shared().setPostCaptureAction(PostCaptureAction::saveToFile);
    int count = 0;
    Clock::setNow(
        [&count] { return QDateTime(QDate(2026, 11, 15), QTime(20, 16, 3), Qt::UTC).addSecs(count++); });
    const std::array images{picture(Qt::red), picture(Qt::green), picture(Qt::blue)};
    for (const Image& image : images)
        delegate.captureManager()->setCapturedImage(image);
    delegate.finishCaptures(Clipboard::Works);
    EXPECT_TRUE(finishFiles(std::chrono::hours(1)));
    EXPECT_EQ(CaptureHistory::shared().list().size(), 3);
    EXPECT_EQ(saves().size(), 3);
    EXPECT_EQ(desktop.pasteboard.image, images.back());
}

TEST_F(RoutingTest, theStampIsGMTWhateverTheTimeZone) {
    const QDateTime local(QDate(2026, 11, 15), QTime(23, 16, 3), Qt::OffsetFromUTC, 3 * 3600);
    EXPECT_EQ(automaticSaveName(local, QStringLiteral("png")),
              QStringLiteral("Marrowfin 2026-11-15T20.16.03.png"));
}

TEST_F(RoutingTest, withoutAPicturesFolderASaveIsSilent) {
    desktop.folders.hasPictures = false;
    const Outcome<QString> done = saveAutomatically(picture());
    ASSERT_TRUE(waitUntil([&] { return done.isSettled(); }));
    EXPECT_EQ(desktop.opener.beeps, 0);
}

TEST_F(RoutingTest, aFolderThatCantBeMadeBeepsAndTheCaptureGoesOn) {
    // A file stands where the folder should be.
    QFile blocker(*desktop.folders.pictures());
    ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
    launch();
    SettingsStore::shared().setPostCaptureAction(PostCaptureAction::saveToFile);
    capture(picture());
    EXPECT_EQ(desktop.opener.beeps, 1);
    EXPECT_EQ(cards(), 1u);
}

TEST_F(RoutingTest, anImageThatCantBeEncodedBeepsAndLeavesNoFile) {
    const Outcome<QString> done = saveAutomatically(Image());
    ASSERT_TRUE(waitUntil([&] { return done.isSettled(); }));
    EXPECT_EQ(desktop.opener.beeps, 1);
    EXPECT_TRUE(saves().isEmpty());
}

TEST_F(RoutingTest, aFileThatCantBeWrittenIsSilent) {
    // A folder stands under the file's name.
    ASSERT_TRUE(QDir().mkpath(picturesFolder() + QStringLiteral("/Marrowfin 2026-11-15T20.16.03.png")));
    const Outcome<QString> done = saveAutomatically(picture());
    ASSERT_TRUE(waitUntil([&] { return done.isSettled(); }));
    EXPECT_EQ(desktop.opener.beeps, 0);
    EXPECT_TRUE(saves().isEmpty()) << "nothing half-written either";
}

TEST_F(RoutingTest, aHistoryThatCantBeWrittenKeepsNothingBackFromTheClipboard) {
    ASSERT_TRUE(makePrivateFolder(desktop.folders.applicationSupport() + QStringLiteral("/Marrowfin")));
    QFile blocker(historyFolder());
    ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
    launch();
    capture(picture());
    EXPECT_TRUE(desktop.pasteboard.image.has_value());
    EXPECT_EQ(cards(), 1u);
}

TEST_F(RoutingTest, aRetentionOfOneDayLeavesAWeekOldCaptureInPlace) {
    launch();
    SettingsStore::shared().setHistoryRetentionDays(1);
    const qint64 weekAgo = Clock::now().addDays(-7).toSecsSinceEpoch();
    const QString old =
        historyFolder() + QStringLiteral("/capture_%1_0188D2B1-0000-7000-8000-000000000001.png").arg(weekAgo);
    ASSERT_TRUE(makePrivateFolder(historyFolder()));
    ASSERT_TRUE(writeFileAtomically(old, picture().png()));
    QFile file(old);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    ASSERT_TRUE(file.setFileTime(QDateTime::fromSecsSinceEpoch(weekAgo), QFileDevice::FileModificationTime));
    capture(picture());
    EXPECT_TRUE(QFile::exists(old));
    EXPECT_EQ(CaptureHistory::shared().list().size(), 2);
}

TEST_F(RoutingTest, aClipboardThatCantBeHadIsLoggedAndTheCaptureGoesOn) {
    launch();
    SettingsStore::shared().setPostCaptureAction(PostCaptureAction::copyToClipboard);
    desktop.pasteboard.writeError = Error{Error::Kind::Failed, QStringLiteral("somebody holds it.")};
    testing::internal::CaptureStderr();
    capture(picture());
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "[Marrowfin] clipboard: somebody holds it.\n");
    EXPECT_EQ(CaptureHistory::shared().list().size(), 1);
    SettingsStore::shared().setPostCaptureAction(PostCaptureAction::openEditor);
    capture(picture());
    EXPECT_EQ(cards(), 1u);
}

TEST_F(RoutingTest, aDesktopThatWentAwayIsNotBlamedOnTheClipboard) {
    launch();
    SettingsStore::shared().setPostCaptureAction(PostCaptureAction::copyToClipboard);
    desktop.pasteboard.writeError = Error{Error::Kind::Dropped, QStringLiteral("gone")};
    testing::internal::CaptureStderr();
    capture(picture());
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST_F(RoutingTest, capturesAreRoutedOneAtATimeInTheOrderTaken) {
    launch();
    const Image first = picture(Qt::red);
    const Image second = picture(Qt::blue);
    int routed = 0;
    QObject::connect(&delegate, &AppDelegate::captureRouted, &delegate, [&] {
        ++routed;
        EXPECT_EQ(desktop.pasteboard.image, routed == 1 ? first : second);
    });
    delegate.captureManager()->setCapturedImage(first);
    delegate.captureManager()->setCapturedImage(second);
    ASSERT_TRUE(waitUntil([&] { return routed == 2; }));
}
