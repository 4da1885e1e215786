#include "AppFixture.h"

#include "app/ShortcutManager.h"
#include "capture/ScreenCaptureManager.h"
#include "support/Input.h"

#include <QMessageBox>

using namespace marrowfin;
using namespace app;
using namespace history;
using namespace imaging;
using namespace settings;
using namespace marrowfin::platform;
using namespace marrowfin::testsupport;
using marrowfin::fake::waitUntil;

class AppDelegateTest : public AppFixture {};

TEST_F(AppDelegateTest, aLaunchMakesOneItemThreeKeysAndAsksForAccess) {
    launch();
    EXPECT_EQ(desktop.statusBar.itemsMade, 1);
    EXPECT_EQ(desktop.hotKeys.held.size(), 3u);
    EXPECT_EQ(desktop.screenAccess.requests, 1);
    EXPECT_FALSE(desktop.statusBar.item->icon(22, false).isNull());
}

TEST_F(AppDelegateTest, withAllKeysTakenTheItemStandsBehindTheOneAlertAndTheRestOfTheLaunchWaits) {
    desktop.hotKeys.taken = {keyCode3, keyCode4, keyCode5};
    bool launched = false;
    QObject::connect(&delegate, &AppDelegate::launched, &delegate, [&] { launched = true; });
    delegate.applicationDidFinishLaunching();
    ASSERT_TRUE(waitUntil([] { return onlyTopLevel<QMessageBox>() != nullptr; }));
    EXPECT_EQ(desktop.statusBar.itemsMade, 1);
    EXPECT_TRUE(desktop.statusBar.item->action != nullptr);
    EXPECT_EQ(desktop.screenAccess.requests, 0);
    EXPECT_FALSE(launched);
    onlyTopLevel<QMessageBox>()->reject();
    ASSERT_TRUE(waitUntil([&] { return launched; }));
    EXPECT_EQ(desktop.screenAccess.requests, 1);
}

TEST_F(AppDelegateTest, aCaptureMadeWhileTheAlertIsUpIsRoutedOnceItIsAnswered) {
    desktop.addScreen(1, {0, 0, 800, 600});
    desktop.hotKeys.taken = {keyCode5};
    int routed = 0;
    QObject::connect(&delegate, &AppDelegate::captureRouted, &delegate, [&] { ++routed; });
    delegate.applicationDidFinishLaunching();
    ASSERT_TRUE(waitUntil([] { return onlyTopLevel<QMessageBox>() != nullptr; }));
    desktop.hotKeys.press({hotKeySignature, 1});
    ASSERT_TRUE(waitUntil([&] { return delegate.captureManager()->capturedImage().has_value(); }));
    EXPECT_EQ(routed, 0);
    onlyTopLevel<QMessageBox>()->reject();
    ASSERT_TRUE(waitUntil([&] { return routed == 1; }));
}

TEST_F(AppDelegateTest, allCapturesMadeWhileTheAlertIsUpAreDeliveredInOrderOnceItIsAnswered) {
    desktop.hotKeys.taken = {keyCode5};
    const std::vector<Image> taken = {picture(Qt::red), picture(Qt::green), picture(Qt::blue)};
    std::vector<Image> onClipboard;
    QObject::connect(&delegate, &AppDelegate::captureRouted, &delegate,
                     [&] { onClipboard.push_back(*desktop.pasteboard.image); });
    delegate.applicationDidFinishLaunching();
    ASSERT_TRUE(waitUntil([] { return onlyTopLevel<QMessageBox>() != nullptr; }));
    for (const Image& image : taken)
        delegate.captureManager()->setCapturedImage(image);
    EXPECT_TRUE(waitUntil([] { return CaptureHistory::shared().list().size() == 3; })) << "safe already";
    EXPECT_FALSE(desktop.pasteboard.image.has_value()) << "before its step of the launch";
    onlyTopLevel<QMessageBox>()->reject();
    ASSERT_TRUE(waitUntil([&] { return onClipboard.size() == taken.size(); }));
    EXPECT_EQ(onClipboard, taken);
    EXPECT_EQ(CaptureHistory::shared().list().size(), 3);
}

TEST_F(AppDelegateTest, withoutAButtonTheLaunchGoesOnWithoutAnIcon) {
    desktop.statusBar.button = false;
    launch();
    EXPECT_TRUE(desktop.statusBar.item->icon == nullptr);
    EXPECT_EQ(desktop.hotKeys.held.size(), 3u);
}

TEST_F(AppDelegateTest, quittingGivesAllThreeCombinationsBack) {
    launch();
    delegate.applicationWillTerminate();
    EXPECT_TRUE(desktop.hotKeys.held.empty());
}

TEST_F(AppDelegateTest, terminatingBeforeTheLaunchIsHarmless) {
    delegate.applicationWillTerminate();
}

TEST_F(AppDelegateTest, eitherButtonOpensTheMenu) {
    launch();
    desktop.statusBar.item->action(StatusItemButton::Left);
    EXPECT_EQ(desktop.statusBar.item->popUps, 1);
    desktop.statusBar.item->action(StatusItemButton::Right);
    EXPECT_EQ(desktop.statusBar.item->popUps, 2);
}

TEST_F(AppDelegateTest, theHistoryHasACaptureBeforeTheClipboardIsTouchedWhateverTheSetting) {
    desktop.addScreen(1, {0, 0, 1600, 1000});
    launch();
    qsizetype expected = 0;
    for (const PostCaptureAction action : allPostCaptureActions) {
        SettingsStore::shared().setPostCaptureAction(action);
        qsizetype savedByThen = 0;
        desktop.pasteboard.onClear = [&] { savedByThen = CaptureHistory::shared().list().size(); };
        const Image image = picture();
        capture(image);
        EXPECT_EQ(savedByThen, ++expected) << rawValue(action).toStdString();
        EXPECT_EQ(desktop.pasteboard.image, image);
    }
}
