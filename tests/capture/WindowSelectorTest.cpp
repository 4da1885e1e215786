#include "capture/WindowSelector.h"

#include "base/Corrections.h"
#include "capture/KeyCaptureView.h"
#include "capture/WindowHighlightView.h"
#include "platform/fake/FakeDesktop.h"
#include "support/Input.h"

#include <QCoreApplication>
#include <gtest/gtest.h>

using namespace marrowfin;
using namespace capture;
using namespace marrowfin::testsupport;
using marrowfin::fake::FakeDesktop;
using marrowfin::fake::waitUntil;

namespace {

using Picked = std::optional<std::uint32_t>;

class WindowSelectorTest : public testing::Test {
protected:
    FakeDesktop desktop;
    WindowSelector selector;
    FlowScope flows;
    QObject listening; // ends with the test
    std::optional<Picked> result;

    void TearDown() override { Corrections::reset(); }

    void begin() {
        if (desktop.screens.shown.empty())
            desktop.addScreen(1, {0, 0, 800, 600});
        flows.start(selector.selectWindow()).then(&listening, [this](const Result<Picked>& id) {
            result = id.value();
        });
        ASSERT_TRUE(waitUntil([&] { return desktop.screenSource.contentRequests > 0; }));
        ASSERT_TRUE(waitUntil([&] {
            return views().size() ==
                   static_cast<qsizetype>(windowCandidates(desktop.screenSource.shown.windows,
                                                           QCoreApplication::applicationPid())
                                              .size());
        }));
    }
    QList<WindowHighlightView*> views() { return childrenOfTopLevels<WindowHighlightView>(); }
    WindowHighlightView& view(std::uint32_t id) {
        for (WindowHighlightView* each : views())
            if (each->windowID == id)
                return *each;
        ADD_FAILURE() << "no rectangle for window " << id;
        std::abort();
    }
    QWidget& root() { return *onlyChildOfTopLevels<KeyCaptureView>()->window(); }
    // What a click at this place of the overlay reaches.
    QWidget* at(QPoint point) { return root().childAt(point); }
    Picked picked() {
        EXPECT_TRUE(waitUntil([&] { return result.has_value(); }));
        return result.value_or(std::nullopt);
    }
};

} // namespace

TEST_F(WindowSelectorTest, fiftyPointsIsNotOfferedFiftyOneIs) {
    desktop.screenSource.addWindow(1, 1, {0, 0, 50, 300});
    desktop.screenSource.addWindow(2, 1, {0, 0, 300, 50});
    desktop.screenSource.addWindow(3, 1, {0, 0, 51, 51});
    begin();
    ASSERT_EQ(views().size(), 1);
    EXPECT_EQ(views().first()->windowID, 3u);
}

TEST_F(WindowSelectorTest, ourOwnWindowsAndThoseOfNobodyAreNeverCandidates) {
    desktop.screenSource.addWindow(1, QCoreApplication::applicationPid(), {0, 0, 300, 300});
    desktop.screenSource.addWindow(2, 1, {0, 0, 300, 300});
    desktop.screenSource.shown.windows.back().ownerPID.reset();
    begin();
    EXPECT_TRUE(views().isEmpty());
}

TEST_F(WindowSelectorTest, settledARectangleLiesMirroredAboutTheScreensHeight) {
    desktop.screenSource.addWindow(1, 1, {100, 50, 300, 200});
    begin();
    EXPECT_EQ(view(1).geometry(), QRect(100, 600 - 50 - 200, 300, 200));
}

TEST_F(WindowSelectorTest, settledTheScreensOriginIsNotTakenOff) {
    desktop.addScreen(1, {0, 0, 800, 600});
    desktop.addScreen(2, {800, 0, 800, 600});
    desktop.screens.mainDisplayID = 2;
    desktop.screenSource.addWindow(1, 1, {900, 50, 300, 200});
    begin();
    EXPECT_EQ(view(1).x(), 900);
}

