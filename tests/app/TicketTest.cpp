// What a caller is told about the capture that it asked for.
#include "AppFixture.h"

#include "capture/CountdownDigit.h"
#include "capture/ScreenCaptureManager.h"
#include "capture/SelectionView.h"
#include "chrome/AnimationClock.h"
#include "commands/CommandTable.h"
#include "imaging/ImageReader.h"
#include "support/CapturedOutput.h"
#include "support/Input.h"

#include <QDir>
#include <QMessageBox>

using namespace marrowfin;
using namespace app;
using namespace capture;
using namespace commands;
using namespace history;
using namespace imaging;
using namespace panel;
using namespace settings;
using namespace std::chrono_literals;
using namespace marrowfin::platform;
using namespace marrowfin::testsupport;
using marrowfin::fake::waitUntil;

namespace {

class TicketTest : public AppFixture {
protected:
    TicketTest() { desktop.addScreen(1, {0, 0, 800, 600}); }

    CommandTable& table() { return *delegate.commandTable(); }
    static Result<CommandResult> awaited(const Outcome<CommandResult>& outcome) {
        std::optional<Result<CommandResult>> answer;
        outcome.then([&](const Result<CommandResult>& result) { answer = result; });
        EXPECT_TRUE(waitUntil([&] { return answer.has_value(); }));
        return answer.value_or(failure(QStringLiteral("no answer")));
    }
    QString file(const QString& name) const { return desktop.folders.root.filePath(name); }
    static std::size_t cards() { return CapturePanelController::shared().panels().size(); }
};

} // namespace

TEST_F(TicketTest, aCaptureTellsWhereItWent) {
    launch();
    const Result<CommandResult> went = awaited(table().run(CommandID::captureFullscreen));
    ASSERT_TRUE(went.has_value());
    EXPECT_EQ(QStringList(went->historyFile), CaptureHistory::shared().list());
    EXPECT_EQ(went->savedFile, "");
    EXPECT_TRUE(went->onClipboard);
    EXPECT_EQ(went->imageSize, QSize(800, 600));
    EXPECT_EQ(desktop.pasteboard.image, delegate.captureManager()->capturedImage());
}

TEST_F(TicketTest, anAutomaticSaveIsTold) {
    launch();
    SettingsStore::shared().setPostCaptureAction(PostCaptureAction::saveToFile);
    const Result<CommandResult> went = awaited(table().run(CommandID::captureFullscreen));
    ASSERT_TRUE(went.has_value());
    const QStringList saved = QDir(picturesFolder()).entryList(QDir::Files);
    ASSERT_EQ(saved.size(), 1);
    EXPECT_EQ(went->savedFile, picturesFolder() + u'/' + saved.first());
}

TEST_F(TicketTest, whatCouldNotBeHadIsLeftOut) {
    launch();
    desktop.pasteboard.writeError = Error{Error::Kind::Dropped, QStringLiteral("gone")};
    desktop.folders.hasPictures = false;
    SettingsStore::shared().setPostCaptureAction(PostCaptureAction::saveToFile);
    const Result<CommandResult> went = awaited(table().run(CommandID::captureFullscreen));
    ASSERT_TRUE(went.has_value());
    EXPECT_FALSE(went->onClipboard);
    EXPECT_EQ(went->savedFile, "");
    EXPECT_NE(went->historyFile, "");
}

TEST_F(TicketTest, anOutputStandsInThePlaceOfWhatTheSettingsSay) {
    launch();
    SettingsStore::shared().setPostCaptureAction(PostCaptureAction::saveToFile);
    const QString path = file(QStringLiteral("asked.png"));
    const Result<CommandResult> went = awaited(table().run(CommandID::captureFullscreen, {path}));
    ASSERT_TRUE(went.has_value());
    EXPECT_EQ(went->savedFile, path);
    const Image image = *delegate.captureManager()->capturedImage();
    EXPECT_EQ(QImage(path).convertToFormat(QImage::Format_RGB32),
              image.pixels().convertToFormat(QImage::Format_RGB32));
    EXPECT_EQ(cards(), 0u);
    EXPECT_FALSE(QDir(picturesFolder()).exists());
    EXPECT_EQ(desktop.pasteboard.image, image) << "the clipboard comes first, whatever follows";
    EXPECT_EQ(QStringList(went->historyFile), CaptureHistory::shared().list());
}

TEST_F(TicketTest, anOutputsNameTellsItsFormat) {
    launch();
    for (const QString name : {"a.jpg", "b.JPEG"}) {
        ASSERT_TRUE(awaited(table().run(CommandID::captureFullscreen, {file(name)})).has_value());
        QFile written(file(name));
        ASSERT_TRUE(written.open(QIODevice::ReadOnly));
        EXPECT_EQ(written.readAll(),
                  *encodeImage(*delegate.captureManager()->capturedImage(), ImageFormat::jpeg, 0.85));
    }
}

