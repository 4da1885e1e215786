// The wheel, turned by us over somebody else's window.
#include "platform/ScrollPoster.h"
#include "platform/x11/X11Backend.h"
#include "platform/x11/layout/X11Screens.h"
#include "x11/Capturing.h"
#include "x11/PaintedWindow.h"

#include <gmock/gmock.h>

using namespace marrowfin;
using namespace marrowfin::platform;
using namespace marrowfin::test;

namespace {

const QByteArray here = qgetenv("DISPLAY");

struct Turn {
    int type;
    int button;
    QPoint at;
    friend bool operator==(const Turn&, const Turn&) = default;
};

class Wheel : public testing::Test {
protected:
    void SetUp() override {
        backend = *x11::X11Backend::make();
        other = *x11::Connection::open();
        // The poster reads the layout that the screens publish.
        backend->screens().screens();
        warp({20, 30});
        const std::uint32_t mask = XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE;
        ASSERT_EQ(other->check(xcb_change_window_attributes_checked(other->raw(), window.id(),
                                                                    XCB_CW_EVENT_MASK, &mask)),
                  0);
    }
    void warp(const QPoint& to) {
        other->check(xcb_warp_pointer_checked(other->raw(), XCB_WINDOW_NONE, other->root(), 0, 0, 0, 0,
                                              static_cast<std::int16_t>(to.x()),
                                              static_cast<std::int16_t>(to.y())));
    }
    QPoint pointer() {
        const auto at = other->reply(xcb_query_pointer_reply, xcb_query_pointer(other->raw(), other->root()));
        return {at->root_x, at->root_y};
    }
    ScreenPoint middle() {
        const auto& layout = static_cast<x11::X11Screens&>(backend->screens()).layout();
        return layout.toPoints(window.place().center());
    }
    // The next events of the wheel that the window got.
    std::vector<Turn> turns(std::size_t count) {
        std::vector<Turn> found;
        while (found.size() < count) {
            const x11::Reply<xcb_generic_event_t> event{xcb_wait_for_event(other->raw())};
            if (!event)
                break;
            const auto& button = reinterpret_cast<const xcb_button_press_event_t&>(*event);
            found.push_back(
                {event->response_type & 0x7F, button.detail, QPoint(button.root_x, button.root_y)});
        }
        return found;
    }

    PaintedWindow window{here, {.rect = {300, 200, 200, 160}, .managed = false}};
    std::unique_ptr<x11::X11Backend> backend;
    std::unique_ptr<x11::Connection> other;
};

} // namespace

TEST_F(Wheel, TurnsOneNotchDownAtThePointAndLeavesThePointerWhereItWas) {
    const ScreenPoint at = middle();
    ASSERT_TRUE(waitFor(backend->scrollPoster().scroll(at, -3)));
    const std::vector<Turn> seen = turns(2);
    ASSERT_EQ(seen.size(), 2u);
    EXPECT_EQ(seen[0].type, XCB_BUTTON_PRESS);
    EXPECT_EQ(seen[1].type, XCB_BUTTON_RELEASE);
    for (const Turn& turn : seen) {
        EXPECT_EQ(turn.button, 5);
        EXPECT_LE((turn.at - window.place().center()).manhattanLength(), 2);
    }
    EXPECT_EQ(pointer(), QPoint(20, 30));
}

TEST_F(Wheel, TurnsUpAndSeveralNotches) {
    const ScreenPoint at = middle();
    ASSERT_TRUE(waitFor(backend->scrollPoster().scroll(at, 6)));
    const std::vector<Turn> seen = turns(4);
    ASSERT_EQ(seen.size(), 4u);
    for (const Turn& turn : seen)
        EXPECT_EQ(turn.button, 4);
    EXPECT_EQ(pointer(), QPoint(20, 30));
}
