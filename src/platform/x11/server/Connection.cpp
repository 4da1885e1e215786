#include "platform/x11/server/Connection.h"

#include "platform/x11/server/Xkb.h"

#include <QGuiApplication>
#include <X11/Xlib.h>
#include <cstring>
#include <xcb/composite.h>
#include <xcb/damage.h>
#include <xcb/randr.h>
#include <xcb/res.h>
#include <xcb/shape.h>
#include <xcb/shm.h>
#include <xcb/xcbext.h>
#include <xcb/xfixes.h>
#include <xcb/xtest.h>

namespace marrowfin::x11 {

namespace {

xcb_screen_t* screenOf(xcb_connection_t* connection, int number) {
    for (auto it = xcb_setup_roots_iterator(xcb_get_setup(connection)); it.rem > 0; xcb_screen_next(&it)) {
        if (number-- == 0)
            return it.data;
    }
    return nullptr;
}

QNativeInterface::QX11Application* qtOnX11() {
    return qGuiApp ? qGuiApp->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
}

} // namespace

Result<std::unique_ptr<Connection>> Connection::open(const QByteArray& displayName) {
    int number = 0;
    xcb_connection_t* raw = xcb_connect(displayName.isEmpty() ? nullptr : displayName.constData(), &number);
    std::unique_ptr<Connection> made(new Connection(raw, number, Ownership::Ours));
    if (!made->setUp())
        return failure(QStringLiteral("The X server can't be reached."));
    return made;
}

Result<std::unique_ptr<Connection>> Connection::adoptQt() {
    auto* qt = qtOnX11();
    if (!qt || !qt->connection())
        return unavailable(QStringLiteral("This desktop doesn't run on X11."));
    // The macro only reads the display's record; nothing of Xlib is linked for it.
    std::unique_ptr<Connection> made(
        new Connection(qt->connection(), DefaultScreen(qt->display()), Ownership::Lent));
    if (!made->setUp())
        return failure(QStringLiteral("The X server can't be reached."));
    return made;
}

QByteArray Connection::qtDisplayName() {
    auto* qt = qtOnX11();
    return qt && qt->display() ? QByteArray(DisplayString(qt->display())) : QByteArray();
}

Connection::Connection(xcb_connection_t* connection, int number, Ownership ownership)
    : connection(connection), number(number), ownership(ownership) {}

Connection::~Connection() {
    if (ownership == Ownership::Ours)
        xcb_disconnect(connection);
}

bool Connection::setUp() {
    if (isLost())
        return false;
    xscreen = screenOf(connection, number);
    if (!xscreen)
        return false;
    internAtoms();
    askExtensions();
    return !isLost();
}

void Connection::internAtoms() {
    std::vector<xcb_intern_atom_cookie_t> cookies;
    for (const char* name : atomNames)
        cookies.push_back(
            xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(std::strlen(name)), name));
    const QByteArray selection = "_NET_WM_CM_S" + QByteArray::number(number);
    cookies.push_back(
        xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(selection.size()), selection.constData()));
    for (const xcb_intern_atom_cookie_t cookie : cookies) {
        const auto answer = reply(xcb_intern_atom_reply, cookie);
        atoms.push_back(answer ? answer->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE));
    }
    compositorSelection = atoms.back();
}

