// Screens, struts and the pointer, as the lane's desktop has them: one monitor, two, or scale 2.
#include "platform/x11/X11Backend.h"
#include "platform/x11/layout/X11Screens.h"
#include "x11/Capturing.h"
#include "x11/PaintedWindow.h"

#include <QCoreApplication>
#include <QCursor>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QScreen>
#include <gmock/gmock.h>

using namespace marrowfin;
using namespace marrowfin::platform;
using namespace marrowfin::test;

namespace {

const QByteArray here = qgetenv("DISPLAY");

class ScreensTest : public testing::Test {
protected:
    void SetUp() override { remake(); }
    void remake() {
        backend.reset(); // there is one at a time
        backend = *x11::X11Backend::make();
    }

    template <class Condition>
    bool eventually(Condition condition) {
        QElapsedTimer patience;
        patience.start();
        while (!condition()) {
            if (patience.elapsed() > 10000)
                return false;
            QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
        }
        return true;
    }
    bool isManaged() {
        const x11::Connection& c = backend->connection();
        return !c.property32(c.root(), c.atom(x11::Atom::NetSupportingWmCheck), XCB_ATOM_WINDOW).empty();
    }
    void point(int x, int y) {
        xcb_connection_t* c = backend->connection().raw();
        backend->connection().check(xcb_warp_pointer_checked(c, 0, backend->connection().root(), 0, 0, 0, 0,
                                                             static_cast<std::int16_t>(x),
                                                             static_cast<std::int16_t>(y)));
    }

    std::unique_ptr<x11::X11Backend> backend;
};

} // namespace

TEST_F(ScreensTest, HaveThePrimaryFirstAtTheOrigin) {
    const std::vector<Screen> screens = backend->screens().screens();
    ASSERT_EQ(screens.size(), static_cast<std::size_t>(QGuiApplication::screens().size()));
    const QScreen* primary = QGuiApplication::primaryScreen();
    EXPECT_EQ(screens.front().name, primary->name());
    EXPECT_EQ(screens.front().frame.rect, QRectF(QPointF(0, 0), QSizeF(primary->geometry().size())));
    EXPECT_DOUBLE_EQ(screens.front().backingScaleFactor, primary->devicePixelRatio());
    EXPECT_DOUBLE_EQ(backend->screens().primaryHeight(), primary->geometry().height());
}

TEST_F(ScreensTest, AndDisplaysAreTheSame) {
    const std::vector<Screen> screens = backend->screens().screens();
    const auto content = waitFor(backend->screenSource().content());
    ASSERT_TRUE(content);
    ASSERT_EQ(content->displays.size(), screens.size());
    const double height = backend->screens().primaryHeight();
    for (std::size_t i = 0; i < screens.size(); ++i) {
        EXPECT_EQ(content->displays[i].displayID, screens[i].displayID);
        EXPECT_EQ(content->displays[i].frame, toScreen(screens[i].frame, height));
        EXPECT_DOUBLE_EQ(static_cast<double>(content->displays[i].pixelWidth) /
                             content->displays[i].modeWidth,
                         screens[i].backingScaleFactor);
    }
}

TEST_F(ScreensTest, TellWhereThePointerIs) {
    const Screen last = backend->screens().screens().back();
    const auto& displays = backend->nativeScreens().layout().displays();
    const QPoint native = displays.back().native.topLeft() + QPoint(100, 60);
    point(native.x(), native.y());
    const auto pointer = waitFor(backend->screens().pointerLocation());
    ASSERT_TRUE(pointer);
    const double scale = last.backingScaleFactor;
    EXPECT_DOUBLE_EQ(pointer->point.x(), minX(last.frame.rect) + 100 / scale);
    EXPECT_DOUBLE_EQ(pointer->point.y(), maxY(last.frame.rect) - 60 / scale);
}

