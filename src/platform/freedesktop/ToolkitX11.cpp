#include "platform/freedesktop/ToolkitX11.h"

#include <QClipboard>
#include <QGuiApplication>
#include <cstdlib>
#include <memory>

namespace marrowfin::freedesktop::toolkitx11 {

namespace {
template <class T>
using Reply = std::unique_ptr<T, decltype(&std::free)>;

// Also one that is broken.
xcb_connection_t* ofToolkit() {
    auto* x11 = qGuiApp ? qGuiApp->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
    return x11 ? x11->connection() : nullptr;
}
} // namespace

xcb_connection_t* connection() {
    xcb_connection_t* found = ofToolkit();
    return found && !xcb_connection_has_error(found) ? found : nullptr;
}

bool isLost() {
    xcb_connection_t* found = ofToolkit();
    return found && xcb_connection_has_error(found);
}

int screenNumber() {
    int number = 0;
    char* host = nullptr;
    int display = 0;
    if (xcb_parse_display(nullptr, &host, &display, &number))
        std::free(host);
    return number;
}

xcb_window_t root() {
    xcb_connection_t* server = connection();
    if (!server)
        return XCB_WINDOW_NONE;
    auto screens = xcb_setup_roots_iterator(xcb_get_setup(server));
    for (int i = screenNumber(); i > 0 && screens.rem > 1; --i)
        xcb_screen_next(&screens);
    return screens.data->root;
}

xcb_atom_t intern(const QByteArray& name) {
    xcb_connection_t* server = connection();
    if (!server)
        return XCB_ATOM_NONE;
    const auto cookie = xcb_intern_atom(server, 0, static_cast<std::uint16_t>(name.size()), name.constData());
    const Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(server, cookie, nullptr), std::free);
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

xcb_window_t selectionOwner(const QByteArray& selection) {
    xcb_connection_t* server = connection();
    const xcb_atom_t atom = intern(selection);
    if (!server || atom == XCB_ATOM_NONE)
        return XCB_NONE;
    const auto cookie = xcb_get_selection_owner(server, atom);
    const Reply<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(server, cookie, nullptr),
                                                       std::free);
    return reply ? reply->owner : xcb_window_t{XCB_NONE};
}

bool isOurs(xcb_window_t window) {
    xcb_connection_t* server = connection();
    if (!server || window == XCB_NONE)
        return false;
    // A resource's id carries the client that made it.
    const xcb_setup_t* setup = xcb_get_setup(server);
    return (window & ~setup->resource_id_mask) == setup->resource_id_base;
}

bool ownsClipboard() {
    if (!connection())
        return QGuiApplication::clipboard()->ownsClipboard();
    return isOurs(selectionOwner("CLIPBOARD"));
}

} // namespace marrowfin::freedesktop::toolkitx11
