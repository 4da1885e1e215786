// A program that owns the clipboard and behaves badly, on a connection and a thread of its own. Tests only.
#pragma once

#include "platform/x11/server/Connection.h"

#include <atomic>
#include <poll.h>
#include <thread>

namespace marrowfin::testsupport {

enum class Manners {
    Silent,   // answers nothing
    ListOnly, // says that it has a picture, and never hands it over
    Drips,    // hands it over byte by byte, without an end
};

class PlayedOwner {
public:
    explicit PlayedOwner(Manners manners) : manners(manners) {
        window = xcb_generate_id(c->raw());
        xcb_create_window(c->raw(), 0, window, c->root(), 0, 0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                          XCB_COPY_FROM_PARENT, 0, nullptr);
        xcb_set_selection_owner(c->raw(), window, c->atom(x11::Atom::Clipboard), XCB_CURRENT_TIME);
        c->sync();
        thread = std::thread([this] { serve(); });
    }
    ~PlayedOwner() {
        ending = true;
        thread.join();
    }

private:
    void serve() {
        while (!ending) {
            while (x11::Reply<xcb_generic_event_t> event{xcb_poll_for_event(c->raw())})
                handle(*event);
            pollfd awaited{xcb_get_file_descriptor(c->raw()), POLLIN, 0};
            ::poll(&awaited, 1, 20);
        }
    }
    void handle(const xcb_generic_event_t& event) {
        if ((event.response_type & 0x7F) == XCB_PROPERTY_NOTIFY) {
            const auto& told = reinterpret_cast<const xcb_property_notify_event_t&>(event);
            if (told.state == XCB_PROPERTY_DELETE && told.window == requestor)
                put(c->intern("image/png"), 8, 1, "x");
        }
        if ((event.response_type & 0x7F) != XCB_SELECTION_REQUEST || manners == Manners::Silent)
            return;
        const auto& asked = reinterpret_cast<const xcb_selection_request_event_t&>(event);
        requestor = asked.requestor;
        place = asked.property;
        if (asked.target == c->atom(x11::Atom::Targets)) {
            const xcb_atom_t png = c->intern("image/png");
            put(XCB_ATOM_ATOM, 32, 1, &png);
            tell(asked);
        } else if (manners == Manners::Drips) {
            const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
            const std::uint32_t atLeast = 1;
            xcb_change_window_attributes(c->raw(), requestor, XCB_CW_EVENT_MASK, &mask);
            put(c->atom(x11::Atom::Incr), 32, 1, &atLeast);
            tell(asked);
        }
    }
    void put(xcb_atom_t type, std::uint8_t format, std::uint32_t count, const void* data) {
        xcb_change_property(c->raw(), XCB_PROP_MODE_REPLACE, requestor, place, type, format, count, data);
        c->flush();
    }
    void tell(const xcb_selection_request_event_t& asked) {
        xcb_selection_notify_event_t answer{};
        answer.response_type = XCB_SELECTION_NOTIFY;
        answer.requestor = asked.requestor;
        answer.selection = asked.selection;
        answer.target = asked.target;
        answer.property = asked.property;
        xcb_send_event(c->raw(), 0, asked.requestor, XCB_EVENT_MASK_NO_EVENT,
                       reinterpret_cast<const char*>(&answer));
        c->flush();
    }

    const Manners manners;
    std::unique_ptr<x11::Connection> c = *x11::Connection::open();
    xcb_window_t window = XCB_WINDOW_NONE;
    xcb_window_t requestor = XCB_WINDOW_NONE;
    xcb_atom_t place = XCB_ATOM_NONE;
    std::atomic<bool> ending = false;
    std::thread thread;
};

} // namespace marrowfin::testsupport
