#include "platform/x11/desktop/TrayWatch.h"

#include <QCoreApplication>
#include <xcb/xfixes.h>

namespace marrowfin::x11 {

TrayWatch::TrayWatch(const Connection& connection)
    : connection(connection),
      selection(connection.intern("_NET_SYSTEM_TRAY_S" + QByteArray::number(connection.screenNumber()))) {
    listenToRoot();
    listenToSelection();
    QCoreApplication::instance()->installNativeEventFilter(this);
    follow();
}

TrayWatch::~TrayWatch() {
    if (QCoreApplication::instance())
        QCoreApplication::instance()->removeNativeEventFilter(this);
}

// Announcements of trays go to whoever listens to the root's structure. The toolkit does as a rule; what it
// listens to besides must stay, because the connection is one client.
void TrayWatch::listenToRoot() {
    const auto attributes = connection.reply(xcb_get_window_attributes_reply,
                                             xcb_get_window_attributes(connection.raw(), connection.root()));
    if (!attributes)
        return;
    const std::uint32_t mask = attributes->your_event_mask | XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    if (mask != attributes->your_event_mask)
        connection.ignore(xcb_change_window_attributes_checked(connection.raw(), connection.root(),
                                                               XCB_CW_EVENT_MASK, &mask));
}

void TrayWatch::listenToSelection() {
    const xcb_query_extension_reply_t* fixes = xcb_get_extension_data(connection.raw(), &xcb_xfixes_id);
    if (!fixes || !connection.extensions().xfixes)
        return;
    selectionNotify = static_cast<std::uint8_t>(fixes->first_event + XCB_XFIXES_SELECTION_NOTIFY);
    connection.ignore(xcb_xfixes_select_selection_input_checked(
        connection.raw(), connection.root(), selection,
        XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
            XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
            XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE));
}

xcb_visualid_t TrayWatch::wantedVisual() const {
    const auto visual =
        connection.property32(current, connection.atom(Atom::NetSystemTrayVisual), XCB_ATOM_VISUALID);
    return visual.empty() ? 0 : visual.front();
}

bool TrayWatch::nativeEventFilter(const QByteArray& type, void* message, qintptr*) {
    if (type != "xcb_generic_event_t")
        return false;
    const auto* event = static_cast<const xcb_generic_event_t*>(message);
    const int kind = event->response_type & 0x7F;
    if (kind == XCB_CLIENT_MESSAGE) {
        const auto* told = reinterpret_cast<const xcb_client_message_event_t*>(event);
        if (told->type == connection.atom(Atom::Manager) && told->data.data32[1] == selection) {
            follow();
            if (current != XCB_WINDOW_NONE)
                Q_EMIT announced();
        }
    } else if (kind == XCB_DESTROY_NOTIFY) {
        if (reinterpret_cast<const xcb_destroy_notify_event_t*>(event)->window == current)
            follow();
    } else if (selectionNotify != 0 && kind == selectionNotify) {
        if (reinterpret_cast<const xcb_xfixes_selection_notify_event_t*>(event)->selection == selection)
            follow();
    }
    return false;
}

// Never by what an event says: of a tray that restarts twice in a moment it may be the one that died in
// between.
void TrayWatch::follow() {
    const xcb_window_t owner = connection.selectionOwner(selection);
    if (owner == current)
        return;
    current = owner;
    if (current != XCB_WINDOW_NONE) {
        const std::uint32_t mask = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
        // One that is gone already is told of by the selection.
        connection.ignore(
            xcb_change_window_attributes_checked(connection.raw(), current, XCB_CW_EVENT_MASK, &mask));
        connection.flush();
    }
    Q_EMIT changed();
}

} // namespace marrowfin::x11
