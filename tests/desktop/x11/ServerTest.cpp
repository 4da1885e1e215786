// Servers that lack something, have other pixels, or go away.
#include "x11/Capturing.h"
#include "x11/PaintedWindow.h"
#include "x11/TestServer.h"

#include <gmock/gmock.h>

using namespace marrowfin;
using namespace marrowfin::platform;
using namespace marrowfin::test;

namespace {

void expectRegionAndWindow(const TestServer& server) {
    PaintedWindow window(server.display(), {.rect = {50, 40, 300, 200}, .seed = 2, .managed = false});
    Eye eye(server.display());
    const auto region = eye.region({60, 50, 100, 80});
    ASSERT_TRUE(region) << region.error().message.toStdString();
    EXPECT_EQ(differences(*region, window.pattern().copy(10, 10, 100, 80)), 0);
    const auto picture = eye.window(window.id());
    ASSERT_TRUE(picture) << picture.error().message.toStdString();
    EXPECT_EQ(differences(*picture, window.pattern()), 0);
}

void expectChangesInStream(const TestServer& server) {
    PaintedWindow window(server.display(), {.rect = {50, 40, 300, 200}, .seed = 2, .managed = false});
    Eye eye(server.display());
    Recorder recorder(*eye.source, DisplayFilter{1}, part({50, 40, 300, 200}));
    ASSERT_TRUE(recorder.next(FrameStatus::Idle));
    window.repaint(8);
    EXPECT_TRUE(recorder.nextShowing(window.pattern()));
}

} // namespace

TEST(Server, WithoutSharedMemoryGivesTheSamePixels) {
    const TestServer server({QStringLiteral("-extension"), QStringLiteral("MIT-SHM")});
    expectRegionAndWindow(server);
}

TEST(Server, WithoutCompositeGivesTheSamePixelsOfAnOpenWindow) {
    const TestServer server({QStringLiteral("-extension"), QStringLiteral("Composite")});
    expectRegionAndWindow(server);
}

TEST(Server, WithoutCompositeLeavesOutWhatIsCoveredOfAWindow) {
    const TestServer server({QStringLiteral("-extension"), QStringLiteral("Composite")});
    const PaintedWindow window(server.display(), {.rect = {50, 40, 300, 200}, .seed = 2, .managed = false});
    const PaintedWindow cover(server.display(), {.rect = {50, 40, 100, 200}, .seed = 3, .managed = false});
    Eye eye(server.display());
    const auto picture = eye.window(window.id());
    ASSERT_TRUE(picture);
    QImage nothing(100, 200, QImage::Format_ARGB32_Premultiplied);
    nothing.fill(Qt::transparent);
    EXPECT_EQ(picture->copy(0, 0, 100, 200), nothing);
    EXPECT_EQ(differences(picture->copy(100, 0, 200, 200).convertToFormat(QImage::Format_RGB32),
                          window.pattern().copy(100, 0, 200, 200)),
              0);
}

TEST(Server, WithoutDamageGivesTheSamePixelsAndChanges) {
    const TestServer server({QStringLiteral("-extension"), QStringLiteral("DAMAGE")});
    expectRegionAndWindow(server);
    expectChangesInStream(server);
}

TEST(Server, WithoutDamageStillTakesACoveredWindowWhole) {
    const TestServer server({QStringLiteral("-extension"), QStringLiteral("DAMAGE")});
    const PaintedWindow window(
        server.display(),
        {.rect = {50, 40, 300, 200}, .seed = 2, .managed = false, .delay = std::chrono::milliseconds(40)});
    const PaintedWindow cover(server.display(), {.rect = {50, 40, 100, 200}, .seed = 3, .managed = false});
    Eye eye(server.display());
    const auto picture = eye.window(window.id());
    ASSERT_TRUE(picture);
    EXPECT_EQ(differences(*picture, window.pattern()), 0);
}