TEST_F(ScreensTest, KeepTheirVisibleFrameClearOfPanels) {
    const x11::NativeDisplay display = backend->nativeScreens().layout().displays().front();
    const QRectF before = backend->screens().screens().front().visibleFrame.rect;
    int told = 0;
    QObject::connect(&backend->screens(), &Screens::changed, [&] { ++told; });
    const int thickness = 120;
    const auto right = static_cast<std::uint32_t>(display.native.right());
    {
        const PaintedWindow panel(here, {.rect = {0, 0, display.native.width(), thickness},
                                         .strut = {0, 0, thickness, 0, 0, 0, 0, 0, 0, right, 0, 0}});
        const double scale = display.scale();
        if (!isManaged()) // then nobody tells of it, until something else changes
            remake();
        EXPECT_TRUE(eventually([&] {
            const QRectF now = backend->screens().screens().front().visibleFrame.rect;
            return maxY(now) == backend->screens().primaryHeight() - thickness / scale &&
                   minX(now) == minX(before) && maxX(now) == maxX(before) && minY(now) == minY(before);
        }));
        EXPECT_TRUE(eventually([&] { return told > 0 || !isManaged(); }));
        if (backend->screens().screens().size() > 1) {
            const Screen other = backend->screens().screens().back();
            EXPECT_EQ(maxY(other.visibleFrame.rect), maxY(other.frame.rect));
        }
    }
    if (!isManaged())
        remake();
    EXPECT_TRUE(eventually([&] { return backend->screens().screens().front().visibleFrame.rect == before; }));
}

TEST_F(ScreensTest, HaveTheActiveWindowsScreenAsTheMainOne) {
    const auto displays = backend->nativeScreens().layout().displays();
    const auto& away = displays.back();
    const auto& pointed = displays.front();
    point(pointed.native.center().x(), pointed.native.center().y());
    PaintedWindow window(here, {.rect = QRect(away.native.topLeft() + QPoint(150, 150), QSize(200, 200))});
    // Without a window manager nobody says what is active: the pointer's screen it is.
    const bool managed = isManaged();
    if (managed) {
        xcb_client_message_event_t message{};
        message.response_type = XCB_CLIENT_MESSAGE;
        message.format = 32;
        message.window = window.id();
        message.type = backend->connection().atom(x11::Atom::NetActiveWindow);
        message.data.data32[0] = 2;
        backend->connection().check(
            xcb_send_event_checked(backend->connection().raw(), 0, backend->connection().root(),
                                   XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                                   reinterpret_cast<const char*>(&message)));
    }
    const std::uint32_t expected = managed ? away.id : pointed.id;
    EXPECT_TRUE(eventually([&] { return backend->screens().mainScreen()->displayID == expected; }));
}

TEST_F(ScreensTest, AreCapturedInTheirOwnPixels) {
    // A region in points of the last display: its pixels, at the display's own density.
    const x11::NativeDisplay display = backend->nativeScreens().layout().displays().back();
    const QRect native(display.native.topLeft() + QPoint(200, 160), QSize(300, 200));
    const PaintedWindow window(here, {.rect = native, .seed = 6, .managed = false});
    window.waitUntilSeen();
    const auto content = waitFor(backend->screenSource().content());
    ASSERT_TRUE(content);
    const platform::Display shown = content->displays.back();
    const double scale = static_cast<double>(shown.pixelWidth) / shown.modeWidth;
    StreamConfiguration configuration;
    configuration.sourceRect = QRectF(QPointF(200, 160) / scale, QSizeF(300, 200) / scale);
    configuration.width = 300;
    configuration.height = 200;
    configuration.showsCursor = false;
    auto board = std::make_shared<x11::LayoutBoard>();
    board->publish(backend->nativeScreens().layout());
    Eye eye(here, board);
    const auto frame = eye.frame(DisplayFilter{shown.displayID}, configuration);
    ASSERT_TRUE(frame);
    EXPECT_EQ(differences(frame->pixels, window.pattern()), 0);
}

TEST_F(ScreensTest, HoldWindowsInPoints) {
    const x11::NativeDisplay display = backend->nativeScreens().layout().displays().back();
    const QRect native(display.native.topLeft() + QPoint(200, 160), QSize(300, 200));
    const PaintedWindow window(here, {.rect = native, .seed = 6});
    const auto content = waitFor(backend->screenSource().content());
    ASSERT_TRUE(content);
    const platform::Display shown = content->displays.back();
    const double scale = static_cast<double>(shown.pixelWidth) / shown.modeWidth;
    for (const Window& listed : content->windows) {
        if (listed.windowID != window.id())
            continue;
        const QPointF client = QPointF(window.place().topLeft() - display.native.topLeft()) / scale;
        const QRectF expected =
            offset(QRectF(client, QSizeF(300, 200) / scale), minX(shown.frame.rect), minY(shown.frame.rect));
        EXPECT_TRUE(containsRect(listed.frame.rect, expected));
        EXPECT_LT(listed.frame.rect.width(), expected.width() + 60);
        return;
    }
    ADD_FAILURE() << "the window isn't listed";
}
