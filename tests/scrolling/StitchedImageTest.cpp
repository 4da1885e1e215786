// What the pieces amount to: the same picture as if every join had made a new one, and no more memory than
// that.
#include "scrolling/StitchingManager.h"

#include "scrolling/BandedPage.h"
#include "scrolling/PlainStitcher.h"

#include <gtest/gtest.h>
#include <random>

using namespace marrowfin;
using namespace marrowfin::scrolling;
using imaging::Image;
using namespace marrowfin::testsupport;

namespace {

struct Script {
    int moved = 0;
    int still = 0;
};

StitchingManager stitcherAfter(const Script& script, StitchingManager::FixedRows fixedRows) {
    return StitchingManager(fixedRows, [&script](const QImage&, const QImage&) {
        return Result<std::optional<Movement>>(Movement{script.moved, script.still, 0});
    });
}

QImage noise(int width, int height, std::mt19937& random) {
    QImage pixels(width, height, QImage::Format_RGB32);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            pixels.setPixel(x, y, random() | 0xff000000U);
    return pixels;
}

// A session of frames that are noise, mostly all of one size and density.
class RandomSession {
public:
    RandomSession(unsigned seed, StitchingManager::FixedRows fixedRows)
        : fixedRows(fixedRows), steady(seed % 2 == 0), random(seed), density(1 + within(0, 2) * 0.5),
          first(frame({24, 40}, density)), stitcher(stitcherAfter(script, fixedRows)), plain(first),
          before(first.pixels().height() / first.size().height()) {
        stitcher.begin(first);
    }

    void join() {
        const bool fixed = fixedRows == StitchingManager::FixedRows::Once;
        script = {within(0, 1) == 0 ? within(10, 39) : -within(10, 39), fixed ? within(0, 7) : 0};
        const bool odd = !steady && !fixed && within(0, 2) == 0;
        const double itsDensity = odd ? 1 + within(0, 4) * 0.25 : density;
        const Image next =
            odd ? frame({within(10, 30), within(20, 90)}, itsDensity) : frame({24, 40}, density);
        ASSERT_TRUE(stitcher.addImage(next));
        plain.join(next, script.moved / before, script.still);
        before = next.pixels().height() / next.size().height();
    }
    void compare() {
        ASSERT_EQ(stitcher.finalImage()->size(), plain.size);
        ASSERT_EQ(stitcher.finalImage()->pixels().convertToFormat(plain.pixels.format()),
                  plain.pixels.convertToFormat(plain.pixels.format()));
    }
    int within(int least, int most) {
        return least + static_cast<int>(random() % static_cast<unsigned>(most - least + 1));
    }

private:
    Image frame(QSize size, double itsDensity) {
        return Image::withSize(noise(size.width(), size.height(), random), QSizeF(size) / itsDensity);
    }

