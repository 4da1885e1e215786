#include "scrolling/StitchingManager.h"

#include "scrolling/BandedPage.h"

#include <cmath>
#include <gtest/gtest.h>
#include <pthread.h>
#include <set>
#include <thread>

using namespace marrowfin;
using namespace marrowfin::scrolling;
using imaging::Image;
using namespace marrowfin::testsupport;

namespace {

using Measured = Result<std::optional<Movement>>;

// Stands in for the measure.
StitchingManager::Registration answering(Measured measured) {
    return [measured](const QImage&, const QImage&) { return measured; };
}
StitchingManager stitcherThatMeasures(int rows) {
    return StitchingManager(StitchingManager::FixedRows::InEveryFrame, answering(Movement{rows, 0, 0}));
}

TEST(StitchingManager, anEmptyOneRefusesAndHasNothing) {
    StitchingManager stitcher;
    EXPECT_FALSE(stitcher.addImage(frameAt(bandedPage(40, 60), 0, 30)));
    EXPECT_FALSE(stitcher.finalImage());
    EXPECT_FALSE(stitcher.latestOffset());
}

TEST(StitchingManager, afterBeginTheFirstFrameItselfIsTheAnswer) {
    StitchingManager stitcher;
    const Image first = frameAt(bandedPage(400, 300), 0, 300, 2);
    stitcher.begin(first);
    EXPECT_EQ(stitcher.finalImage(), first);
    EXPECT_EQ(stitcher.finalImage()->size(), QSizeF(200, 150));
}

TEST(StitchingManager, beginReplacesWhatWasThere) {
    const QImage page = bandedPage(400, 900);
    StitchingManager stitcher;
    stitcher.begin(frameAt(page, 0, 300));
    ASSERT_TRUE(stitcher.addImage(frameAt(page, 120, 300)));
    const Image anew = frameAt(page, 500, 300);
    stitcher.begin(anew);
    EXPECT_EQ(stitcher.finalImage(), anew);
    EXPECT_FALSE(stitcher.latestOffset());
    stitcher.begin(Image());
    EXPECT_FALSE(stitcher.finalImage());
    EXPECT_FALSE(stitcher.addImage(anew));
}

TEST(StitchingManager, aFrameThatIsTheSameIsRefused) {
    const QImage page = bandedPage(400, 600);
    StitchingManager stitcher;
    stitcher.begin(frameAt(page, 0, 300));
    ASSERT_TRUE(stitcher.addImage(frameAt(page, 120, 300)));
    const std::optional<Image> before = stitcher.finalImage();
    EXPECT_FALSE(stitcher.addImage(frameAt(page, 120, 300)));
    EXPECT_EQ(stitcher.finalImage(), before);
}

TEST(StitchingManager, fivePointsAreEnoughAndLessIsNot) {
    const QImage page = markedPage(400, 600);
    const auto isJoined = [&](int rows, double density) {
        StitchingManager stitcher;
        stitcher.begin(frameAt(page, 0, 300, density));
        return stitcher.addImage(frameAt(page, rows, 300, density));
    };
    EXPECT_TRUE(isJoined(5, 1));
    EXPECT_FALSE(isJoined(4, 1));
    EXPECT_FALSE(isJoined(5, 5 / 4.999)); // 4.999 points
    EXPECT_TRUE(isJoined(10, 2));
    EXPECT_FALSE(isJoined(9, 2));
    EXPECT_FALSE(isJoined(5, 2));
}

TEST(StitchingManager, twoFramesOfBandsGrowByWhatMoved) {
    const QImage page = bandedPage(400, 420);
    StitchingManager stitcher;
    stitcher.begin(frameAt(page, 0, 300));
    ASSERT_TRUE(stitcher.addImage(frameAt(page, 120, 300)));
    EXPECT_EQ(stitcher.latestOffset(), 120);
    const Image image = *stitcher.finalImage();
    EXPECT_EQ(image.size(), QSizeF(400, 420));
    EXPECT_EQ(image.pixels(), page);
}

TEST(StitchingManager, joinsOnePageWhole) {
    const QImage page = markedPage(400, 300 + 7 * 90);
    StitchingManager stitcher;
    stitcher.begin(frameAt(page, 0, 300));
    for (int i = 1; i <= 7; ++i)
        ASSERT_TRUE(stitcher.addImage(frameAt(page, 90 * i, 300)));
    EXPECT_EQ(stitcher.finalImage()->pixels(), page);
}

TEST(StitchingManager, aRefusedFrameIsNoReference) {
    const QImage page = markedPage(400, 600);
    StitchingManager stitcher;
    stitcher.begin(frameAt(page, 0, 300));
    EXPECT_FALSE(stitcher.addImage(frameAt(page, 3, 300)));
    ASSERT_TRUE(stitcher.addImage(frameAt(page, 120, 300)));
    EXPECT_EQ(stitcher.finalImage()->size(), QSizeF(400, 420));
}

TEST(StitchingManager, theDirectionPlaysNoPart) {
    const QImage page = markedPage(400, 600);
    StitchingManager stitcher;
    stitcher.begin(frameAt(page, 120, 300));
    const Image back = frameAt(page, 0, 300);
    ASSERT_TRUE(stitcher.addImage(back));
    EXPECT_EQ(stitcher.latestOffset(), -120);
    const QImage pixels = stitcher.finalImage()->pixels();
    EXPECT_EQ(pixels.height(), 420);
    EXPECT_EQ(pixels.copy(0, 120, 400, 300), back.pixels());
    EXPECT_EQ(pixels.copy(0, 0, 400, 120), cut(page, 120, 120));
}

TEST(StitchingManager, theWholeNewFrameLiesOverWhatWasThere) {
    QImage other(400, 300, QImage::Format_RGB32);
    other.fill(Qt::red);
    StitchingManager stitcher = stitcherThatMeasures(120);
    stitcher.begin(frameAt(bandedPage(400, 300), 0, 300));
    ASSERT_TRUE(stitcher.addImage(Image::captured(other)));
    EXPECT_EQ(stitcher.finalImage()->pixels().copy(0, 120, 400, 300), other);
}

TEST(StitchingManager, unrelatedFramesAreJoinedWhenTheMeasureSaysSo) {
    StitchingManager stitcher = stitcherThatMeasures(-57);
    stitcher.begin(frameAt(bandedPage(400, 300), 0, 300));
    EXPECT_TRUE(stitcher.addImage(frameAt(markedPage(400, 300), 0, 300)));
    EXPECT_EQ(stitcher.finalImage()->size().height(), 357);
}

TEST(StitchingManager, anotherWidthIsStretchedAndKeepsItsHeight) {
    const QImage page = bandedPage(400, 600);
    const QImage narrow = cut(page, 100, 250).scaled(200, 250);
    StitchingManager stitcher;
    stitcher.begin(frameAt(page, 0, 300));
    ASSERT_TRUE(stitcher.addImage(Image::captured(narrow)));
    const Image image = *stitcher.finalImage();
    EXPECT_EQ(image.size(), QSizeF(400, 400));
    // Its own height, at the bottom: it ends 50 rows before the page that the first frame stood over would.
    EXPECT_EQ(image.pixels().copy(0, 150, 400, 250), cut(page, 100, 250));
}

TEST(StitchingManager, fractionsOfPointsAddUp) {
    const QImage page = markedPage(400, 900);
    StitchingManager stitcher;
    stitcher.begin(frameAt(page, 0, 300, 2));
    ASSERT_TRUE(stitcher.addImage(frameAt(page, 121, 300, 2)));
    EXPECT_EQ(stitcher.latestOffset(), 60.5);
    EXPECT_EQ(stitcher.finalImage()->size(), QSizeF(200, 210.5));
    ASSERT_TRUE(stitcher.addImage(frameAt(page, 242, 300, 2)));
    EXPECT_EQ(stitcher.finalImage()->size(), QSizeF(200, 271));
    EXPECT_EQ(stitcher.finalImage()->pixels(), cut(page, 0, 542));
}

TEST(StitchingManager, theFirstFramesDensityHolds) {
    const QImage page = bandedPage(400, 900);
    StitchingManager stitcher = stitcherThatMeasures(101);
    stitcher.begin(frameAt(page, 0, 300, 2));
    ASSERT_TRUE(stitcher.addImage(frameAt(page, 0, 300, 1)));
    ASSERT_TRUE(stitcher.addImage(frameAt(page, 0, 300, 1)));
    const Image image = *stitcher.finalImage();
    EXPECT_EQ(image.size(), QSizeF(200, 150 + 50.5 + 101));
    EXPECT_EQ(image.pixels().size(), QSize(400, 603));
}

TEST(StitchingManager, aMeasureThatFailsSaysSoOnce) {
    testing::internal::CaptureStderr();
    {
        StitchingManager stitcher(StitchingManager::FixedRows::InEveryFrame,
                                  answering(failure(QStringLiteral("no memory"))));
        stitcher.begin(frameAt(bandedPage(40, 60), 0, 30));
        EXPECT_FALSE(stitcher.addImage(frameAt(bandedPage(40, 60), 10, 30)));
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "[Marrowfin] Vision registration failed: no memory\n");
}

TEST(StitchingManager, otherRefusalsAreSilent) {
    const Image good = frameAt(bandedPage(40, 60), 0, 30);
    testing::internal::CaptureStderr();
    {
        StitchingManager lost(StitchingManager::FixedRows::InEveryFrame, answering(std::nullopt));
        lost.begin(good);
        EXPECT_FALSE(lost.addImage(good));
        StitchingManager far = stitcherThatMeasures(20);
        far.begin(good);
        EXPECT_FALSE(far.addImage(Image()));
        EXPECT_FALSE(far.addImage(Image::withSize(good.pixels(), QSizeF(40, std::nan("")))));
        far.begin(Image::withSize(good.pixels(), QSizeF(40, std::nan(""))));
        EXPECT_FALSE(far.addImage(good)) << "an offset that is no number";
        far.begin(Image::withSize(good.pixels(), QSizeF(40, 0)));
        EXPECT_FALSE(far.addImage(good));
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST(StitchingManager, worksOnItsOwnQueueAlone) {
    std::set<std::thread::id> threads;
    std::string name;
    int inside = 0;
    bool overlapped = false;
    StitchingManager stitcher(StitchingManager::FixedRows::InEveryFrame, [&](const QImage&, const QImage&) {
        overlapped = overlapped || ++inside != 1;
        threads.insert(std::this_thread::get_id());
        char text[16] = {};
        pthread_getname_np(pthread_self(), text, sizeof text);
        name = text;
        --inside;
        return Measured(Movement{10, 0, 0});
    });
    const Image frame = frameAt(bandedPage(40, 60), 0, 30);
    stitcher.begin(frame);
    std::vector<std::thread> callers;
    for (int i = 0; i < 4; ++i)
        callers.emplace_back([&] {
            for (int turn = 0; turn < 10; ++turn) {
                EXPECT_TRUE(stitcher.addImage(frame));
                EXPECT_TRUE(stitcher.finalImage());
            }
        });
    for (std::thread& caller : callers)
        caller.join();
    EXPECT_FALSE(overlapped);
    EXPECT_EQ(threads.size(), 1U);
    EXPECT_EQ(name, "owfin.stitching");
    EXPECT_EQ(stitcher.finalImage()->size().height(), 30 + 40 * 10);
}

} // namespace
