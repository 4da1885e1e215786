// A card dragged out as a file: where the file is, when a press becomes a drag, and what its end means.
#include "base/Clock.h"
#include "panel/CardDrag.h"
#include "panel/PanelFixture.h"
#include "support/BadWorld.h"

#include <QDir>
#include <QDrag>
#include <QMimeData>
#include <gmock/gmock.h>

namespace marrowfin::panel {

using namespace imaging;
using namespace settings;

namespace {
// Ends every session as the test says and remembers what it carried.
class PlayedDrags : public DragRunner {
public:
    Qt::DropAction answer = Qt::CopyAction;
    std::function<void()> meanwhile;
    int sessions = 0;
    QList<QUrl> urls;
    QSize previewSize;
    QPoint hotSpot;

    Qt::DropAction run(QDrag& drag, QWidget&) override {
        ++sessions;
        urls = drag.mimeData()->urls();
        previewSize = drag.pixmap().deviceIndependentSize().toSize();
        hotSpot = drag.hotSpot();
        if (meanwhile)
            meanwhile();
        return answer;
    }
};
} // namespace

class DragOut : public PanelFixture {
protected:
    DragOut() {
        addDisplay(1, {0, 0, 1440, 900});
        auto played = std::make_unique<PlayedDrags>();
        drags = played.get();
        Shared<DragRunner>::replace(std::move(played));
    }
    ~DragOut() override { Clock::reset(); }

    void drag(CapturePanel* panel, const QPointF& by) {
        testsupport::pressMouse(panel->content(), onCard(120, 80));
        testsupport::moveMouse(panel->content(), onCard(120, 80) + by);
    }
    QString folder() const { return desktop.folders.temporary() + QStringLiteral("/MarrowfinDragExports"); }

