// Pixels of the screen and of windows, on the lane's desktop: with and without a compositor.
#include "x11/Capturing.h"
#include "x11/PaintedWindow.h"

#include "platform/x11/layout/WindowQuery.h"

#include <QPainter>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <map>
#include <set>
#include <thread>
#include <unistd.h>
#include <xcb/shape.h>

using namespace marrowfin;
using namespace marrowfin::platform;
using namespace marrowfin::test;
using namespace std::chrono_literals;

namespace {

const QByteArray here = qgetenv("DISPLAY");

// The part of a window's picture that its program drew, without the window manager's frame.
QImage clientPart(const QImage& picture, const PaintedWindow& window, const Window& listed) {
    return picture.copy(
        QRect(window.place().topLeft() - listed.frame.rect.topLeft().toPoint(), window.place().size()));
}

// The picture once it hasn't changed for a while.
Result<QImage> settledPicture(Eye& eye, std::uint32_t id) {
    Result<QImage> last = eye.window(id);
    for (int same = 0; last && same < 20;) {
        std::this_thread::sleep_for(10ms);
        Result<QImage> next = eye.window(id);
        same = next && *next == *last ? same + 1 : 0;
        last = std::move(next);
    }
    return last;
}

} // namespace

TEST(Region, HasThePixelsOfTheScreen) {
    const PaintedWindow window(here, {.rect = {120, 90, 400, 300}, .managed = false});
    window.waitUntilSeen();
    Eye eye(here);
    const auto picture = eye.region({150, 100, 200, 150});
    ASSERT_TRUE(picture) << picture.error().message.toStdString();
    EXPECT_EQ(picture->devicePixelRatio(), 1);
    EXPECT_EQ(differences(*picture, window.pattern().copy(30, 10, 200, 150)), 0);
}

TEST(Region, IsBlackOutsideTheRoot) {
    const PaintedWindow window(here, {.rect = {0, 0, 300, 200}, .managed = false});
    window.waitUntilSeen();
    Eye eye(here);
    const auto picture = eye.region({-40, -30, 100, 80});
    ASSERT_TRUE(picture);
    QImage expected(100, 80, QImage::Format_RGB32);
    expected.fill(Qt::black);
    for (int y = 0; y < 50; ++y) {
        for (int x = 0; x < 60; ++x)
            expected.setPixel(x + 40, y + 30, window.pattern().pixel(x, y));
    }
    EXPECT_EQ(differences(*picture, expected), 0);
    const auto nowhere = eye.region({-500, -500, 20, 20});
    ASSERT_TRUE(nowhere);
    EXPECT_EQ(nowhere->pixel(3, 3), qRgb(0, 0, 0));
}

TEST(Region, RefusesAnEmptyOne) {
    Eye eye(here);
    EXPECT_FALSE(eye.region({10, 10, 0, 20}));
}

TEST(Cursor, IsDrawnWhereItPoints) {
    const PaintedWindow window(here, {.rect = {100, 100, 300, 300}, .managed = false});
    window.waitUntilSeen();
    const auto connection = *x11::Connection::open(here);
    connection->check(
        xcb_warp_pointer_checked(connection->raw(), 0, connection->root(), 0, 0, 0, 0, 200, 180));
    Eye eye(here);
    const QRect area(100, 100, 300, 300);
    const auto without = eye.region(area, false);
    const auto with = eye.region(area, true);
    ASSERT_TRUE(with && without);
    EXPECT_EQ(differences(*without, window.pattern()), 0);
    x11::Grabber grabber(*connection, x11::SegmentPool::Reuse::No);
    const x11::CursorPicture cursor = grabber.cursor();
    ASSERT_FALSE(cursor.pixels.isNull());
    EXPECT_TRUE(cursor.rect().adjusted(-1, -1, 1, 1).contains(200, 180));
    int drawn = 0;
    for (int y = 0; y < 300; ++y) {
        for (int x = 0; x < 300; ++x) {
            const bool differs = with->pixel(x, y) != without->pixel(x, y);
            drawn += differs ? 1 : 0;
            EXPECT_TRUE(!differs || cursor.rect().contains(x + 100, y + 100)) << x << " " << y;
        }
    }
    EXPECT_GT(drawn, 10);
}

