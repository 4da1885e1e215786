// The atoms that the backend knows by name, interned in one batch when a connection is made.
#pragma once

#include <array>
#include <cstddef>

namespace marrowfin::x11 {

// In the order of atomNames.
enum class Atom : std::size_t {
    NetSupported,
    NetSupportingWmCheck,
    NetClientList,
    NetClientListStacking,
    NetActiveWindow,
    NetCurrentDesktop,
    NetWorkarea,
    NetFrameExtents,
    GtkFrameExtents,
    NetWmDesktop,
    NetWmName,
    NetWmPid,
    NetWmPing,
    NetWmState,
    NetWmStateHidden,
    NetWmStateAbove,
    NetWmStateFullscreen,
    NetWmStrut,
    NetWmStrutPartial,
    NetWmWindowType,
    NetWmWindowTypeDesktop,
    NetWmWindowTypeDock,
    NetWmWindowTypeMenu,
    NetWmWindowTypeNotification,
    NetWmWindowTypeNormal,
    NetWmWindowOpacity,
    NetWmBypassCompositor,
    NetXRootPmapId,
    ComptonShadow,
    Utf8String,
    WmState,
    WmProtocols,
    WmTakeFocus,
    Count,
};

constexpr std::array<const char*, static_cast<std::size_t>(Atom::Count)> atomNames = {
    "_NET_SUPPORTED",
    "_NET_SUPPORTING_WM_CHECK",
    "_NET_CLIENT_LIST",
    "_NET_CLIENT_LIST_STACKING",
    "_NET_ACTIVE_WINDOW",
    "_NET_CURRENT_DESKTOP",
    "_NET_WORKAREA",
    "_NET_FRAME_EXTENTS",
    "_GTK_FRAME_EXTENTS",
    "_NET_WM_DESKTOP",
    "_NET_WM_NAME",
    "_NET_WM_PID",
    "_NET_WM_PING",
    "_NET_WM_STATE",
    "_NET_WM_STATE_HIDDEN",
    "_NET_WM_STATE_ABOVE",
    "_NET_WM_STATE_FULLSCREEN",
    "_NET_WM_STRUT",
    "_NET_WM_STRUT_PARTIAL",
    "_NET_WM_WINDOW_TYPE",
    "_NET_WM_WINDOW_TYPE_DESKTOP",
    "_NET_WM_WINDOW_TYPE_DOCK",
    "_NET_WM_WINDOW_TYPE_MENU",
    "_NET_WM_WINDOW_TYPE_NOTIFICATION",
    "_NET_WM_WINDOW_TYPE_NORMAL",
    "_NET_WM_WINDOW_OPACITY",
    "_NET_WM_BYPASS_COMPOSITOR",
    "_XROOTPMAP_ID",
    "_COMPTON_SHADOW",
    "UTF8_STRING",
    "WM_STATE",
    "WM_PROTOCOLS",
    "WM_TAKE_FOCUS",
};

} // namespace marrowfin::x11
