// Reads the windows of the desktop from the server, all in one or two round trips. Native pixels of the root.
// Thread: the connection's.
#pragma once

#include "platform/x11/layout/WindowList.h"
#include "platform/x11/server/Connection.h"

namespace marrowfin::x11 {

struct DesktopWindows {
    // Back to front. The window manager's list; without one, the root's children.
    std::vector<xcb_window_t> backToFront;
    std::optional<std::uint32_t> currentWorkspace;
};
DesktopWindows readDesktopWindows(const Connection& connection);

// The facts of those windows that still exist, in the given order.
std::vector<WindowFacts> readWindows(const Connection& connection, const std::vector<xcb_window_t>& windows);
// Of windows that don't tell their process themselves.
void addMissingPids(const Connection& connection, std::vector<WindowFacts>& windows);

// The active window, if there is one; 0 otherwise.
xcb_window_t activeWindow(const Connection& connection);
// The child of the root that holds the window (itself, where nobody reparented it); 0 when it is gone.
xcb_window_t topLevelOf(const Connection& connection, xcb_window_t window);
// The root's children from the bottom up.
std::vector<xcb_window_t> rootChildren(const Connection& connection);

} // namespace marrowfin::x11