TEST(CoveredWindow, ComesOutWholeWithItsFrame) {
    PaintedWindow window(here, {.rect = {200, 150, 320, 240}, .seed = 3});
    window.raise();
    Eye eye(here);
    const auto listed = eye.find(window.id());
    ASSERT_TRUE(listed);
    // The window manager paints the frame in its own time.
    const auto open = settledPicture(eye, window.id());
    ASSERT_TRUE(open) << open.error().message.toStdString();
    EXPECT_EQ(QSizeF(open->size()), listed->frame.rect.size());
    EXPECT_EQ(differences(clientPart(*open, window, *listed), window.pattern()), 0);

    const PaintedWindow cover(here, {.rect = {260, 100, 500, 250}, .seed = 9, .managed = false});
    const auto covered = eye.window(window.id());
    ASSERT_TRUE(covered) << covered.error().message.toStdString();
    EXPECT_EQ(differences(*covered, *open), 0);
}

TEST(CoveredWindow, ComesOutWholeWhenItsProgramIsSlow) {
    const PaintedWindow window(here, {.rect = {200, 150, 320, 240}, .seed = 4, .delay = 150ms});
    const PaintedWindow cover(here, {.rect = {180, 100, 500, 400}, .seed = 9, .managed = false});
    Eye eye(here);
    const auto listed = eye.find(window.id());
    ASSERT_TRUE(listed);
    const auto picture = eye.window(window.id());
    ASSERT_TRUE(picture);
    EXPECT_EQ(differences(clientPart(*picture, window, *listed), window.pattern()), 0);
}

TEST(CoveredWindow, OfAProgramThatHangsStillGivesAPicture) {
    // It paints once, and then not within any patience.
    PaintedWindow window(here,
                         {.rect = {200, 150, 320, 240}, .seed = 4, .managed = false, .answersPings = false});
    const PaintedWindow cover(here, {.rect = {180, 100, 500, 400}, .seed = 9, .managed = false});
    Eye eye(here);
    const auto picture = eye.window(window.id());
    ASSERT_TRUE(picture);
    EXPECT_EQ(differences(*picture, window.pattern()), 0);
}

TEST(CoveredWindow, IsTakenManyTimesWithoutATraceOfTheCover) {
    const PaintedWindow window(here, {.rect = {300, 200, 260, 200}, .seed = 5, .managed = false});
    const PaintedWindow cover(here, {.rect = {200, 100, 300, 260}, .seed = 6, .managed = false});
    Eye eye(here);
    for (int i = 0; i < 20; ++i) {
        const auto picture = eye.window(window.id());
        ASSERT_TRUE(picture);
        ASSERT_EQ(differences(*picture, window.pattern()), 0) << "capture " << i;
    }
}

TEST(OffscreenWindow, ComesOutWholeThoughPartIsBeyondTheEdge) {
    const PaintedWindow window(here, {.rect = {-100, 300, 320, 240}, .seed = 7, .managed = false});
    Eye eye(here);
    const auto picture = eye.window(window.id());
    ASSERT_TRUE(picture);
    EXPECT_EQ(differences(*picture, window.pattern()), 0);
}

TEST(TranslucentWindow, KeepsItsAlphaWhereThereIsACompositor) {
    const PaintedWindow window(here,
                               {.rect = {300, 200, 200, 100}, .seed = 2, .depth = 32, .managed = false});
    const PaintedWindow cover(here, {.rect = {250, 100, 300, 260}, .seed = 6, .managed = false});
    Eye eye(here);
    const auto picture = eye.window(window.id());
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->format(), QImage::Format_ARGB32_Premultiplied);
    EXPECT_EQ(differences(*picture, window.pattern()), 0);
}

TEST(ShapedWindow, IsTransparentWhereItsCornersAreCutOff) {
    PaintedWindow window(here, {.rect = {200, 150, 320, 240}, .seed = 5, .managed = false});
    window.waitUntilSeen();
    const auto c = *x11::Connection::open(here);
    const xcb_rectangle_t parts[] = {{4, 0, 312, 2}, {0, 2, 320, 238}};
    c->check(xcb_shape_rectangles_checked(c->raw(), XCB_SHAPE_SO_SET, XCB_SHAPE_SK_BOUNDING,
                                          XCB_CLIP_ORDERING_UNSORTED, window.id(), 0, 0, 2, parts));
    Eye eye(here);
    const auto picture = settledPicture(eye, window.id());
    ASSERT_TRUE(picture) << picture.error().message.toStdString();
    QImage expected = window.pattern().convertToFormat(QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < 2; ++y)
        for (int x = 0; x < 4; ++x) {
            expected.setPixel(x, y, 0);
            expected.setPixel(319 - x, y, 0);
        }
    EXPECT_TRUE(*picture == expected);
}