    PlayedDrags* drags;
};

TEST_F(DragOut, FourPointsAreAClickALittleMoreIsADrag) {
    CapturePanel* panel = presentSettled();
    drag(panel, {0, 4});
    EXPECT_EQ(drags->sessions, 0);
    testsupport::releaseMouse(panel->content(), onCard(120, 76));
    EXPECT_EQ(controller().editors().size(), 1u);

    panel = presentSettled();
    drag(panel, {2.9, 2.9});
    EXPECT_EQ(drags->sessions, 1);
    testsupport::releaseMouse(panel->content(), onCard(120, 76));
    EXPECT_EQ(controller().editors().size(), 1u);
}

TEST_F(DragOut, TheFileIsTheCaptureAsPng) {
    QImage pixels(321, 123, QImage::Format_RGB32);
    for (int x = 0; x < 321; ++x)
        for (int y = 0; y < 123; ++y)
            pixels.setPixel(x, y, qRgb(x % 256, y * 2, (x + y) % 256));
    drag(presentSettled(Image::captured(pixels)), {10, 0});
    ASSERT_EQ(drags->urls.size(), 1);
    EXPECT_TRUE(drags->urls[0].isLocalFile());
    EXPECT_EQ(QImage(drags->urls[0].toLocalFile()).convertToFormat(QImage::Format_RGB32), pixels);
    EXPECT_EQ(QFileInfo(drags->urls[0].toLocalFile()).absolutePath(), folder());
}

TEST_F(DragOut, ThePreviewIsTheCaptureWhereItIsOnTheCard) {
    CapturePanel* panel = presentSettled(capture(440, 280));
    panel->content().setHovered(true, HoverSource::Program);
    pass(2);
    drag(panel, {10, 0});
    EXPECT_EQ(drags->previewSize, QSize(132, 84)); // receded
    EXPECT_EQ(drags->hotSpot, QPoint(66, 70));     // from (54, 150) on the card to the press at (120, 80)
}

TEST_F(DragOut, ADropThatWasTakenCountsAndTheCardLeaves) {
    CapturePanel* panel = presentSettled();
    drag(panel, {10, 0});
    EXPECT_TRUE(controller().panels().empty());
    EXPECT_EQ(HintCounters().panelCompletedDragOuts(), 1);
}

TEST_F(DragOut, ACancelledDragKeepsTheCardAndGivesTheWholeInterval) {
    drags->answer = Qt::IgnoreAction;
    CapturePanel* panel = presentSettled();
    pass(10);
    drag(panel, {10, 0});
    EXPECT_EQ(controller().panels().size(), 1u);
    EXPECT_EQ(HintCounters().panelCompletedDragOuts(), 0);
    pass(14.9);
    EXPECT_EQ(controller().panels().size(), 1u);
    pass(0.2);
    EXPECT_TRUE(controller().panels().empty());
}

TEST_F(DragOut, WhatNobodyTookSlidesBackToItsCard) {
    drags->answer = Qt::IgnoreAction;
    CapturePanel* panel =
        presentSettled(capture(440, 280)); // fills the mount: (10, 10, 220, 140) on the card
    pointAt({900, 500});
    drag(panel, {10, 0}); // held at (120, 80) of the card
    ASSERT_NE(panel->previewReturn(), nullptr);
    const DesktopRect released{QRectF(900 - 110, 500 - 70, 220, 140)};
    const DesktopRect home{QRectF(24 + 10, 24 + 10, 220, 140)};
    EXPECT_EQ(panel->previewReturn()->frame(), released);
    ASSERT_EQ(desktop.surfaceHost.order.size(), 2u);
    const fake::FakeSurface* flying = desktop.surfaceHost.order.back(); // in front of its card
    EXPECT_TRUE(flying->traits.passesClicks);
    EXPECT_EQ(flying->traits.keyboard, platform::SurfaceKeyboard::None);
    EXPECT_EQ(flying->widget->grab().toImage().pixelColor(110, 70), QColor(40, 120, 200));
    pass(PreviewReturn::seconds / 2);
    EXPECT_NEAR(flying->frame().rect.x(), (released.rect.x() + home.rect.x()) / 2, 20);
    EXPECT_NEAR(flying->frame().rect.y(), (released.rect.y() + home.rect.y()) / 2, 12);
    pass(PreviewReturn::seconds / 2 + 0.02);
    EXPECT_EQ(panel->previewReturn()->frame(), home);
    EXPECT_EQ(desktop.surfaceHost.order.size(), 1u);
    EXPECT_TRUE(panel->isVisible());
    EXPECT_TRUE(controller().entryFor(panel)->dismissTimer.isRunning());
}

TEST_F(DragOut, WhatSlidesBackGoesWithItsCard) {
    drags->answer = Qt::IgnoreAction;
    CapturePanel* panel = presentSettled();
    pointAt({900, 500});
    drag(panel, {10, 0});
    pass(0.1);
    controller().dismiss(panel, Animated::No);
    pass(0);
    EXPECT_TRUE(desktop.surfaceHost.surfaces.empty());
    EXPECT_FALSE(chrome::AnimationClock::shared().isRunning());
}

TEST_F(DragOut, NothingSlidesWithReducedMotionOrAfterADropThatWasTaken) {
    pointAt({900, 500});
    CapturePanel* taken = presentSettled();
    drag(taken, {10, 0});
    EXPECT_EQ(desktop.surfaceHost.surfaces.size(), 1u); // the card, fading
    drags->answer = Qt::IgnoreAction;
    desktop.appearance.setReduceMotion(true);
    CapturePanel* panel = presentSettled();
    drag(panel, {10, 0});
    EXPECT_EQ(panel->previewReturn(), nullptr);
    EXPECT_EQ(controller().panels().size(), 1u);
}

TEST_F(DragOut, APointerThatIsElsewhereAfterwardsNoLongerHovers) {
    drags->answer = Qt::IgnoreAction;
    CapturePanel* panel = presentSettled();
    pointAtPlace(panel->content(), onCard(120, 80));
    pointAt({900, 500});
    drag(panel, {10, 0});
    EXPECT_FALSE(panel->content().isHovered());
}

TEST_F(DragOut, ACardPushedOutInMidDragStaysAliveUntilItsEnd) {
    CapturePanel* panel = presentSettled();
    drags->meanwhile = [&] {
        for (int count = 0; count < 4; ++count)
            present();
        pass(1);
        EXPECT_EQ(controller().entryFor(panel), nullptr);
    };
    drag(panel, {10, 0});
    EXPECT_EQ(controller().panels().size(), 4u);
    pass(0);
    EXPECT_EQ(desktop.surfaceHost.surfaces.size(), 4u);
}

TEST_F(DragOut, ADragThatBeginsBeforeTheFileIsThereWritesIt) {
    CapturePanel* panel = present(capture(2000, 1500));
    drag(panel, {10, 0});
    ASSERT_EQ(drags->urls.size(), 1);
    EXPECT_EQ(QImage(drags->urls[0].toLocalFile()).size(), QSize(2000, 1500));
}

TEST_F(DragOut, AFileThatWasTakenOutMeanwhileIsWrittenAgain) {
    SettingsStore::shared().setPanelAutoClose(PanelAutoClose::never);
    CapturePanel* panel = presentSettled();
    Clock::setNow([] { return QDateTime::currentDateTimeUtc().addSecs(4000); });
    present(); // which takes out what is older than an hour
    ASSERT_FALSE(QFile::exists(panel->content().dragExport().destination()));
    drag(panel, {10, 0});
    ASSERT_EQ(drags->urls.size(), 1);
    EXPECT_EQ(QImage(drags->urls[0].toLocalFile()).size(), QSize(400, 200));

    panel = presentSettled();
    ASSERT_TRUE(QDir(folder()).removeRecursively());
    drag(panel, {10, 0});
    ASSERT_EQ(drags->urls.size(), 1);
    EXPECT_EQ(QImage(drags->urls[0].toLocalFile()).size(), QSize(400, 200));
}

TEST_F(DragOut, WithoutPixelsThereIsNoDragAndNoClickEither) {
    CapturePanel* panel = present(Image());
    drag(panel, {10, 0});
    testsupport::releaseMouse(panel->content(), onCard(120, 80));
    EXPECT_EQ(drags->sessions, 0);
    EXPECT_EQ(controller().editors().size(), 0u);
    EXPECT_EQ(controller().panels().size(), 1u);
}

TEST_F(DragOut, AFolderThatCantBeMadeOnlyCostsTheFile) {
    QDir().mkpath(QFileInfo(desktop.folders.temporary()).absolutePath());
    QFile blocker(desktop.folders.temporary());
    ASSERT_TRUE(blocker.open(QIODevice::WriteOnly)); // a file in the temporary folder's place
    CapturePanel* panel = present();
    pass(1);
    drag(panel, {10, 0});
    EXPECT_EQ(drags->sessions, 0);
    EXPECT_EQ(controller().panels().size(), 1u);
    EXPECT_TRUE(panel->content().captionText().startsWith(QStringLiteral("400 × 200")));
}

TEST_F(DragOut, AFullDiskOnlyCostsTheFileAndLeavesNoHalfOfIt) {
    const test::FullDisk full(16);
    CapturePanel* panel = present();
    pass(1);
    drag(panel, {10, 0});
    EXPECT_EQ(drags->sessions, 0);
    EXPECT_TRUE(QDir(folder()).entryList(QDir::Files | QDir::Hidden).isEmpty());
}

TEST_F(DragOut, ACardThatGoesBeforeItsFileIsWrittenIsForgotten) {
    CapturePanel* panel = present(capture(3000, 2000));
    controller().dismiss(panel, Animated::No);
    pass(0);
    EXPECT_TRUE(desktop.surfaceHost.surfaces.empty());
    presentSettled(); // the queue works on
}

TEST_F(DragOut, CardsOfOneSecondGetTheirOwnNames) {
    Clock::setNow([] { return QDateTime(QDate(2026, 11, 21), QTime(9, 5, 7), Qt::UTC); });
    QStringList names;
    for (int count = 0; count < 3; ++count)
        names << QFileInfo(presentSettled()->content().dragExport().destination()).fileName();
    EXPECT_EQ(names, (QStringList{QStringLiteral("Marrowfin 2026-11-21 at 09.05.07.png"),
                                  QStringLiteral("Marrowfin 2026-11-21 at 09.05.07 2.png"),
                                  QStringLiteral("Marrowfin 2026-11-21 at 09.05.07 3.png")}));
}

TEST_F(DragOut, CardsOfOneSecondGetTheirOwnNamesBeforeAnyOfTheirFilesIsThere) {
    Clock::setNow([] { return QDateTime(QDate(2026, 11, 21), QTime(9, 5, 7), Qt::UTC); });
    CapturePanel* first = present(capture(300, 200));
    CapturePanel* second = present(capture(310, 200));
    EXPECT_TRUE(second->content().dragExport().destination().endsWith(QStringLiteral("07 2.png")));
    const auto ready = [](CapturePanel* panel) { return panel->content().dragExport().isReady(); };
    ASSERT_TRUE(fake::waitUntil([&] { return ready(first) && ready(second); }));
    EXPECT_EQ(QImage(first->content().dragExport().destination()).width(), 300);
    EXPECT_EQ(QImage(second->content().dragExport().destination()).width(), 310);
}

TEST_F(DragOut, WhatIsOlderThanAnHourGoesWithTheNextCard) {
    QDir().mkpath(folder());
    const auto leave = [&](const QString& name, qint64 secondsAgo) {
        QFile file(folder() + QLatin1Char('/') + name);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.setFileTime(QDateTime::currentDateTimeUtc().addSecs(-secondsAgo), QFile::FileModificationTime);
    };
    leave(QStringLiteral("old.png"), 3700);
    leave(QStringLiteral(".hidden"), 3700);
    leave(QStringLiteral("young.png"), 3500);
    present();
    EXPECT_THAT(QDir(folder()).entryList(QDir::Files | QDir::Hidden, QDir::Name),
                testing::Contains(QStringLiteral("young.png")));
    EXPECT_FALSE(QFile::exists(folder() + QStringLiteral("/old.png")));
    EXPECT_FALSE(QFile::exists(folder() + QStringLiteral("/.hidden")));
}

TEST_F(DragOut, TheFolderIsTheUsersAloneAndNeverALink) {
    QDir().mkpath(desktop.folders.temporary() + QStringLiteral("/elsewhere"));
    ASSERT_TRUE(QFile::link(desktop.folders.temporary() + QStringLiteral("/elsewhere"), folder()));
    const QString used = QFileInfo(presentSettled()->content().dragExport().destination()).absolutePath();
    EXPECT_NE(used, folder());
    EXPECT_TRUE(QDir(desktop.folders.temporary() + QStringLiteral("/elsewhere")).isEmpty());
    const QFile::Permissions all = QFile::permissions(used);
    EXPECT_FALSE(all & (QFile::ReadGroup | QFile::ReadOther | QFile::WriteOther | QFile::ExeOther));
}

// The hint.

TEST_F(DragOut, TheThirdDropEndsTheHintForLaterCards) {
    CapturePanel* early = present();
    for (int count = 0; count < 3; ++count) {
        CapturePanel* panel = presentSettled();
        EXPECT_TRUE(panel->content().showsDragHint());
        drag(panel, {10, 0});
    }
    EXPECT_TRUE(early->content().showsDragHint()); // what it was made with
    EXPECT_FALSE(present()->content().showsDragHint());
}

TEST_F(DragOut, TwentyFiveExposuresEndTheHint) {
    for (int count = 0; count < 24; ++count)
        HintCounters().countDragHintExposure();
    CapturePanel* panel = presentSettled();
    EXPECT_TRUE(panel->content().showsDragHint());
    pointAtPlace(panel->content(), onCard(120, 80));
    EXPECT_FALSE(present()->content().showsDragHint());
}

TEST_F(DragOut, ACardCountsOneExposureAndOnlyByThePointer) {
    CapturePanelContentView& view = presentSettled()->content();
    view.setHovered(true, HoverSource::Program);
    view.setHovered(false, HoverSource::Program);
    EXPECT_EQ(HintCounters().panelDragHintExposures(), 0);
    for (int count = 0; count < 3; ++count) {
        pointAtPlace(view, onCard(120, 80));
        pointAway(view);
    }
    EXPECT_EQ(HintCounters().panelDragHintExposures(), 1);
}

TEST_F(DragOut, AHintShownOnPurposeCountsNothing) {
    CapturePanelContentView& view = presentSettled()->content();
    view.overrideDragHint(true);
    pointAtPlace(view, onCard(120, 80));
    EXPECT_EQ(HintCounters().panelDragHintExposures(), 0);
    view.overrideDragHint(false);
    EXPECT_FALSE(view.captionText().contains(QStringLiteral("Drag")));
}

} // namespace marrowfin::panel
