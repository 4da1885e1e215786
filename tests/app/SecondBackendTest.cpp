// The whole road on a desktop that is as unlike X11 as the seam allows: it answers late, after asking once
// for all keys; it tells no window where it is and nobody where the pointer is; and streams end when it
// likes.
#include "MenuFixture.h"

#include "app/HotKey.h"
#include "capture/ScreenCaptureManager.h"
#include "capture/SelectionView.h"
#include "chrome/AnimationClock.h"
#include "editor/EditorRootView.h"
#include "editor/EditorWindowController.h"
#include "panel/PanelLayout.h"
#include "pin/PinManager.h"
#include "pin/PinnedContentView.h"
#include "support/Input.h"

#include <QAbstractButton>

using namespace marrowfin;
using namespace app;
using namespace capture;
using namespace editor;
using namespace history;
using namespace panel;
using namespace pin;
using namespace marrowfin::testsupport;
using marrowfin::fake::FakeStream;
using marrowfin::fake::waitUntil;

namespace {

class SecondBackend : public MenuFixture {
protected:
    SecondBackend() {
        chrome::AnimationClock::shared().hold();
        desktop.addScreen(1, {0, 0, 1600, 1000});
        desktop.surfaceHost.tellsPlaces = false;
        desktop.answerLate();
    }
    // Lets the desktop answer whatever it is asked until the condition holds.
    bool answered(const std::function<bool()>& condition) {
        return waitUntil([&] {
            desktop.releaseAnswers();
            return condition();
        });
    }
    void launchLate() {
        bool done = false;
        QObject::connect(&delegate, &AppDelegate::launched, &delegate, [&] { done = true; });
        delegate.applicationDidFinishLaunching();
        ASSERT_TRUE(answered([&] { return done; }));
    }
    // A capture of the whole screen by its key, up to its card.
    CapturePanel* captured() {
        const std::size_t before = cards().size();
        desktop.hotKeys.press({hotKeySignature, 1});
        EXPECT_TRUE(answered([&] { return cards().size() == before + 1; }));
        return cards().empty() ? nullptr : cards().back();
    }
    // One that comes to nothing: returns when its flow has ended.
    void fullscreenIsOver() {
        bool over = false;
        delegate.captureManager()->captureFullscreen().then([&](const Result<void>&) { over = true; });
        EXPECT_TRUE(answered([&] { return over; }));
    }
    static std::vector<CapturePanel*> cards() { return CapturePanelController::shared().panels(); }
    static QAbstractButton* named(QWidget& widget, const QString& name) {
        for (auto* button : widget.findChildren<QAbstractButton*>())
            if (button->accessibleName() == name || button->text() == name)
                return button;
        return nullptr;
    }
    // An event of a window that takes itself to be at the origin.
    static void send(QWidget& widget, QEvent::Type type, const QPointF& at, Qt::MouseButtons held) {
        QMouseEvent event(type, at, at, Qt::LeftButton, held, Qt::NoModifier);
        QApplication::sendEvent(&widget, &event);
    }
};

} // namespace

TEST_F(SecondBackend, isAskedForAllKeysAtOnceAndTheLaunchWaitsForTheAnswer) {
    bool launched = false;
    QObject::connect(&delegate, &AppDelegate::launched, &delegate, [&] { launched = true; });
    delegate.applicationDidFinishLaunching();
    EXPECT_EQ(desktop.hotKeys.late.waitingCount(), 3u);
    QCoreApplication::processEvents();
    EXPECT_FALSE(launched);
    desktop.hotKeys.late.release();
    ASSERT_TRUE(waitUntil([&] { return launched; }));
    EXPECT_EQ(desktop.hotKeys.held.size(), 3u);
}

TEST_F(SecondBackend, aScreenBecomesACardOnTheMainScreen) {
    launchLate();
    const CapturePanel* card = captured();
    ASSERT_NE(card, nullptr);
    ASSERT_TRUE(desktop.pasteboard.image.has_value());
    EXPECT_EQ(desktop.pasteboard.image->size(), QSizeF(1600, 1000));
    EXPECT_EQ(CaptureHistory::shared().list().size(), 1);
    EXPECT_TRUE(card->isVisible());
    EXPECT_TRUE(QRectF(0, 0, 1600, 1000).contains(card->frame().rect));
}

TEST_F(SecondBackend, twoCapturesWhoseCardsWaitForAnAnswerStandInTheirOrder) {
    launchLate();
    CapturePanelController::shared().present(picture(Qt::red), {});
    CapturePanelController::shared().present(picture(Qt::blue), {});
    EXPECT_TRUE(cards().empty());
    ASSERT_TRUE(answered([] { return cards().size() == 2; }));
    EXPECT_LT(cards()[1]->frame().rect.y(), cards()[0]->animator().target().rect.y());
    named(cards()[0]->content(), QStringLiteral("Copy"))->click();
    ASSERT_TRUE(answered([&] { return desktop.pasteboard.image.has_value(); }));
    EXPECT_EQ(desktop.pasteboard.image->pixels().pixelColor(3, 3), QColor(Qt::red)) << "the oldest";
}