TEST(ShapedWindow, OfVeryManyPartsComesOutPixelByPixel) {
    const QSize size(600, 600);
    PaintedWindow window(here, {.rect = {{200, 150}, size}, .seed = 5, .managed = false});
    const auto c = *x11::Connection::open(here);
    // Every second pixel: 180,000 parts, in pieces that fit into a request.
    constexpr int rowsAtOnce = 50;
    for (int top = 0; top < size.height(); top += rowsAtOnce) {
        std::vector<xcb_rectangle_t> parts;
        for (int y = top; y < top + rowsAtOnce; ++y)
            for (int x = y % 2; x < size.width(); x += 2)
                parts.push_back({static_cast<std::int16_t>(x), static_cast<std::int16_t>(y), 1, 1});
        ASSERT_EQ(c->check(xcb_shape_rectangles_checked(
                      c->raw(), top == 0 ? XCB_SHAPE_SO_SET : XCB_SHAPE_SO_UNION, XCB_SHAPE_SK_BOUNDING,
                      XCB_CLIP_ORDERING_YX_BANDED, window.id(), 0, 0,
                      static_cast<std::uint32_t>(parts.size()), parts.data())),
                  0);
    }
    Eye eye(here);
    const auto picture = eye.window(window.id());
    ASSERT_TRUE(picture) << picture.error().message.toStdString();
    ASSERT_EQ(picture->size(), size);
    int wrong = 0;
    for (int y = 0; y < size.height(); ++y)
        for (int x = 0; x < size.width(); ++x)
            wrong += (qAlpha(picture->pixel(x, y)) == 255) != (x % 2 == y % 2);
    EXPECT_EQ(wrong, 0);
}

TEST(ClosedWindow, IsAPlainSentence) {
    auto window =
        std::make_unique<PaintedWindow>(here, WindowLook{.rect = {300, 200, 200, 100}, .managed = false});
    const auto id = window->id();
    window.reset();
    Eye eye(here);
    const auto picture = eye.window(id);
    ASSERT_FALSE(picture);
    EXPECT_EQ(picture.error().message, QStringLiteral("The window is gone."));
}

TEST(WindowList, IsFrontToBackWithFramesAndProcesses) {
    PaintedWindow back(here, {.rect = {200, 150, 320, 240}, .seed = 3, .tellsProcess = false});
    PaintedWindow front(here, {.rect = {300, 200, 320, 240}, .seed = 4});
    Eye eye(here);
    const auto content = eye.content();
    ASSERT_TRUE(content);
    std::vector<std::uint32_t> ids;
    for (const Window& window : content->windows)
        ids.push_back(window.windowID);
    const auto frontAt = std::find(ids.begin(), ids.end(), front.id());
    const auto backAt = std::find(ids.begin(), ids.end(), back.id());
    ASSERT_NE(frontAt, ids.end());
    ASSERT_NE(backAt, ids.end());
    EXPECT_LT(frontAt - ids.begin(), backAt - ids.begin());
    for (const auto& id : {front.id(), back.id()}) {
        const auto listed = eye.find(id);
        EXPECT_EQ(listed->ownerPID, ::getpid());
        EXPECT_EQ(listed->title, QStringLiteral("painted"));
    }
    EXPECT_TRUE(containsRect(eye.find(front.id())->frame.rect, QRectF(front.place())));
}

TEST(WindowList, LeavesDocksOut) {
    const PaintedWindow dock(here,
                             {.rect = {0, 0, 400, 30}, .strut = {0, 0, 30, 0, 0, 0, 0, 0, 0, 399, 0, 0}});
    Eye eye(here);
    EXPECT_FALSE(eye.find(dock.id()));
}

TEST(Stream, GivesEveryChangeAndThenTellsThatItIsStill) {
    const QRect area(100, 100, 200, 200);
    PaintedWindow window(here, {.rect = area, .seed = 1, .managed = false});
    window.waitUntilSeen();
    Eye eye(here);
    Recorder recorder(*eye.source, DisplayFilter{1}, part(area));
    const auto first = recorder.next(FrameStatus::Complete);
    ASSERT_TRUE(first);
    EXPECT_EQ(differences(first->pixels, window.pattern()), 0);
    ASSERT_TRUE(recorder.next(FrameStatus::Idle));
    for (std::uint32_t seed = 10; seed < 14; ++seed) {
        window.repaint(seed);
        // A picture may be taken in the middle of the repaint; the last one is whole.
        const auto latest = recorder.nextShowing(window.pattern());
        ASSERT_TRUE(latest) << seed;
        EXPECT_GT(latest->timestampNanoseconds, first->timestampNanoseconds);
        ASSERT_TRUE(recorder.next(FrameStatus::Idle));
    }
    recorder.stop();
    const std::size_t atStop = recorder.count();
    window.repaint(20);
    window.waitUntilSeen();
    EXPECT_EQ(recorder.count(), atStop);
}

