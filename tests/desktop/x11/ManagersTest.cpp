// What window managers tell of themselves and their windows, and what one leaves behind that was killed.
#include "platform/x11/layout/WindowQuery.h"
#include "x11/TestServer.h"

#include <gmock/gmock.h>

using namespace marrowfin;
using namespace marrowfin::test;
using testing::ElementsAre;
using x11::Atom;

namespace {

// A window manager as far as its properties go, with two windows of which the server has the other order.
class ManagersTest : public testing::Test {
protected:
    void SetUp() override {
        c = *x11::Connection::open(server.display());
        front = makeWindow();
        back = makeWindow();
        own = makeWindow();
        set(c->root(), Atom::NetSupportingWmCheck, {own});
    }
    xcb_window_t makeWindow() {
        const xcb_window_t made = xcb_generate_id(c->raw());
        c->check(xcb_create_window_checked(c->raw(), XCB_COPY_FROM_PARENT, made, c->root(), 0, 0, 10, 10, 0,
                                           XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr));
        return made;
    }
    void set(xcb_window_t window, Atom name, const std::vector<std::uint32_t>& windows) {
        c->check(xcb_change_property_checked(c->raw(), XCB_PROP_MODE_REPLACE, window, c->atom(name),
                                             XCB_ATOM_WINDOW, 32, static_cast<std::uint32_t>(windows.size()),
                                             windows.data()));
    }
    void giveName() {
        c->check(xcb_change_property_checked(c->raw(), XCB_PROP_MODE_REPLACE, own, c->atom(Atom::NetWmName),
                                             c->atom(Atom::Utf8String), 8, 5, "Xfwm4"));
    }
    std::vector<xcb_window_t> listed() { return x11::readDesktopWindows(*c).backToFront; }

    TestServer server{{}};
    std::unique_ptr<x11::Connection> c;
    xcb_window_t front = 0;
    xcb_window_t back = 0;
    xcb_window_t own = 0;
};

} // namespace

TEST_F(ManagersTest, AreBelievedWhenTheyNameThemselvesOnTheirWindow) {
    set(own, Atom::NetSupportingWmCheck, {own});
    set(c->root(), Atom::NetClientListStacking, {back, front});
    EXPECT_THAT(listed(), ElementsAre(back, front));
}

// As Xfce's does.
TEST_F(ManagersTest, AreBelievedWhenTheyOnlySayWhatTheyAreCalled) {
    giveName();
    set(c->root(), Atom::NetClientListStacking, {back, front});
    EXPECT_THAT(listed(), ElementsAre(back, front));
}

// As Xfce's while there is nothing but its panel.
TEST_F(ManagersTest, MayTellTheirWindowsBeforeTheirOrder) {
    giveName();
    set(c->root(), Atom::NetClientList, {back});
    EXPECT_THAT(listed(), ElementsAre(back));
}

TEST_F(ManagersTest, ThatWereKilledAreNotBelieved) {
    giveName();
    set(c->root(), Atom::NetClientListStacking, {back, front});
    c->check(xcb_destroy_window_checked(c->raw(), own));
    EXPECT_THAT(listed(), ElementsAre(front, back));
}

TEST_F(ManagersTest, NorIsAnotherWindowThatGotTheirId) {
    set(c->root(), Atom::NetClientListStacking, {back, front});
    EXPECT_THAT(listed(), ElementsAre(front, back, own));
}
