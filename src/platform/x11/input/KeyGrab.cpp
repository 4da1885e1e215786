#include "platform/x11/input/KeyGrab.h"

#include <xcb/xinput.h>

namespace marrowfin::x11 {

namespace {

bool speaksXInput(const Connection& c) {
    const xcb_query_extension_reply_t* input = xcb_get_extension_data(c.raw(), &xcb_input_id);
    return input && input->present;
}

std::vector<std::uint32_t> wide(const std::vector<std::uint16_t>& states) {
    return {states.begin(), states.end()};
}

bool takeByXInput(const Connection& c, const KeyGrab& grab) {
    const std::vector<std::uint32_t> states = wide(grab.states);
    const std::uint32_t mask = XCB_INPUT_XI_EVENT_MASK_KEY_PRESS | XCB_INPUT_XI_EVENT_MASK_KEY_RELEASE;
    const auto answer =
        c.reply(xcb_input_xi_passive_grab_device_reply,
                xcb_input_xi_passive_grab_device(
                    c.raw(), XCB_CURRENT_TIME, c.root(), XCB_CURSOR_NONE, grab.key,
                    XCB_INPUT_DEVICE_ALL_MASTER, static_cast<std::uint16_t>(states.size()), 1,
                    XCB_INPUT_GRAB_TYPE_KEYCODE, XCB_INPUT_GRAB_MODE_22_ASYNC, XCB_GRAB_MODE_ASYNC,
                    XCB_INPUT_GRAB_OWNER_NO_OWNER, &mask, states.data()));
    // A server that doesn't know the request holds no such grabs for anybody.
    return !answer || answer->num_modifiers == 0;
}

bool takeByCore(const Connection& c, const KeyGrab& grab) {
    std::vector<xcb_void_cookie_t> cookies;
    for (const std::uint16_t state : grab.states)
        cookies.push_back(xcb_grab_key_checked(c.raw(), 0, c.root(), state, grab.key, XCB_GRAB_MODE_ASYNC,
                                               XCB_GRAB_MODE_ASYNC));
    bool all = true;
    for (const xcb_void_cookie_t cookie : cookies)
        all = c.check(cookie) == 0 && all;
    return all;
}

} // namespace

// Of two grabs of ours the server obeys the later one: presses come by the core protocol.
bool take(const Connection& connection, const KeyGrab& grab) {
    const bool isFree = !speaksXInput(connection) || takeByXInput(connection, grab);
    if (isFree && takeByCore(connection, grab))
        return true;
    giveBack(connection, grab);
    return false;
}

// What isn't ours stays: the server only lets go of the asking client's grabs.
void giveBack(const Connection& c, const KeyGrab& grab) {
    for (const std::uint16_t state : grab.states)
        c.ignore(xcb_ungrab_key_checked(c.raw(), grab.key, c.root(), state));
    if (speaksXInput(c)) {
        const std::vector<std::uint32_t> states = wide(grab.states);
        c.ignore(xcb_input_xi_passive_ungrab_device_checked(
            c.raw(), c.root(), grab.key, XCB_INPUT_DEVICE_ALL_MASTER,
            static_cast<std::uint16_t>(states.size()), XCB_INPUT_GRAB_TYPE_KEYCODE, states.data()));
    }
    c.flush();
}

} // namespace marrowfin::x11
