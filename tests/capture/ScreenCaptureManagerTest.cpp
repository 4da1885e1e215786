#include "capture/ScreenCaptureManager.h"

#include "capture/SelectionView.h"
#include "capture/WindowHighlightView.h"
#include "platform/fake/FakeDesktop.h"
#include "support/CapturedOutput.h"
#include "support/Input.h"

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <gtest/gtest.h>

using namespace marrowfin;
using namespace capture;
using namespace imaging;
using namespace marrowfin::platform;
using namespace marrowfin::testsupport;
using marrowfin::fake::FakeDesktop;
using marrowfin::fake::FakeStream;
using marrowfin::fake::waitUntil;

namespace {

class ScreenCaptureManagerTest : public testing::Test {
protected:
    FakeDesktop desktop;
    ScreenCaptureManager manager;
    FlowScope flows;

    // Waits for a capture to be over.
    bool run(const Outcome<void>& capture) {
        return waitUntil([&] { return capture.isSettled(); });
    }
    SelectionView* selection() { return onlyChildOfTopLevels<SelectionView>(); }
    const FakeStream& stream() { return *desktop.screenSource.streams.back(); }
    // Drags over the overlay that is up; y down.
    void drag(QPoint from, QPoint to) {
        ASSERT_TRUE(waitUntil([&] { return selection() != nullptr; }));
        dragMouse(*selection(), from, to);
    }
};

} // namespace

TEST_F(ScreenCaptureManagerTest, areaCaptureAsksForTheSelectedRegionFromTheTop) {
    desktop.addScreen(1, {0, 0, 1440, 900}, 2);
    const Outcome<void> ended = manager.captureArea();
    drag({100, 50}, {500, 350});
    ASSERT_TRUE(waitUntil([&] { return ended.isSettled(); }));
    EXPECT_EQ(stream().configuration.sourceRect, QRectF(100, 50, 400, 300));
    EXPECT_EQ(stream().configuration.width, 800);
    EXPECT_EQ(stream().configuration.height, 600);
    ASSERT_TRUE(manager.capturedImage().has_value());
    EXPECT_EQ(manager.capturedImage()->size(), QSizeF(800, 600));
    EXPECT_EQ(manager.previousRect()->rect, QRectF(100, 550, 400, 300)) << "remembered from the bottom";
}

TEST_F(ScreenCaptureManagerTest, theOverlayIsGoneBeforeAnythingIsGrabbed) {
    desktop.addScreen(1, {0, 0, 800, 600});
    desktop.surfaceHost.holdBarriers = false;
    const Outcome<void> ended = manager.captureArea();
    ASSERT_TRUE(waitUntil([&] { return selection() != nullptr; }));
    desktop.surfaceHost.holdBarriers = true;
    drag({10, 10}, {60, 60});
    ASSERT_TRUE(waitUntil([&] { return desktop.surfaceHost.surfaces.front()->retired; }));
    // The flow has everything else it needs; only the barrier holds it.
    ASSERT_TRUE(waitUntil([&] { return desktop.screenSource.contentRequests == 1; }));
    QApplication::processEvents();
    EXPECT_TRUE(desktop.screenSource.streams.empty());
    desktop.surfaceHost.releaseBarriers();
    ASSERT_TRUE(waitUntil([&] { return ended.isSettled(); }));
    EXPECT_EQ(desktop.screenSource.streams.size(), 1u);
}

TEST_F(ScreenCaptureManagerTest, aCancelledSelectionChangesNothing) {
    desktop.addScreen(1, {0, 0, 800, 600});
    CapturedOutput output;
    const Outcome<void> ended = manager.captureArea();
    ASSERT_TRUE(waitUntil([&] { return selection() != nullptr; }));
    pressKey(*selection(), Qt::Key_Escape);
    ASSERT_TRUE(waitUntil([&] { return ended.isSettled(); }));
    EXPECT_FALSE(manager.previousRect().has_value());
    EXPECT_FALSE(manager.capturedImage().has_value());
    EXPECT_TRUE(desktop.screenSource.streams.empty());
    EXPECT_EQ(output.text(), QString());
}

