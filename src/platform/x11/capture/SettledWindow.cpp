#include "platform/x11/capture/SettledWindow.h"

#include "platform/x11/capture/DamageRegion.h"

#include <algorithm>
#include <poll.h>
#include <xcb/composite.h>
#include <xcb/damage.h>

namespace marrowfin::x11 {

namespace {

using namespace std::chrono_literals;

constexpr auto longest = 1000ms;
constexpr auto pauseWhenAllDrawn = 30ms; // two frames of a toolkit that draws with the display
constexpr auto pauseOtherwise = 300ms;   // it may be slow, or plain background that nobody draws

std::chrono::milliseconds sinceStart(std::chrono::steady_clock::time_point start) {
    return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - start);
}

} // namespace

SettledWindow::SettledWindow(Grabber& grabber, xcb_window_t client, xcb_window_t frame, const QRect& area)
    : grabber(grabber), connection(grabber.server()), client(client), frame(frame), area(area) {
    if (!connection.extensions().damage)
        return;
    damage = xcb_generate_id(connection.raw());
    connection.ignore(
        xcb_damage_create_checked(connection.raw(), damage, frame, XCB_DAMAGE_REPORT_LEVEL_NON_EMPTY));
}

SettledWindow::~SettledWindow() {
    if (damage)
        connection.ignore(xcb_damage_destroy_checked(connection.raw(), damage));
    if (listening) {
        const std::uint32_t nothing = XCB_EVENT_MASK_NO_EVENT;
        connection.ignore(xcb_change_window_attributes_checked(connection.raw(), connection.root(),
                                                               XCB_CW_EVENT_MASK, &nothing));
    }
    connection.flush();
}

void SettledWindow::wait(const QRegion& exposed) {
    missing = exposed;
    startWatching();
    const Clock::time_point start = Clock::now();
    lastDrawing = start;
    while (!isSettled() && sinceStart(start) < longest && !connection.isLost()) {
        const auto pause = missing.isEmpty() ? pauseWhenAllDrawn : pauseOtherwise;
        const auto left = std::max(pause - sinceStart(lastDrawing), std::chrono::milliseconds(1));
        pollfd socket{xcb_get_file_descriptor(connection.raw()), POLLIN, 0};
        // Without Damage nothing tells of drawing: look again soon.
        ::poll(&socket, 1, static_cast<int>(damage ? left.count() : 10));
        readEvents();
        if (!damage)
            lookForChange();
    }
}

// The server has painted the plain backgrounds by the time it answers; what is drawn from then on is the
// program's.
void SettledWindow::startWatching() {
    signAwaited = askForSign();
    connection.sync();
    if (damage)
        takeDamage(connection, damage);
    while (const Reply<xcb_generic_event_t> old{xcb_poll_for_queued_event(connection.raw())}) {
    }
}

bool SettledWindow::askForSign() {
    const auto protocols = connection.property32(client, connection.atom(Atom::WmProtocols), XCB_ATOM_ATOM);
    if (std::find(protocols.begin(), protocols.end(), connection.atom(Atom::NetWmPing)) == protocols.end())
        return false;
    listening = true;
    const std::uint32_t mask = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    connection.ignore(
        xcb_change_window_attributes_checked(connection.raw(), connection.root(), XCB_CW_EVENT_MASK, &mask));
    xcb_client_message_event_t ping{};
    ping.response_type = XCB_CLIENT_MESSAGE;
    ping.format = 32;
    ping.window = client;
    ping.type = connection.atom(Atom::WmProtocols);
    ping.data.data32[0] = connection.atom(Atom::NetWmPing);
    ping.data.data32[1] = XCB_CURRENT_TIME;
    ping.data.data32[2] = client;
    connection.ignore(xcb_send_event_checked(connection.raw(), 0, client, XCB_EVENT_MASK_NO_EVENT,
                                             reinterpret_cast<const char*>(&ping)));
    return true;
}

void SettledWindow::readEvents() {
    while (const Reply<xcb_generic_event_t> event{xcb_poll_for_event(connection.raw())}) {
        const int type = event->response_type & 0x7F;
        if (type == XCB_CLIENT_MESSAGE) {
            const auto* message = reinterpret_cast<const xcb_client_message_event_t*>(event.get());
            if (message->type == connection.atom(Atom::WmProtocols) && message->data.data32[2] == client) {
                signAwaited = false;
                lastDrawing = Clock::now(); // its drawing begins now at the earliest
            }
        } else if (damage && type == connection.extensions().damageFirstEvent + XCB_DAMAGE_NOTIFY) {
            collectDamage();
        }
    }
}

void SettledWindow::collectDamage() {
    lastDrawing = Clock::now();
    const auto geometry = connection.reply(xcb_get_geometry_reply, xcb_get_geometry(connection.raw(), frame));
    if (!geometry)
        return;
    // Damage counts from inside the frame's border.
    const QPoint corner(geometry->x + geometry->border_width, geometry->y + geometry->border_width);
    missing -= takeDamage(connection, damage).translated(corner);
}

void SettledWindow::lookForChange() {
    const auto geometry = connection.reply(xcb_get_geometry_reply, xcb_get_geometry(connection.raw(), frame));
    const auto attributes =
        connection.reply(xcb_get_window_attributes_reply, xcb_get_window_attributes(connection.raw(), frame));
    if (!geometry || !attributes)
        return;
    const xcb_pixmap_t pixmap = xcb_generate_id(connection.raw());
    connection.ignore(xcb_composite_name_window_pixmap_checked(connection.raw(), frame, pixmap));
    const QRect inside = area.translated(-geometry->x, -geometry->y);
    const auto now = grabber.grabDrawable(pixmap, inside, grabber.layoutOf(attributes->visual));
    connection.ignore(xcb_free_pixmap_checked(connection.raw(), pixmap));
    if (now && *now != before) {
        before = *now;
        lastDrawing = Clock::now();
    }
}

bool SettledWindow::isSettled() const {
    if (signAwaited)
        return false;
    return sinceStart(lastDrawing) >= (missing.isEmpty() ? pauseWhenAllDrawn : pauseOtherwise);
}

} // namespace marrowfin::x11
