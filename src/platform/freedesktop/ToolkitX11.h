// The few questions about windows and selections that go to the X server over the toolkit's connection. Each
// is one round trip and answers "nobody" on other window systems and when the server is gone. Main thread.
#pragma once

#include <QByteArray>
#include <xcb/xcb.h>

namespace marrowfin::freedesktop::toolkitx11 {

// Null on other window systems, and when the connection is lost.
xcb_connection_t* connection();
// The server that the toolkit was connected to is gone.
bool isLost();
// Of the screen that the program was started on; 0 and null when there is no server.
int screenNumber();
xcb_window_t root();
xcb_atom_t intern(const QByteArray& name);
// XCB_NONE when nobody has the selection.
xcb_window_t selectionOwner(const QByteArray& selection);
// Made by this connection.
bool isOurs(xcb_window_t window);
// Whether the server agrees that the clipboard is ours; the toolkit only remembers having asked for it.
bool ownsClipboard();

} // namespace marrowfin::freedesktop::toolkitx11