TEST(Server, OneWindowThatTakesLongHoldsUpNothingElse) {
    const TestServer server({});
    // What is covered of it must be drawn first, for which it takes longer than it is waited for.
    const PaintedWindow window(
        server.display(),
        {.rect = {50, 40, 300, 200}, .seed = 2, .managed = false, .delay = std::chrono::seconds(4)});
    const PaintedWindow cover(server.display(), {.rect = {50, 40, 100, 200}, .seed = 3, .managed = false});
    Eye eye(server.display());
    StreamConfiguration configuration;
    configuration.showsCursor = false;
    Recorder recorder(*eye.source, WindowFilter{window.id()}, configuration);
    ASSERT_TRUE(eye.content());
    ASSERT_TRUE(eye.region({60, 50, 100, 80}));
    EXPECT_EQ(recorder.count(), 0U) << "the screen came before the window";
    EXPECT_TRUE(recorder.next(FrameStatus::Complete));
}

TEST(Server, WithoutAnyOfThemStillWorks) {
    QStringList without;
    for (const char* name : {"MIT-SHM", "Composite", "DAMAGE", "RANDR", "X-Resource"})
        without << QStringLiteral("-extension") << QString::fromLatin1(name);
    const TestServer server(without);
    expectRegionAndWindow(server);
    expectChangesInStream(server);
    PaintedWindow window(server.display(),
                         {.rect = {50, 40, 300, 200}, .managed = false, .tellsProcess = false});
    Eye eye(server.display());
    const auto listed = eye.find(window.id());
    ASSERT_TRUE(listed);
    EXPECT_FALSE(listed->ownerPID);
}

// Of 5 and 6 bits a channel, or of 10: the nearest colour.
class PixelDepth : public testing::TestWithParam<std::pair<const char*, int>> {};

TEST_P(PixelDepth, GivesTheColoursOfTheScreen) {
    const auto [screen, tolerance] = GetParam();
    const TestServer server({}, screen);
    const auto connection = *x11::Connection::open(server.display());
    xcb_connection_t* c = connection->raw();
    const auto named =
        connection->reply(xcb_alloc_color_reply, xcb_alloc_color(c, connection->screen().default_colormap,
                                                                 200 * 257, 100 * 257, 50 * 257));
    ASSERT_TRUE(named);
    const xcb_gcontext_t context = xcb_generate_id(c);
    const std::uint32_t values[] = {named->pixel, XCB_SUBWINDOW_MODE_INCLUDE_INFERIORS};
    xcb_create_gc(c, context, connection->root(), XCB_GC_FOREGROUND | XCB_GC_SUBWINDOW_MODE, values);
    const xcb_rectangle_t area{0, 0, 100, 100};
    connection->check(xcb_poly_fill_rectangle_checked(c, connection->root(), context, 1, &area));
    Eye eye(server.display());
    const auto picture = eye.region({0, 0, 101, 50});
    ASSERT_TRUE(picture);
    const QColor color = picture->pixelColor(37, 20);
    EXPECT_NEAR(color.red(), 200, tolerance);
    EXPECT_NEAR(color.green(), 100, tolerance);
    EXPECT_NEAR(color.blue(), 50, tolerance);
    EXPECT_EQ(picture->pixelColor(100, 20), QColor(Qt::black));
}

INSTANTIATE_TEST_SUITE_P(Server, PixelDepth,
                         testing::Values(std::pair{"640x480x16", 4}, std::pair{"640x480x24", 0},
                                         std::pair{"640x480x30", 1}));

TEST(Server, ThatGoesAwayIsAnErrorAndNoHang) {
    TestServer server({});
    Eye eye(server.display());
    ASSERT_TRUE(eye.content());
    server.kill();
    const auto content = eye.content();
    ASSERT_FALSE(content);
    EXPECT_FALSE(content.error().message.isEmpty());
    EXPECT_FALSE(eye.region({0, 0, 10, 10}));
    EXPECT_FALSE(eye.window(1));
}

TEST(Server, ThatGoesAwayEndsAStream) {
    TestServer server({});
    Eye eye(server.display());
    Recorder recorder(*eye.source, DisplayFilter{1}, part({0, 0, 100, 100}, true));
    ASSERT_TRUE(recorder.next(FrameStatus::Idle));
    server.kill();
    recorder.stop();
}

TEST(Server, WithoutXFixesGivesTheSamePixels) {
    const TestServer server({QStringLiteral("-extension"), QStringLiteral("XFIXES")});
    Eye eye(server.display());
    const auto region = eye.region({60, 50, 100, 80}, true);
    ASSERT_TRUE(region) << region.error().message.toStdString();
    EXPECT_EQ(region->size(), QSize(100, 80));
}