TEST(Stream, NoticesThePointerWhenTheCursorIsShown) {
    const QRect area(100, 100, 200, 200);
    const PaintedWindow window(here, {.rect = area, .seed = 1, .managed = false});
    window.waitUntilSeen();
    const auto connection = *x11::Connection::open(here);
    const auto point = [&](int x, int y) {
        connection->check(xcb_warp_pointer_checked(connection->raw(), 0, connection->root(), 0, 0, 0, 0,
                                                   static_cast<std::int16_t>(x),
                                                   static_cast<std::int16_t>(y)));
    };
    point(600, 600);
    Eye eye(here);
    Recorder recorder(*eye.source, DisplayFilter{1}, part(area, true));
    ASSERT_TRUE(recorder.nextShowing(window.pattern()));
    ASSERT_TRUE(recorder.next(FrameStatus::Idle));
    point(200, 200);
    const auto moved = recorder.next(FrameStatus::Complete);
    ASSERT_TRUE(moved);
    EXPECT_GT(differences(moved->pixels, window.pattern()), 0);
    point(600, 600);
    EXPECT_TRUE(recorder.nextShowing(window.pattern()));
}

// What the taker of the frames would have if it copied only what each frame says is new.
TEST(Stream, TellsAllThatChangedSinceTheFrameBefore) {
    const QRect area(100, 100, 200, 200);
    PaintedWindow whole(here, {.rect = area, .seed = 1, .managed = false});
    PaintedWindow part(here, {.rect = {160, 160, 40, 30}, .seed = 2, .managed = false});
    part.waitUntilSeen();
    Eye eye(here);
    Recorder recorder(*eye.source, DisplayFilter{1}, test::part(area, true));
    const auto first = recorder.next(FrameStatus::Complete);
    ASSERT_TRUE(first);
    EXPECT_EQ(first->damage, QRegion(0, 0, 200, 200));
    EXPECT_EQ(first->format, PixelFormat::Opaque);
    QImage kept = first->pixels.copy();
    bool wasSmall = false;
    for (std::uint32_t seed = 10; seed < 14; ++seed) {
        ASSERT_TRUE(recorder.next(FrameStatus::Idle));
        part.repaint(seed);
        for (;;) {
            const auto frame = recorder.next(FrameStatus::Complete);
            ASSERT_TRUE(frame) << seed;
            QPainter painter(&kept);
            painter.setClipRegion(frame->damage);
            painter.drawImage(0, 0, frame->pixels);
            painter.end();
            ASSERT_EQ(differences(kept, frame->pixels), 0) << seed;
            wasSmall = wasSmall || frame->damage.boundingRect() == QRect(60, 60, 40, 30);
            if (frame->pixels.copy(60, 60, 40, 30) == part.pattern())
                break;
        }
    }
    EXPECT_TRUE(wasSmall) << "no frame told that only a part had changed";
}

TEST(Stream, UsesTheMemoryOfFramesAgainThatNobodyHolds) {
    const QRect area(100, 100, 200, 200);
    PaintedWindow window(here, {.rect = area, .seed = 1, .managed = false});
    window.waitUntilSeen();
    Eye eye(here);
    std::mutex lock;
    std::condition_variable arrived;
    std::vector<const uchar*> memory;
    const auto stream = eye.source->makeStream(DisplayFilter{1}, part(area));
    ASSERT_TRUE(stream->addOutput(OutputType::Screen,
                                  std::make_shared<SerialQueue>(QStringLiteral("test.samples")),
                                  [&](const Frame& frame, OutputType) {
                                      if (frame.status != FrameStatus::Complete)
                                          return;
                                      const std::lock_guard hold(lock);
                                      memory.push_back(frame.pixels.constBits());
                                      arrived.notify_all();
                                  }));
    stream->startCapture();
    for (std::uint32_t seed = 2; seed < 22; ++seed) {
        std::unique_lock hold(lock);
        const std::size_t before = memory.size();
        window.repaint(seed);
        ASSERT_TRUE(arrived.wait_for(hold, 20s, [&] { return memory.size() > before; }));
    }
    waitFor(stream->stopCapture());
    // The first frame has memory of its own; after it the stream needs no more than may be on their way.
    const std::set<const uchar*> places(memory.begin() + 1, memory.end());
    EXPECT_LE(places.size(), 4u);
}

