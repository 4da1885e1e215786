// A window manager that draws its decorations onto the screen, beside the windows' own pictures. The test
// plays it.
#include "x11/Capturing.h"
#include "x11/PaintedWindow.h"
#include "x11/TestServer.h"

#include <xcb/composite.h>

using namespace marrowfin;
using namespace marrowfin::test;
using x11::Atom;

namespace {

constexpr int titleHeight = 30;
constexpr QRect client(60, 90, 300, 200);
constexpr QRect frameRect(60, 90 - titleHeight, 300, 200 + titleHeight);
constexpr std::uint32_t titleColor = 0xFF20A040;
constexpr std::uint32_t foreign =
    0x00C01010; // what lies in the frame's picture where the title bar ought to be

class DecorationTest : public testing::Test {
protected:
    void SetUp() override {
        manager = *x11::Connection::open(server.display());
        xcb_connection_t* c = manager->raw();
        const xcb_window_t check = makeWindow(QRect(0, 0, 1, 1), 0);
        set(manager->root(), Atom::NetSupportingWmCheck, XCB_ATOM_WINDOW, {check});
        manager->check(xcb_change_property_checked(c, XCB_PROP_MODE_REPLACE, check,
                                                   manager->atom(Atom::NetWmName),
                                                   manager->atom(Atom::Utf8String), 8, 4, "KWin"));
        xcb_set_selection_owner(c, check, manager->intern("_NET_WM_CM_S0"), XCB_CURRENT_TIME);
        xcb_composite_redirect_subwindows(c, manager->root(), XCB_COMPOSITE_REDIRECT_AUTOMATIC);
        frame = makeWindow(frameRect, foreign);
        xcb_map_window(c, frame);
        window.emplace(server.display(), WindowLook{.rect = client, .seed = 4, .managed = false});
        set(window->id(), Atom::NetFrameExtents, XCB_ATOM_CARDINAL, {0, 0, titleHeight, 0});
        manager->check(xcb_reparent_window_checked(c, window->id(), frame, 0, titleHeight));
        window->waitUntilSeen();
    }

    xcb_window_t makeWindow(const QRect& rect, std::uint32_t color) {
        const xcb_window_t made = xcb_generate_id(manager->raw());
        const std::uint32_t values[] = {color, 1};
        manager->check(xcb_create_window_checked(
            manager->raw(), XCB_COPY_FROM_PARENT, made, manager->root(), static_cast<std::int16_t>(rect.x()),
            static_cast<std::int16_t>(rect.y()), static_cast<std::uint16_t>(rect.width()),
            static_cast<std::uint16_t>(rect.height()), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
            XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT, values));
        return made;
    }
    void set(xcb_window_t on, Atom name, xcb_atom_t type, const std::vector<std::uint32_t>& values) {
        manager->check(xcb_change_property_checked(manager->raw(), XCB_PROP_MODE_REPLACE, on,
                                                   manager->atom(name), type, 32,
                                                   static_cast<std::uint32_t>(values.size()), values.data()));
    }
    // Onto the screen, as a compositor does.
    void drawTitle() {
        const xcb_gcontext_t context = xcb_generate_id(manager->raw());
        const std::uint32_t values[] = {titleColor & 0xFFFFFF, XCB_SUBWINDOW_MODE_INCLUDE_INFERIORS};
        xcb_create_gc(manager->raw(), context, manager->root(), XCB_GC_FOREGROUND | XCB_GC_SUBWINDOW_MODE,
                      values);
        const xcb_rectangle_t area{static_cast<std::int16_t>(frameRect.x()),
                                   static_cast<std::int16_t>(frameRect.y()),
                                   static_cast<std::uint16_t>(frameRect.width()), titleHeight};
        manager->check(xcb_poly_fill_rectangle_checked(manager->raw(), manager->root(), context, 1, &area));
    }
    QImage captured() {
        Eye eye(server.display());
        const auto picture = eye.window(window->id());
        EXPECT_TRUE(picture);
        return picture ? *picture : QImage();
    }
    // The client's part, whatever stands around it.
    static QImage clientOf(const QImage& picture) {
        return picture.copy(0, titleHeight, client.width(), client.height());
    }

    TestServer server{{}};
    std::unique_ptr<x11::Connection> manager;
    std::optional<PaintedWindow> window;
    xcb_window_t frame = 0;
};

} // namespace

TEST_F(DecorationTest, OfAWindowInTheOpenIsAsTheScreenShowsIt) {
    drawTitle();
    const QImage picture = captured();
    ASSERT_EQ(picture.size(), frameRect.size());
    EXPECT_EQ(differences(clientOf(picture).convertToFormat(QImage::Format_RGB32), window->pattern()), 0);
    EXPECT_EQ(picture.pixel(150, 0), titleColor);
    EXPECT_EQ(picture.pixel(20, titleHeight - 1), titleColor);
    // Beyond the round corners there is what lies behind.
    EXPECT_EQ(picture.pixel(0, 0), 0U);
    EXPECT_EQ(picture.pixel(frameRect.width() - 1, 0), 0U);
}

TEST_F(DecorationTest, IsTransparentWhereAnotherWindowCoversIt) {
    drawTitle();
    const PaintedWindow cover(server.display(), {.rect = {200, 40, 400, 150}, .seed = 9, .managed = false});
    cover.waitUntilSeen();
    const QImage picture = captured();
    ASSERT_EQ(picture.size(), frameRect.size());
    EXPECT_EQ(differences(clientOf(picture).convertToFormat(QImage::Format_RGB32), window->pattern()), 0);
    for (int y = 0; y < titleHeight; ++y) {
        for (int x = 0; x < frameRect.width(); ++x) {
            const bool isCovered = x + frameRect.x() >= 200;
            const QRgb seen = picture.pixel(x, y);
            ASSERT_TRUE(seen == 0U || (!isCovered && seen == titleColor))
                << x << ' ' << y << ' ' << std::hex << seen;
        }
    }
    EXPECT_EQ(picture.pixel(100, 10), titleColor);
}

// With another program's compositor the decoration is in the picture.
TEST_F(DecorationTest, IsLeftAloneWhereSomebodyElseBlends) {
    const auto other = *x11::Connection::open(server.display());
    const xcb_window_t owner = xcb_generate_id(other->raw());
    other->check(xcb_create_window_checked(other->raw(), XCB_COPY_FROM_PARENT, owner, other->root(), 0, 0, 1,
                                           1, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0,
                                           nullptr));
    xcb_set_selection_owner(other->raw(), owner, other->intern("_NET_WM_CM_S0"), XCB_CURRENT_TIME);
    other->sync();
    EXPECT_EQ(captured().pixel(150, 10) & 0xFFFFFF, foreign);
}
