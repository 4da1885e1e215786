#include "platform/freedesktop/TrayKeeper.h"

#include "base/Log.h"
#include "platform/freedesktop/ToolkitX11.h"

#include <QApplication>
#include <QWidget>
#include <cstdlib>
#include <memory>
#include <xcb/xfixes.h>

namespace marrowfin::freedesktop {

namespace {

// A tray docks what the toolkit asks for in a few hundredths of a second; one that is still starting takes
// longer.
constexpr int patienceMilliseconds = 500;
// A tray that refuses an icon so often doesn't want it.
constexpr int mostRequests = 3;
constexpr std::uint32_t requestDock = 0;

// The window that the toolkit makes for the icon while there is a tray.
xcb_window_t iconWindow() {
    for (const QWidget* widget : QApplication::topLevelWidgets())
        if (widget->inherits("QSystemTrayIconSys") && widget->internalWinId())
            return static_cast<xcb_window_t>(widget->internalWinId());
    return XCB_WINDOW_NONE;
}

bool isDocked(xcb_window_t icon) {
    xcb_connection_t* server = toolkitx11::connection();
    const std::unique_ptr<xcb_query_tree_reply_t, decltype(&std::free)> tree(
        xcb_query_tree_reply(server, xcb_query_tree(server, icon), nullptr), std::free);
    return tree && tree->parent != tree->root;
}

void askToDock(xcb_window_t icon, xcb_window_t tray) {
    xcb_client_message_event_t request{};
    request.response_type = XCB_CLIENT_MESSAGE;
    request.format = 32;
    request.window = tray;
    request.type = toolkitx11::intern("_NET_SYSTEM_TRAY_OPCODE");
    request.data.data32[0] = XCB_CURRENT_TIME;
    request.data.data32[1] = requestDock;
    request.data.data32[2] = icon;
    xcb_send_event(toolkitx11::connection(), 0, tray, XCB_EVENT_MASK_NO_EVENT,
                   reinterpret_cast<const char*>(&request));
    xcb_flush(toolkitx11::connection());
}

} // namespace

TrayKeeper::TrayKeeper()
    : selectionName("_NET_SYSTEM_TRAY_S" + QByteArray::number(toolkitx11::screenNumber())) {
    patience.setSingleShot(true);
    patience.setInterval(patienceMilliseconds);
    connect(&patience, &QTimer::timeout, this, &TrayKeeper::look);
    xcb_connection_t* server = toolkitx11::connection();
    const xcb_query_extension_reply_t* fixes =
        server ? xcb_get_extension_data(server, &xcb_xfixes_id) : nullptr;
    if (!fixes || !fixes->present)
        return;
    selection = toolkitx11::intern(selectionName);
    selectionNotify = fixes->first_event + XCB_XFIXES_SELECTION_NOTIFY;
    xcb_xfixes_select_selection_input(server, toolkitx11::root(), selection,
                                      XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER);
    qApp->installNativeEventFilter(this);
    expectIcon();
}

TrayKeeper::~TrayKeeper() {
    if (qApp)
        qApp->removeNativeEventFilter(this);
}

bool TrayKeeper::nativeEventFilter(const QByteArray&, void* message, qintptr*) {
    const auto* event = static_cast<const xcb_generic_event_t*>(message);
    if ((event->response_type & 0x7F) != selectionNotify)
        return false;
    if (static_cast<const xcb_xfixes_selection_notify_event_t*>(message)->selection == selection)
        expectIcon();
    return false;
}

void TrayKeeper::expectIcon() {
    asked = 0;
    patience.start();
}

void TrayKeeper::look() {
    const xcb_window_t tray = toolkitx11::selectionOwner(selectionName);
    const xcb_window_t icon = iconWindow();
    if (tray == XCB_WINDOW_NONE || icon == XCB_WINDOW_NONE || isDocked(icon))
        return;
    if (asked == mostRequests) {
        logLine(QStringLiteral("[Marrowfin] The status area doesn't take the icon"));
        return;
    }
    ++asked;
    askToDock(icon, tray);
    patience.start();
}

} // namespace marrowfin::freedesktop