TEST_F(ScreenCaptureManagerTest, aCancelledSelectionKeepsThePreviousRectangle) {
    desktop.addScreen(1, {0, 0, 800, 600});
    const Outcome<void> first = manager.captureArea();
    drag({10, 10}, {60, 60});
    ASSERT_TRUE(waitUntil([&] { return first.isSettled() && selection() == nullptr; }));
    const Outcome<void> second = manager.captureArea();
    drag({100, 100}, {103, 300});
    ASSERT_TRUE(waitUntil([&] { return second.isSettled(); }));
    EXPECT_EQ(manager.previousRect()->rect, QRectF(10, 540, 50, 50));
    EXPECT_EQ(desktop.screenSource.streams.size(), 1u);
}

TEST_F(ScreenCaptureManagerTest, aFailedCaptureKeepsTheNewRectangleAndTheOldImage) {
    desktop.addScreen(1, {0, 0, 800, 600});
    ASSERT_TRUE(run(manager.captureFullscreen()));
    const Image before = *manager.capturedImage();
    desktop.screenSource.prepare = [](FakeStream& made) {
        made.startError = Error{Error::Kind::Failed, QStringLiteral("no such display")};
    };
    CapturedOutput output;
    const Outcome<void> ended = manager.captureArea();
    drag({10, 10}, {60, 60});
    ASSERT_TRUE(waitUntil([&] { return ended.isSettled(); }));
    EXPECT_EQ(manager.previousRect()->rect, QRectF(10, 540, 50, 50));
    EXPECT_EQ(manager.capturedImage(), before);
    EXPECT_EQ(output.text(), QStringLiteral("Capture failed: no such display\n"));
}

TEST_F(ScreenCaptureManagerTest, previousAreaWithNothingStoredIsAnAreaCapture) {
    desktop.addScreen(1, {0, 0, 800, 600});
    const Outcome<void> ended = manager.capturePreviousArea();
    drag({10, 10}, {60, 60});
    ASSERT_TRUE(waitUntil([&] { return ended.isSettled(); }));
    EXPECT_TRUE(manager.capturedImage().has_value());
}

TEST_F(ScreenCaptureManagerTest, previousAreaRepeatsWithoutAnOverlay) {
    desktop.addScreen(1, {0, 0, 800, 600});
    const Outcome<void> ended = manager.captureArea();
    drag({10, 10}, {60, 60});
    ASSERT_TRUE(waitUntil([&] { return ended.isSettled(); }));
    const int hosted = desktop.surfaceHost.hostedCount;
    ASSERT_TRUE(run(manager.capturePreviousArea()));
    EXPECT_EQ(desktop.surfaceHost.hostedCount, hosted);
    EXPECT_EQ(stream().configuration.sourceRect, QRectF(10, 10, 50, 50));
    EXPECT_EQ(desktop.screenSource.streams.size(), 2u);
}

TEST_F(ScreenCaptureManagerTest, previousAreaNamesItselfWhenItFails) {
    desktop.addScreen(1, {0, 0, 800, 600});
    const Outcome<void> ended = manager.captureArea();
    drag({10, 10}, {60, 60});
    ASSERT_TRUE(waitUntil([&] { return ended.isSettled(); }));
    desktop.screenSource.contentError = Error{Error::Kind::Failed, QStringLiteral("not permitted")};
    CapturedOutput output;
    ASSERT_TRUE(run(manager.capturePreviousArea()));
    EXPECT_EQ(output.text(), QStringLiteral("Previous area capture failed: not permitted\n"));
}