// The server refuses requests of most extensions to a client that hasn't said which version it speaks.
void Connection::askExtensions() {
    xcb_extension_t* const all[] = {&xcb_shm_id,    &xcb_damage_id, &xcb_composite_id,
                                    &xcb_xfixes_id, &xcb_randr_id,  &xcb_res_id,
                                    &xcb_shape_id,  &xcb_test_id,   &xcb_xkb_id};
    for (xcb_extension_t* extension : all)
        xcb_prefetch_extension_data(connection, extension);
    const auto has = [this](xcb_extension_t* extension) {
        const xcb_query_extension_reply_t* data = xcb_get_extension_data(connection, extension);
        return data && data->present ? data : nullptr;
    };
    const auto damage = has(&xcb_damage_id);
    const auto xkb = has(&xcb_xkb_id);
    const auto randr = has(&xcb_randr_id);
    present.shape = has(&xcb_shape_id) != nullptr;
    present.shm = has(&xcb_shm_id) != nullptr;
    present.xtest = has(&xcb_test_id) != nullptr;
    const auto fixesCookie = has(&xcb_xfixes_id) ? xcb_xfixes_query_version(connection, 5, 0)
                                                 : xcb_xfixes_query_version_cookie_t{};
    const auto damageCookie =
        damage ? xcb_damage_query_version(connection, 1, 1) : xcb_damage_query_version_cookie_t{};
    const auto compositeCookie = has(&xcb_composite_id) ? xcb_composite_query_version(connection, 0, 4)
                                                        : xcb_composite_query_version_cookie_t{};
    const auto randrCookie =
        randr ? xcb_randr_query_version(connection, 1, 5) : xcb_randr_query_version_cookie_t{};
    const auto resCookie =
        has(&xcb_res_id) ? xcb_res_query_version(connection, 1, 2) : xcb_res_query_version_cookie_t{};
    const auto xkbCookie = xkb ? xcb_xkb_use_extension(connection, 1, 0) : xcb_xkb_use_extension_cookie_t{};
    if (fixesCookie.sequence)
        present.xfixes = reply(xcb_xfixes_query_version_reply, fixesCookie) != nullptr;
    // Damage hands its areas over as regions of XFixes.
    if (damageCookie.sequence)
        present.damage = reply(xcb_damage_query_version_reply, damageCookie) != nullptr && present.xfixes;
    if (compositeCookie.sequence) {
        const auto answer = reply(xcb_composite_query_version_reply, compositeCookie);
        present.composite = answer && (answer->major_version > 0 || answer->minor_version >= 2);
    }
    if (randrCookie.sequence) {
        const auto answer = reply(xcb_randr_query_version_reply, randrCookie);
        present.randr = answer && answer->major_version == 1 && answer->minor_version >= 5;
    }
    if (resCookie.sequence) {
        const auto answer = reply(xcb_res_query_version_reply, resCookie);
        present.res = answer && answer->server_major == 1 && answer->server_minor >= 2;
    }
    if (xkbCookie.sequence) {
        const auto answer = reply(xcb_xkb_use_extension_reply, xkbCookie);
        present.xkb = answer && answer->supported;
    }
    present.damageFirstEvent = damage ? damage->first_event : 0;
    present.xkbFirstEvent = xkb ? xkb->first_event : 0;
    present.randrFirstEvent = randr ? randr->first_event : 0;
}

xcb_atom_t Connection::intern(const QByteArray& name) const {
    const auto answer =
        reply(xcb_intern_atom_reply,
              xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(name.size()), name.constData()));
    return answer ? answer->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
}

std::uint8_t Connection::check(xcb_void_cookie_t cookie) const {
    const Reply<xcb_generic_error_t> error(xcb_request_check(connection, cookie));
    if (error)
        return error->error_code;
    return isLost() ? static_cast<std::uint8_t>(XCB_IMPLEMENTATION) : static_cast<std::uint8_t>(0);
}

void Connection::sync() const {
    reply(xcb_get_input_focus_reply, xcb_get_input_focus(connection));
}

std::vector<std::uint32_t> Connection::property32(xcb_window_t window, xcb_atom_t name,
                                                  xcb_atom_t type) const {
    const auto answer =
        reply(xcb_get_property_reply, xcb_get_property(connection, 0, window, name, type, 0, 1 << 16));
    return items32(answer.get(), type);
}

xcb_window_t Connection::selectionOwner(xcb_atom_t selection) const {
    const auto answer = reply(xcb_get_selection_owner_reply, xcb_get_selection_owner(connection, selection));
    return answer ? answer->owner : static_cast<xcb_window_t>(XCB_WINDOW_NONE);
}

bool Connection::made(xcb_window_t window) const {
    // A resource's id carries the client that made it.
    const xcb_setup_t* setup = isLost() ? nullptr : xcb_get_setup(connection);
    return setup && (window & ~setup->resource_id_mask) == setup->resource_id_base;
}

xcb_window_t Connection::compositor() const {
    return selectionOwner(compositorSelection);
}

std::vector<std::uint32_t> items32(const xcb_get_property_reply_t* reply, xcb_atom_t type) {
    if (!reply || reply->format != 32 || (type != XCB_GET_PROPERTY_TYPE_ANY && reply->type != type))
        return {};
    const auto* first = static_cast<const std::uint32_t*>(xcb_get_property_value(reply));
    return {first, first + xcb_get_property_value_length(reply) / 4};
}

QByteArray items8(const xcb_get_property_reply_t* reply) {
    if (!reply || reply->format != 8)
        return {};
    return {static_cast<const char*>(xcb_get_property_value(reply)), xcb_get_property_value_length(reply)};
}

} // namespace marrowfin::x11