TEST_F(TicketTest, anOutputThatCanNotBeWrittenIsAFailureAndTheCaptureIsKept) {
    launch();
    const QString path = file(QStringLiteral("nowhere/a.png"));
    const Result<CommandResult> went = awaited(table().run(CommandID::captureFullscreen, {path}));
    ASSERT_FALSE(went.has_value());
    EXPECT_EQ(went.error().kind, Error::Kind::Failed);
    EXPECT_TRUE(went.error().message.startsWith(path + QStringLiteral(" could not be written: ")))
        << went.error().message.toStdString();
    EXPECT_EQ(CaptureHistory::shared().list().size(), 1);
    EXPECT_TRUE(desktop.pasteboard.image.has_value());
    EXPECT_TRUE(awaited(table().run(CommandID::captureFullscreen)).has_value()) << "the next goes its way";
}

TEST_F(TicketTest, aChangeOfMindIsCancelledWithoutAWord) {
    launch();
    CapturedOutput output;
    const Outcome<CommandResult> outcome = table().run(CommandID::captureArea);
    ASSERT_TRUE(waitUntil([] { return onlyChildOfTopLevels<SelectionView>() != nullptr; }));
    pressKey(*onlyChildOfTopLevels<SelectionView>(), Qt::Key_Escape);
    const Result<CommandResult> went = awaited(outcome);
    ASSERT_FALSE(went.has_value());
    EXPECT_EQ(went.error().kind, Error::Kind::Cancelled);
    EXPECT_EQ(output.text(), "");
    EXPECT_TRUE(CaptureHistory::shared().list().isEmpty());
}

TEST_F(TicketTest, aFailureIsToldAndItsOneLinePrinted) {
    launch();
    desktop.screenSource.prepare = [](fake::FakeStream& stream) {
        stream.startError = Error{Error::Kind::Failed, QStringLiteral("no stream today")};
    };
    CapturedOutput output;
    const Result<CommandResult> went = awaited(table().run(CommandID::captureFullscreen));
    ASSERT_FALSE(went.has_value());
    EXPECT_EQ(went.error(), (Error{Error::Kind::Failed, QStringLiteral("no stream today")}));
    EXPECT_EQ(output.text(), "Fullscreen capture failed: no stream today\n");
}

TEST_F(TicketTest, twoAtOnceEachGetTheirOwn) {
    launch();
    const QString path = file(QStringLiteral("second.png"));
    const Outcome<CommandResult> first = table().run(CommandID::captureFullscreen);
    const Outcome<CommandResult> second = table().run(CommandID::captureFullscreen, {path});
    const Result<CommandResult> secondWent = awaited(second);
    const Result<CommandResult> firstWent = awaited(first);
    ASSERT_TRUE(firstWent.has_value());
    ASSERT_TRUE(secondWent.has_value());
    EXPECT_EQ(firstWent->savedFile, "");
    EXPECT_EQ(secondWent->savedFile, path);
    EXPECT_NE(firstWent->historyFile, secondWent->historyFile);
    EXPECT_EQ(CaptureHistory::shared().list().size(), 2);
    EXPECT_EQ(cards(), 1u);
}

TEST_F(TicketTest, anyCaptureMayBeDelayed) {
    chrome::AnimationClock::shared().hold();
    launch();
    const Outcome<CommandResult> outcome = table().run(CommandID::captureFullscreen, {{}, 2s});
    for (const char* digit : {"2", "1"}) {
        ASSERT_TRUE(waitUntil([] { return onlyChildOfTopLevels<CountdownDigit>() != nullptr; }));
        EXPECT_EQ(onlyChildOfTopLevels<CountdownDigit>()->text(), digit);
        EXPECT_FALSE(outcome.isSettled());
        chrome::AnimationClock::shared().advance(1.01);
        QApplication::processEvents();
    }
    EXPECT_EQ(awaited(outcome)->imageSize, QSize(800, 600));
}

TEST_F(TicketTest, whileTheLaunchWaitsSoDoesTheTicket) {
    desktop.hotKeys.taken = {keyCode5};
    delegate.applicationDidFinishLaunching();
    ASSERT_TRUE(waitUntil([] { return onlyTopLevel<QMessageBox>() != nullptr; }));
    const Outcome<CommandResult> outcome = table().run(CommandID::captureFullscreen);
    ASSERT_TRUE(waitUntil([&] { return delegate.captureManager()->capturedImage().has_value(); }));
    QApplication::processEvents();
    EXPECT_FALSE(outcome.isSettled());
    onlyTopLevel<QMessageBox>()->reject();
    EXPECT_TRUE(awaited(outcome)->onClipboard);
}

TEST_F(TicketTest, theClipboardsCommandsTellWhenItHoldsNoImage) {
    launch();
    for (const CommandID id : {CommandID::openFromClipboard, CommandID::pinToScreen})
        EXPECT_EQ(awaited(table().run(id)).error(),
                  (Error{Error::Kind::Failed, QStringLiteral("The clipboard holds no image.")}));
    desktop.pasteboard.image = picture();
    EXPECT_TRUE(awaited(table().run(CommandID::pinToScreen)).has_value());
}

TEST_F(TicketTest, everyRowRunsOrSaysThatItIsNotBuilt) {
    launch();
    for (const Command& command : table().commands())
        EXPECT_TRUE(command.run || !command.subject.isEmpty()) << static_cast<int>(command.id);
}