TEST_F(ScreenCaptureManagerTest, fullscreenTakesTheFirstDisplayWhereverThePointerIs) {
    desktop.addScreen(1, {0, 0, 800, 600}, 2);
    desktop.addScreen(2, {800, 0, 640, 480});
    desktop.screens.pointer = DesktopPoint{{900, 100}};
    ASSERT_TRUE(run(manager.captureFullscreen()));
    EXPECT_EQ(std::get<DisplayFilter>(stream().filter).displayID, 1u);
    EXPECT_EQ(stream().configuration.sourceRect, QRectF(0, 0, 800, 600));
    EXPECT_EQ(stream().configuration.width, 1600);
}

TEST_F(ScreenCaptureManagerTest, fullscreenWithoutADisplayEndsInSilence) {
    CapturedOutput output;
    ASSERT_TRUE(run(manager.captureFullscreen()));
    EXPECT_EQ(output.text(), QString());
    EXPECT_FALSE(manager.capturedImage().has_value());
}

TEST_F(ScreenCaptureManagerTest, fullscreenWhoseContentFetchFailsPrintsItsLine) {
    desktop.screenSource.contentError = Error{Error::Kind::Failed, QStringLiteral("not permitted")};
    CapturedOutput output;
    ASSERT_TRUE(run(manager.captureFullscreen()));
    EXPECT_EQ(output.text(), QStringLiteral("Fullscreen capture failed: not permitted\n"));
}

TEST_F(ScreenCaptureManagerTest, captureRectWithoutADisplayIsStreamStartFailed) {
    std::optional<Result<Image>> result;
    flows.start(ScreenCaptureManager::captureRect({{0, 0, 10, 10}}, std::nullopt))
        .then([&](const Result<Image>& image) { result = image; });
    ASSERT_TRUE(waitUntil([&] { return result.has_value(); }));
    EXPECT_EQ(result->error().message, QStringLiteral("streamStartFailed"));
}

TEST_F(ScreenCaptureManagerTest, captureRectAcrossTwoDisplaysIsPassedOnAsItIs) {
    desktop.addScreen(1, {0, 0, 800, 600});
    desktop.addScreen(2, {800, 0, 800, 600});
    std::optional<Result<Image>> result;
    flows.start(ScreenCaptureManager::captureRect({{700, 100, 200, 100}}, std::nullopt))
        .then([&](const Result<Image>& image) { result = image; });
    ASSERT_TRUE(waitUntil([&] { return result.has_value(); }));
    EXPECT_EQ(stream().configuration.sourceRect, QRectF(700, 400, 200, 100));
    EXPECT_EQ(result->value().size(), QSizeF(200, 100));
}

TEST_F(ScreenCaptureManagerTest, aWindowIsCapturedAtItsSizeTimesTheScale) {
    desktop.addScreen(1, {0, 0, 800, 600}, 2);
    desktop.screenSource.addWindow(77, 1, {100, 100, 320, 200});
    const Outcome<void> ended = manager.captureWindow();
    ASSERT_TRUE(waitUntil([&] { return onlyChildOfTopLevels<WindowHighlightView>() != nullptr; }));
    clickMouse(*onlyChildOfTopLevels<WindowHighlightView>(), {5, 5});
    ASSERT_TRUE(waitUntil([&] { return ended.isSettled(); }));
    EXPECT_EQ(manager.capturedImage()->size(), QSizeF(640, 400));
    EXPECT_EQ(std::get<WindowFilter>(stream().filter).windowID, 77u);
}

TEST_F(ScreenCaptureManagerTest, aWindowThatClosedBetweenPickAndCapturePrintsItsLine) {
    desktop.addScreen(1, {0, 0, 800, 600});
    desktop.screenSource.addWindow(77, 1, {100, 100, 320, 200});
    CapturedOutput output;
    const Outcome<void> ended = manager.captureWindow();
    ASSERT_TRUE(waitUntil([&] { return onlyChildOfTopLevels<WindowHighlightView>() != nullptr; }));
    desktop.screenSource.shown.windows.clear();
    clickMouse(*onlyChildOfTopLevels<WindowHighlightView>(), {5, 5});
    ASSERT_TRUE(waitUntil([&] { return ended.isSettled(); }));
    EXPECT_FALSE(manager.capturedImage().has_value());
    EXPECT_EQ(output.text(), QStringLiteral("Window capture failed: streamStartFailed\n"));
}