TEST(Stream, KeepsTheLeastTimeBetweenTwoFrames) {
    const QRect area(100, 100, 200, 200);
    PaintedWindow window(here, {.rect = area, .seed = 1, .managed = false});
    window.waitUntilSeen();
    Eye eye(here);
    StreamConfiguration configuration = part(area);
    configuration.minimumFrameInterval = 200ms;
    Recorder recorder(*eye.source, DisplayFilter{1}, configuration);
    ASSERT_TRUE(recorder.next(FrameStatus::Idle)); // the stream's own loop runs
    std::vector<std::int64_t> times;
    for (std::uint32_t seed = 2; seed < 6; ++seed) {
        window.repaint(seed);
        const auto frame = recorder.next(FrameStatus::Complete);
        ASSERT_TRUE(frame);
        times.push_back(frame->timestampNanoseconds);
    }
    for (std::size_t i = 1; i < times.size(); ++i)
        EXPECT_GE(times[i] - times[i - 1], 200'000'000);
}

TEST(Stream, TellsOnceThatItsWindowClosed) {
    auto window = std::make_unique<PaintedWindow>(
        here, WindowLook{.rect = {100, 100, 200, 200}, .seed = 1, .managed = false});
    Eye eye(here);
    StreamConfiguration configuration;
    configuration.showsCursor = false;
    Recorder recorder(*eye.source, WindowFilter{window->id()}, configuration);
    ASSERT_TRUE(recorder.nextShowing(window->pattern()));
    ASSERT_TRUE(recorder.next(FrameStatus::Idle));
    window.reset();
    const auto told = recorder.ended();
    ASSERT_TRUE(told);
    EXPECT_TRUE(told->has_value());
    recorder.stop(); // after its end, too
    EXPECT_EQ(recorder.endingCount(), 1u);
}

TEST(Stream, ThatWasStoppedTellsNoEnd) {
    const PaintedWindow window(here, {.rect = {100, 100, 200, 200}, .seed = 1, .managed = false});
    Eye eye(here);
    Recorder recorder(*eye.source, DisplayFilter{1}, part({100, 100, 200, 200}));
    ASSERT_TRUE(recorder.next(FrameStatus::Idle));
    recorder.stop();
    EXPECT_EQ(recorder.endingCount(), 0u);
}

TEST(Stream, OfAWindowShowsItWholeAndFollowsIt) {
    PaintedWindow window(here, {.rect = {100, 100, 200, 200}, .seed = 1, .managed = false});
    const PaintedWindow cover(here, {.rect = {150, 120, 300, 200}, .seed = 2, .managed = false});
    Eye eye(here);
    StreamConfiguration configuration;
    configuration.showsCursor = false;
    Recorder recorder(*eye.source, WindowFilter{window.id()}, configuration);
    ASSERT_TRUE(recorder.nextShowing(window.pattern()));
    window.repaint(5);
    EXPECT_TRUE(recorder.nextShowing(window.pattern()));
}

TEST(Stream, OfAStillScreenWakesNobody) {
    const PaintedWindow window(here, {.rect = {100, 100, 200, 200}, .seed = 1, .managed = false});
    window.waitUntilSeen();
    Eye eye(here);
    Recorder recorder(*eye.source, DisplayFilter{1}, part({100, 100, 200, 200}));
    ASSERT_TRUE(recorder.next(FrameStatus::Idle));
    // The window is what this measures, not a wait for something: a second without a wake-up of any thread.
    const auto switches = [] {
        std::map<std::string, std::string> found;
        for (const auto& task : std::filesystem::directory_iterator("/proc/self/task")) {
            std::ifstream status(task.path() / "status");
            for (std::string line; std::getline(status, line);) {
                if (line.starts_with("voluntary_ctxt_switches"))
                    found[task.path().filename()] = line;
            }
        }
        found.erase(std::to_string(::gettid())); // this thread
        return found;
    };
    bool quiet = false;
    for (int second = 0; second < 10 && !quiet; ++second) { // others may still be drawing on this screen
        const auto before = switches();
        std::this_thread::sleep_for(1s);
        quiet = before == switches();
    }
    EXPECT_TRUE(quiet);
}