TEST_F(WindowSelectorTest, settledTheWindowFurtherBackTakesTheClick) {
    desktop.screenSource.addWindow(1, 1, {100, 100, 300, 400});
    desktop.screenSource.addWindow(2, 1, {100, 100, 300, 400});
    begin();
    EXPECT_EQ(at({200, 300}), &view(2));
}

TEST_F(WindowSelectorTest, correctedARectangleLiesOnItsWindowAndTheFrontOneTakesTheClick) {
    Corrections::override(QStringLiteral("window-rectangles"));
    desktop.addScreen(1, {0, 0, 800, 600});
    desktop.addScreen(2, {800, 0, 800, 600});
    desktop.screens.mainDisplayID = 2;
    desktop.screenSource.addWindow(1, 1, {900, 50, 300, 200});
    desktop.screenSource.addWindow(2, 1, {950, 100, 300, 200});
    desktop.screenSource.addWindow(3, 1, {960, 110, 300, 200});
    begin();
    EXPECT_EQ(view(1).geometry(), QRect(100, 50, 300, 200));
    EXPECT_EQ(at({200, 200}), &view(1));
    EXPECT_EQ(at({405, 200}), &view(2));
}

TEST_F(WindowSelectorTest, selectionHappensOnTheRelease) {
    desktop.screenSource.addWindow(42, 1, {100, 100, 300, 400});
    begin();
    pressMouse(view(42), {10, 10});
    QApplication::processEvents();
    EXPECT_FALSE(result.has_value());
    releaseMouse(view(42), {10, 10});
    EXPECT_EQ(picked(), 42u);
}

TEST_F(WindowSelectorTest, aReleaseBesideThePressedRectangleSelectsNothing) {
    desktop.screenSource.addWindow(1, 1, {100, 100, 300, 200});
    desktop.screenSource.addWindow(2, 1, {450, 100, 300, 200});
    begin();
    // As the window system delivers it: the view that took the press gets the release, wherever it is.
    WindowHighlightView& first = view(1);
    for (const QPoint& onScreen : {QPoint(20, 20), view(2).geometry().center()}) {
        pressMouse(first, {10, 10});
        releaseMouse(first, first.mapFromParent(onScreen));
        QApplication::processEvents();
        EXPECT_FALSE(result.has_value());
        EXPECT_TRUE(root().isVisible());
    }
    // Back on it before the release: picked.
    pressMouse(first, {10, 10});
    moveMouse(first, first.mapFromParent(QPoint(20, 20)));
    releaseMouse(first, {299, 199});
    EXPECT_EQ(picked(), 1u);
}

TEST_F(WindowSelectorTest, onlyTheLeftButtonPicks) {
    desktop.screenSource.addWindow(42, 1, {100, 100, 300, 400});
    begin();
    clickMouse(view(42), {10, 10}, Qt::RightButton);
    clickMouse(view(42), {10, 10}, Qt::MiddleButton);
    QApplication::processEvents();
    EXPECT_FALSE(result.has_value());
}

TEST_F(WindowSelectorTest, aScreenThatGoesWhileSelectingIsACancel) {
    desktop.screenSource.addWindow(42, 1, {100, 100, 300, 400});
    begin();
    desktop.surfaceHost.surfaces.front()->takeAway();
    EXPECT_FALSE(picked().has_value());
}