TEST_F(ScreenCaptureManagerTest, twoFlowsAtOnceEachPublish) {
    desktop.addScreen(1, {0, 0, 800, 600});
    int published = 0;
    QObject receiver;
    manager.observeCapturedImage(&receiver,
                                 [&](const std::optional<Image>& image) { published += image ? 1 : 0; });
    const Outcome<void> first = manager.captureFullscreen();
    const Outcome<void> second = manager.captureFullscreen();
    ASSERT_TRUE(waitUntil([&] { return first.isSettled() && second.isSettled() && published == 2; }));
}

TEST_F(ScreenCaptureManagerTest, everySetIsPublishedAndALateObserverGetsTheCurrentValue) {
    QImage pixels(2, 2, QImage::Format_RGB32);
    pixels.fill(Qt::red);
    const Image image = Image::captured(pixels);
    std::vector<std::optional<Image>> seen;
    QObject receiver;
    manager.observeCapturedImage(&receiver,
                                 [&](const std::optional<Image>& value) { seen.push_back(value); });
    manager.setCapturedImage(image);
    manager.setCapturedImage(image);
    ASSERT_TRUE(waitUntil([&] { return seen.size() == 3; }));
    EXPECT_FALSE(seen[0].has_value());
    EXPECT_EQ(seen[1], image);
    EXPECT_EQ(seen[2], image);
    std::optional<Image> late;
    QObject second;
    manager.observeCapturedImage(&second, [&](const std::optional<Image>& value) { late = value; });
    ASSERT_TRUE(waitUntil([&] { return late.has_value(); }));
    EXPECT_EQ(late, image);
}

TEST_F(ScreenCaptureManagerTest, aPermissionAlertOpensTheSettingsOnItsFirstButton) {
    desktop.screenSource.contentError = Error{Error::Kind::Failed, QStringLiteral("not permitted")};
    std::optional<bool> granted;
    flows.start(ScreenCaptureManager::screenPermissionGranted()).then([&](Result<bool> answer) {
        granted = answer.value();
    });
    ASSERT_TRUE(waitUntil([&] { return onlyTopLevel<QMessageBox>() != nullptr; }));
    auto* alert = onlyTopLevel<QMessageBox>();
    EXPECT_EQ(alert->text(), QStringLiteral("Screen Recording Permission Required"));
    EXPECT_EQ(
        alert->informativeText(),
        QStringLiteral("Marrowfin needs screen recording permission. Please enable it in System Settings > "
                       "Privacy & Security > Screen Recording, then relaunch the app."));
    EXPECT_EQ(alert->icon(), QMessageBox::Warning);
    ASSERT_NE(buttonNamed(*alert, QStringLiteral("Cancel")), nullptr);
    buttonNamed(*alert, QStringLiteral("Open Settings"))->click();
    ASSERT_TRUE(waitUntil([&] { return granted.has_value(); }));
    EXPECT_FALSE(*granted);
    EXPECT_EQ(desktop.opener.pages, std::vector{SettingsPage::ScreenRecording});
}

TEST_F(ScreenCaptureManagerTest, whereTheScreenCannotBeSeenTheAlertSaysWhy) {
    desktop.screenSource.contentError =
        Error{Error::Kind::Unavailable, QStringLiteral("This desktop shows nothing.")};
    std::optional<bool> granted;
    flows.start(ScreenCaptureManager::screenPermissionGranted()).then([&](Result<bool> answer) {
        granted = answer.value();
    });
    ASSERT_TRUE(waitUntil([&] { return onlyTopLevel<QMessageBox>() != nullptr; }));
    auto* alert = onlyTopLevel<QMessageBox>();
    EXPECT_EQ(
        alert->informativeText(),
        QStringLiteral("Marrowfin needs screen recording permission. Please enable it in System Settings > "
                       "Privacy & Security > Screen Recording, then relaunch the app.\n\n"
                       "This desktop shows nothing."));
    buttonNamed(*alert, QStringLiteral("Cancel"))->click();
    ASSERT_TRUE(waitUntil([&] { return granted.has_value(); }));
    EXPECT_FALSE(*granted);
}

