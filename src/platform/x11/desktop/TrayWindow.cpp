#include "platform/x11/desktop/TrayWindow.h"

#include <QCoreApplication>
#include <QGuiApplication>

namespace marrowfin::x11 {

namespace {
constexpr std::uint32_t requestDock = 0;
constexpr std::uint32_t protocolVersion = 0;
constexpr std::uint32_t wantsToBeMapped = 1;
constexpr std::uint32_t eventsOfInterest = XCB_EVENT_MASK_EXPOSURE | XCB_EVENT_MASK_STRUCTURE_NOTIFY |
                                           XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE |
                                           XCB_EVENT_MASK_ENTER_WINDOW | XCB_EVENT_MASK_LEAVE_WINDOW;

template <class Event>
const Event& as(const xcb_generic_event_t& event) {
    return reinterpret_cast<const Event&>(event);
}
} // namespace

TrayWindow::TrayWindow(const Connection& connection, const IconPainter& painter, xcb_visualid_t wanted,
                       int side)
    : connection(connection), painter(painter),
      visual(painter.hasAlpha(wanted) ? wanted : connection.screen().root_visual),
      window(xcb_generate_id(connection.raw())), size(side, side) {
    make(side);
    introduce(side);
    QCoreApplication::instance()->installNativeEventFilter(this);
}

TrayWindow::~TrayWindow() {
    if (QCoreApplication::instance())
        QCoreApplication::instance()->removeNativeEventFilter(this);
    if (!destroyed)
        connection.ignore(xcb_destroy_window_checked(connection.raw(), window));
    if (colors != XCB_NONE)
        connection.ignore(xcb_free_colormap_checked(connection.raw(), colors));
    connection.flush();
}

// Without a manager: a tray that dies leaves the window on the root for a moment, where nobody shall frame
// it.
void TrayWindow::make(int side) {
    xcb_connection_t* server = connection.raw();
    const bool ownAlpha = visual != connection.screen().root_visual;
    xcb_colormap_t map = connection.screen().default_colormap;
    if (ownAlpha) {
        map = colors = xcb_generate_id(server);
        connection.ignore(
            xcb_create_colormap_checked(server, XCB_COLORMAP_ALLOC_NONE, colors, connection.root(), visual));
    }
    const std::uint32_t values[] = {0, 0, 1, eventsOfInterest, map};
    connection.ignore(
        xcb_create_window_checked(server, ownAlpha ? 32 : connection.screen().root_depth, window,
                                  connection.root(), 0, 0, static_cast<std::uint16_t>(side),
                                  static_cast<std::uint16_t>(side), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, visual,
                                  XCB_CW_BACK_PIXEL | XCB_CW_BORDER_PIXEL | XCB_CW_OVERRIDE_REDIRECT |
                                      XCB_CW_EVENT_MASK | XCB_CW_COLORMAP,
                                  values));
}

void TrayWindow::introduce(int side) {
    const auto set8 = [this](xcb_atom_t name, xcb_atom_t type, const QByteArray& text) {
        connection.ignore(xcb_change_property_checked(connection.raw(), XCB_PROP_MODE_REPLACE, window, name,
                                                      type, 8, static_cast<std::uint32_t>(text.size()),
                                                      text.constData()));
    };
    const auto set32 = [this](xcb_atom_t name, xcb_atom_t type, const std::vector<std::uint32_t>& words) {
        connection.ignore(xcb_change_property_checked(connection.raw(), XCB_PROP_MODE_REPLACE, window, name,
                                                      type, 32, static_cast<std::uint32_t>(words.size()),
                                                      words.data()));
    };
    const QByteArray name = QGuiApplication::applicationDisplayName().toUtf8();
    set8(XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, QByteArray("marrowfin\0marrowfin\0", 20));
    set8(connection.atom(Atom::NetWmName), connection.atom(Atom::Utf8String), name);
    set8(XCB_ATOM_WM_NAME, connection.atom(Atom::Utf8String), name);
    set32(connection.atom(Atom::NetWmPid), XCB_ATOM_CARDINAL,
          {static_cast<std::uint32_t>(QCoreApplication::applicationPid())});
    set32(connection.atom(Atom::XembedInfo), connection.atom(Atom::XembedInfo),
          {protocolVersion, wantsToBeMapped});
    // The words of WM_NORMAL_HINTS: the flags, then at the sixth place the least size.
    constexpr std::uint32_t leastSize = 1U << 4;
    std::vector<std::uint32_t> hints(18);
    hints[0] = leastSize;
    hints[5] = hints[6] = static_cast<std::uint32_t>(side);
    set32(XCB_ATOM_WM_NORMAL_HINTS, XCB_ATOM_WM_SIZE_HINTS, hints);
}

void TrayWindow::askToBeDocked(xcb_window_t tray) {
    xcb_client_message_event_t request{};
    request.response_type = XCB_CLIENT_MESSAGE;
    request.format = 32;
    request.window = tray;
    request.type = connection.atom(Atom::NetSystemTrayOpcode);
    request.data.data32[0] = XCB_CURRENT_TIME;
    request.data.data32[1] = requestDock;
    request.data.data32[2] = window;
    connection.ignore(xcb_send_event_checked(connection.raw(), 0, tray, XCB_EVENT_MASK_NO_EVENT,
                                             reinterpret_cast<const char*>(&request)));
    connection.flush();
}

QRect TrayWindow::place() const {
    if (!docked)
        return {};
    const auto corner =
        connection.reply(xcb_translate_coordinates_reply,
                         xcb_translate_coordinates(connection.raw(), window, connection.root(), 0, 0));
    return corner ? QRect(QPoint(corner->dst_x, corner->dst_y), size) : QRect();
}

void TrayWindow::paint(const QImage& icon) {
    painter.paint(window, visual, icon,
                  {(size.width() - icon.width()) / 2, (size.height() - icon.height()) / 2});
}

bool TrayWindow::nativeEventFilter(const QByteArray& type, void* message, qintptr*) {
    if (type != "xcb_generic_event_t")
        return false;
    const auto& event = *static_cast<const xcb_generic_event_t*>(message);
    if (!isOfThis(event))
        return false;
    handle(event);
    return true;
}

bool TrayWindow::isOfThis(const xcb_generic_event_t& event) const {
    switch (event.response_type & 0x7F) {
    case XCB_EXPOSE:
        return as<xcb_expose_event_t>(event).window == window;
    case XCB_CONFIGURE_NOTIFY:
        return as<xcb_configure_notify_event_t>(event).window == window;
    case XCB_REPARENT_NOTIFY:
        return as<xcb_reparent_notify_event_t>(event).window == window;
    case XCB_DESTROY_NOTIFY:
        return as<xcb_destroy_notify_event_t>(event).window == window;
    // These four are laid out alike.
    case XCB_BUTTON_PRESS:
    case XCB_BUTTON_RELEASE:
    case XCB_ENTER_NOTIFY:
    case XCB_LEAVE_NOTIFY:
        return as<xcb_button_press_event_t>(event).event == window;
    default:
        return false;
    }
}

// A signal may be the end of this window: nothing comes after it.
void TrayWindow::handle(const xcb_generic_event_t& event) {
    switch (event.response_type & 0x7F) {
    case XCB_EXPOSE:
        if (as<xcb_expose_event_t>(event).count == 0)
            Q_EMIT exposed();
        break;
    case XCB_CONFIGURE_NOTIFY:
        size = {as<xcb_configure_notify_event_t>(event).width,
                as<xcb_configure_notify_event_t>(event).height};
        break;
    case XCB_REPARENT_NOTIFY:
        reparented(as<xcb_reparent_notify_event_t>(event));
        break;
    case XCB_DESTROY_NOTIFY:
        destroyed = true;
        Q_EMIT lost();
        break;
    case XCB_BUTTON_PRESS:
        Q_EMIT pressed();
        break;
    case XCB_BUTTON_RELEASE:
        letGo(as<xcb_button_release_event_t>(event));
        break;
    case XCB_ENTER_NOTIFY:
        Q_EMIT entered();
        break;
    case XCB_LEAVE_NOTIFY:
        Q_EMIT left();
        break;
    default:
        break;
    }
}

// Below an icon without alpha of its own shows what the tray has there. The server refuses that between
// windows of different depths.
void TrayWindow::reparented(const xcb_reparent_notify_event_t& event) {
    docked = event.parent != connection.root();
    if (!docked) {
        Q_EMIT lost();
        return;
    }
    if (visual != connection.screen().root_visual)
        return;
    const auto parent =
        connection.reply(xcb_get_geometry_reply, xcb_get_geometry(connection.raw(), event.parent));
    const std::uint32_t background = XCB_BACK_PIXMAP_PARENT_RELATIVE;
    if (parent && parent->depth == connection.screen().root_depth)
        connection.ignore(
            xcb_change_window_attributes_checked(connection.raw(), window, XCB_CW_BACK_PIXMAP, &background));
}

// A press that was dragged off the icon is a change of mind.
void TrayWindow::letGo(const xcb_button_release_event_t& event) {
    if (QRect(QPoint(), size).contains(event.event_x, event.event_y))
        Q_EMIT released(event.detail, {event.root_x, event.root_y});
}

} // namespace marrowfin::x11