TEST_F(SecondBackend, anAreaIsCapturedOnceTheOverlayIsSeenGone) {
    launchLate();
    desktop.hotKeys.press({hotKeySignature, 2});
    ASSERT_TRUE(answered([] { return onlyChildOfTopLevels<SelectionView>() != nullptr; }));
    dragMouse(*onlyChildOfTopLevels<SelectionView>(), {100, 100}, {300, 250});
    QCoreApplication::processEvents();
    EXPECT_TRUE(desktop.screenSource.streams.empty()) << "the overlay may still be in the picture";
    ASSERT_TRUE(answered([] { return cards().size() == 1; }));
    EXPECT_EQ(delegate.captureManager()->capturedImage()->size(), QSizeF(200, 150));
    EXPECT_EQ(desktop.screenSource.streams.back()->configuration.sourceRect, QRectF(100, 100, 200, 150));
}

TEST_F(SecondBackend, aPinFollowsThePointerThoughNoWindowKnowsItsPlace) {
    launchLate();
    CapturePanel* card = captured();
    ASSERT_NE(card, nullptr);
    card->content().setHovered(true, HoverSource::Program);
    QAbstractButton* pinIt = named(card->content(), QStringLiteral("Pin"));
    ASSERT_NE(pinIt, nullptr);
    pinIt->click();
    ASSERT_EQ(PinManager::shared().pinnedWindows().size(), 1u);
    PinnedWindow& pinned = *PinManager::shared().pinnedWindows().front();
    EXPECT_EQ(pinned.frame().rect, QRectF(100, 100, 600, 375));
    const QPointF held(PinnedContentView::halo + 50, PinnedContentView::halo + 50);
    send(pinned.content(), QEvent::MouseButtonPress, held, Qt::LeftButton);
    send(pinned.content(), QEvent::MouseMove, held + QPointF(40, 30), Qt::LeftButton);
    EXPECT_EQ(pinned.frame().rect.topLeft(), QPointF(140, 70));
    // The pin came along, so the pointer is near where it took hold of it.
    send(pinned.content(), QEvent::MouseMove, held + QPointF(10, 0), Qt::LeftButton);
    EXPECT_EQ(pinned.frame().rect.topLeft(), QPointF(150, 70));
    send(pinned.content(), QEvent::MouseButtonRelease, held, Qt::NoButton);
}

TEST_F(SecondBackend, aCardOpensAnEditorAndWhatItCopiesArrives) {
    launchLate();
    CapturePanel* card = captured();
    ASSERT_NE(card, nullptr);
    desktop.pasteboard.image.reset();
    const QPointF middle(card->content().width() / 2.0, card->content().height() / 2.0);
    clickMouse(card->content(), middle);
    ASSERT_EQ(CapturePanelController::shared().editors().size(), 1u);
    const std::shared_ptr<EditorWindowController> editor = EditorWindowController::openEditors().front();
    EXPECT_TRUE(editor->window()->isVisible());
    QAbstractButton* copy = named(*editor->rootView(), QStringLiteral("Copy"));
    ASSERT_NE(copy, nullptr);
    copy->click();
    EXPECT_FALSE(desktop.pasteboard.image.has_value());
    ASSERT_TRUE(answered([&] { return desktop.pasteboard.image.has_value(); }));
    EXPECT_EQ(desktop.pasteboard.image->size(), QSizeF(1600, 1000));
}

TEST_F(SecondBackend, aStreamThatEndsByItselfFailsItsCaptureAloneAndTheNextOneWorks) {
    launchLate();
    const auto working = desktop.screenSource.prepare;
    desktop.screenSource.prepare = [](FakeStream& made) {
        made.onStart = [](FakeStream& stream) {
            stream.endByItself(Error{Error::Kind::Failed, QStringLiteral("The permission was taken back.")});
        };
    };
    testing::internal::CaptureStdout();
    fullscreenIsOver();
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "Fullscreen capture failed: The permission was taken back.\n");
    EXPECT_TRUE(cards().empty());
    desktop.screenSource.prepare = working;
    EXPECT_NE(captured(), nullptr);
}

TEST_F(SecondBackend, aDesktopThatLetsNobodySeeTheScreenSaysSoAndLeavesNothingBehind) {
    launchLate();
    desktop.screenSource.contentError =
        Error{Error::Kind::Unavailable, QStringLiteral("This desktop lets no program see the screen.")};
    testing::internal::CaptureStdout();
    fullscreenIsOver();
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "Fullscreen capture failed: This desktop lets no program see the screen.\n");
    EXPECT_TRUE(cards().empty());
    EXPECT_FALSE(desktop.pasteboard.image.has_value());
}