TEST_F(ScreenCaptureManagerTest, theAlertsCancelOpensNothing) {
    desktop.screenSource.contentError = Error{Error::Kind::Failed, QStringLiteral("not permitted")};
    std::optional<bool> granted;
    flows.start(ScreenCaptureManager::screenPermissionGranted()).then([&](Result<bool> answer) {
        granted = answer.value();
    });
    ASSERT_TRUE(waitUntil([&] { return onlyTopLevel<QMessageBox>() != nullptr; }));
    buttonNamed(*onlyTopLevel<QMessageBox>(), QStringLiteral("Cancel"))->click();
    ASSERT_TRUE(waitUntil([&] { return granted.has_value(); }));
    EXPECT_FALSE(*granted);
    EXPECT_TRUE(desktop.opener.pages.empty());
}

TEST_F(ScreenCaptureManagerTest, permissionIsGrantedInSilence) {
    std::optional<bool> granted;
    flows.start(ScreenCaptureManager::screenPermissionGranted()).then([&](Result<bool> answer) {
        granted = answer.value();
    });
    ASSERT_TRUE(waitUntil([&] { return granted.has_value(); }));
    EXPECT_TRUE(*granted);
    EXPECT_EQ(onlyTopLevel<QMessageBox>(), nullptr);
}

TEST_F(ScreenCaptureManagerTest, theInnerFormTellsAChangeOfMindFromAFailureAndPublishesNothing) {
    desktop.addScreen(1, {0, 0, 800, 600});
    CapturedOutput output;
    const auto answerOf = [&](const Outcome<Image>& capture) {
        std::optional<Result<Image>> answer;
        capture.then([&](const Result<Image>& result) { answer = result; });
        EXPECT_TRUE(waitUntil([&] { return answer.has_value(); }));
        return *answer;
    };
    const Outcome<Image> escaped = flows.start(manager.areaCapture());
    ASSERT_TRUE(waitUntil([&] { return selection() != nullptr; }));
    pressKey(*selection(), Qt::Key_Escape);
    EXPECT_EQ(answerOf(escaped).error().kind, Error::Kind::Cancelled);
    EXPECT_EQ(answerOf(flows.start(manager.fullscreenCapture())).value().size(), QSizeF(800, 600));
    desktop.screenSource.contentError = Error{Error::Kind::Failed, QStringLiteral("not permitted")};
    EXPECT_EQ(answerOf(flows.start(manager.fullscreenCapture())).error().kind, Error::Kind::Failed);
    EXPECT_FALSE(manager.capturedImage().has_value());
    EXPECT_EQ(output.text(), QString());
}

TEST_F(ScreenCaptureManagerTest, aFlowEndsWithItsManagerAndTakesItsOverlayAlong) {
    desktop.addScreen(1, {0, 0, 800, 600});
    CapturedOutput output;
    auto shortLived = std::make_unique<ScreenCaptureManager>();
    const Outcome<void> area = shortLived->captureArea();
    ASSERT_TRUE(waitUntil([&] { return selection() != nullptr; }));
    const Outcome<void> fullscreen = shortLived->captureFullscreen();
    shortLived.reset();
    EXPECT_TRUE(area.isSettled());
    EXPECT_TRUE(fullscreen.isSettled());
    ASSERT_TRUE(waitUntil([&] { return desktop.surfaceHost.surfaces.empty() && selection() == nullptr; }));
    EXPECT_EQ(output.text(), QString());
}