TEST_F(WindowSelectorTest, theOverlayCoversTheScreenWithTheKeyboardAndShowsItUndimmed) {
    desktop.addScreen(1, {0, 0, 640, 480});
    desktop.screenSource.addWindow(1, 1, {100, 100, 300, 200});
    begin();
    const fake::FakeSurface& surface = *desktop.surfaceHost.surfaces.front();
    EXPECT_EQ(surface.frame().rect, QRectF(0, 0, 640, 480));
    EXPECT_EQ(surface.traits.level, platform::SurfaceLevel::Overlay);
    EXPECT_EQ(surface.traits.keyboard, platform::SurfaceKeyboard::Exclusive);
    EXPECT_FALSE(surface.traits.passesClicks);
    QImage shot(root().size(), QImage::Format_ARGB32_Premultiplied);
    shot.fill(Qt::transparent);
    root().render(&shot, QPoint(), QRegion(), QWidget::DrawChildren);
    EXPECT_EQ(qAlpha(shot.pixel(600, 400)), 0) << "beside the rectangles";
    const QPoint middle = view(1).geometry().center();
    EXPECT_NEAR(qAlpha(shot.pixel(middle)), 51, 1) << "white at 0.2";
    EXPECT_NEAR(qRed(shot.pixel(middle)), 51, 1);
    const QPoint corner = view(1).geometry().topLeft();
    EXPECT_EQ(QColor(shot.pixel(corner)), QColor(0, 122, 255)) << "the blue line";
}

TEST_F(WindowSelectorTest, aClickBetweenRectanglesKeepsTheOverlayUp) {
    desktop.screenSource.addWindow(1, 1, {100, 100, 300, 200});
    begin();
    clickMouse(*at({700, 20}), {700, 20});
    QApplication::processEvents();
    EXPECT_FALSE(result.has_value());
    EXPECT_TRUE(root().isVisible());
}

TEST_F(WindowSelectorTest, onlyEscapeLeadsOutWithoutCandidates) {
    begin();
    auto& keys = *onlyChildOfTopLevels<KeyCaptureView>();
    pressKey(keys, Qt::Key_Space);
    clickMouse(keys, {5, 5});
    QApplication::processEvents();
    EXPECT_FALSE(result.has_value());
    pressKey(keys, Qt::Key_Escape);
    EXPECT_FALSE(picked().has_value());
}

TEST_F(WindowSelectorTest, aFailedListingLeavesAnEmptyOverlay) {
    desktop.addScreen(1, {0, 0, 800, 600});
    desktop.screenSource.contentError = Error{Error::Kind::Failed, QStringLiteral("no list")};
    begin();
    EXPECT_TRUE(views().isEmpty());
    EXPECT_TRUE(root().isVisible());
}

TEST_F(WindowSelectorTest, aWindowThatClosesWhileTheOverlayIsUpStillGivesItsNumber) {
    desktop.screenSource.addWindow(42, 1, {100, 100, 300, 400});
    begin();
    desktop.screenSource.shown.windows.clear();
    clickMouse(view(42), {10, 10});
    EXPECT_EQ(picked(), 42u);
}

TEST_F(WindowSelectorTest, withoutAMainScreenTheResultIsEmpty) {
    flows.start(selector.selectWindow()).then(&listening, [this](const Result<Picked>& id) {
        result = id.value();
    });
    EXPECT_FALSE(picked().has_value());
    EXPECT_EQ(desktop.surfaceHost.hostedCount, 0);
}

TEST_F(WindowSelectorTest, theOverlayIsUpBeforeTheRectanglesAre) {
    desktop.addScreen(1, {0, 0, 800, 600});
    desktop.screenSource.addWindow(1, 1, {100, 100, 300, 200});
    flows.start(selector.selectWindow()).then(&listening, [this](const Result<Picked>& id) {
        result = id.value();
    });
    EXPECT_TRUE(root().isVisible());
    EXPECT_TRUE(views().isEmpty());
    EXPECT_TRUE(waitUntil([&] { return views().size() == 1; }));
}

TEST_F(WindowSelectorTest, aListingThatAnswersAfterTheSelectorHasGoneHarmsNobody) {
    desktop.addScreen(1, {0, 0, 800, 600});
    desktop.screenSource.addWindow(1, 1, {100, 100, 300, 200});
    {
        WindowSelector shortLived;
        FlowScope listingOnly;
        listingOnly.start(shortLived.selectWindow());
        shortLived.cancel();
    }
    ASSERT_TRUE(waitUntil([&] { return desktop.surfaceHost.surfaces.empty(); }));
}