    StitchingManager::FixedRows fixedRows;
    bool steady;
    std::mt19937 random;
    double density;
    Script script;
    Image first;
    StitchingManager stitcher;
    PlainStitcher plain;
    double before;
};

TEST(StitchedImage, isAsIfEveryJoinMadeANewOne) {
    for (unsigned seed = 0; seed < 40; ++seed) {
        SCOPED_TRACE(seed);
        RandomSession session(seed, seed % 4 == 0 ? StitchingManager::FixedRows::Once
                                                  : StitchingManager::FixedRows::InEveryFrame);
        for (int join = 0; join < 12; ++join) {
            ASSERT_NO_FATAL_FAILURE(session.join());
            if (session.within(0, 2) == 0) {
                ASSERT_NO_FATAL_FAILURE(session.compare());
            }
        }
        ASSERT_NO_FATAL_FAILURE(session.compare());
    }
}

TEST(StitchedImage, whatWasAnsweredNeverChanges) {
    const QImage page = markedPage(200, 600);
    StitchingManager stitcher;
    stitcher.begin(frameAt(page, 0, 300));
    ASSERT_TRUE(stitcher.addImage(frameAt(page, 100, 300)));
    const Image early = *stitcher.finalImage();
    EXPECT_EQ(stitcher.finalImage(), early) << "put together once";
    ASSERT_TRUE(stitcher.addImage(frameAt(page, 200, 300)));
    const Image late = *stitcher.finalImage();
    EXPECT_FALSE(late == early);
    EXPECT_EQ(early.pixels(), cut(page, 0, 400));
    EXPECT_EQ(late.pixels(), cut(page, 0, 500));
}

TEST(StitchedImage, staysOpaque) {
    const QImage page = bandedPage(200, 600);
    StitchingManager stitcher;
    stitcher.begin(frameAt(page, 0, 300));
    ASSERT_TRUE(stitcher.addImage(frameAt(page, 100, 300)));
    EXPECT_EQ(stitcher.finalImage()->pixels().format(), QImage::Format_RGB32);
}

TEST(StitchedImage, opaquePixelsStayOpaqueBesideOthers) {
    QImage first = bandedPage(40, 30);
    for (int x = 0; x < 40; ++x) // what a display leaves in the unused byte
        reinterpret_cast<QRgb*>(first.scanLine(0))[x] &= 0x00ffffffU;
    QImage second(40, 30, QImage::Format_ARGB32_Premultiplied);
    second.fill(QColor(10, 20, 30));
    Script script{10, 0};
    StitchingManager stitcher = stitcherAfter(script, StitchingManager::FixedRows::InEveryFrame);
    stitcher.begin(Image::captured(first));
    ASSERT_TRUE(stitcher.addImage(Image::captured(second)));
    const QImage pixels = stitcher.finalImage()->pixels();
    EXPECT_EQ(qAlpha(pixels.pixel(0, 0)), 255);
    EXPECT_EQ(pixels.pixel(0, 39), qRgb(10, 20, 30));
}

TEST(StitchedImage, rowsThatNoFrameCoversAreClear) {
    Script script{50, 0};
    StitchingManager stitcher = stitcherAfter(script, StitchingManager::FixedRows::InEveryFrame);
    stitcher.begin(frameAt(bandedPage(40, 60), 0, 60));
    ASSERT_TRUE(stitcher.addImage(frameAt(bandedPage(40, 60), 0, 30)));
    const QImage pixels = stitcher.finalImage()->pixels();
    EXPECT_EQ(pixels.height(), 110);
    EXPECT_EQ(qAlpha(pixels.pixel(5, 59)), 255);
    EXPECT_EQ(qAlpha(pixels.pixel(5, 60)), 0);
    EXPECT_EQ(qAlpha(pixels.pixel(5, 79)), 0);
    EXPECT_EQ(qAlpha(pixels.pixel(5, 80)), 255);
}

// Frames whose pixels tell when they are freed.
struct CountedFrames {
    int alive = 0;
    Image make(int width, int height) {
        auto* bytes = new std::vector<uchar>(static_cast<size_t>(width * height * 4), 200);
        auto* held = new std::pair<CountedFrames*, std::vector<uchar>*>(this, bytes);
        ++alive;
        const auto freed = [](void* info) {
            auto* pair = static_cast<std::pair<CountedFrames*, std::vector<uchar>*>*>(info);
            --pair->first->alive;
            delete pair->second;
            delete pair;
        };
        return Image::captured(QImage(bytes->data(), width, height, QImage::Format_RGB32, freed, held));
    }
};

TEST(StitchedImage, onlyTheLastFrameIsKeptWhole) {
    CountedFrames frames;
    Script script{20, 0};
    {
        StitchingManager stitcher = stitcherAfter(script, StitchingManager::FixedRows::InEveryFrame);
        stitcher.begin(frames.make(50, 60));
        for (int i = 0; i < 20; ++i) {
            ASSERT_TRUE(stitcher.addImage(frames.make(50, 60)));
            EXPECT_EQ(frames.alive, 1);
            if (i == 10) {
                EXPECT_EQ(stitcher.finalImage()->pixels().height(), 60 + 20 * (i + 1));
            }
        }
    }
    EXPECT_EQ(frames.alive, 0);
}

} // namespace
