// A connection to the X server: our own, or Qt's lent to us. Native pixels, root coordinates. One Connection
// belongs to one thread: Qt's to the main thread, a connection of our own to the queue that opened it.
//
// Windows of other programs may vanish between any two requests. So every reply may be null, every error of
// such a request is read and dropped here, and nothing on this connection ever reaches an error handler that
// exits.
#pragma once

#include "base/Result.h"
#include "platform/x11/server/Atoms.h"

#include <QByteArray>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <type_traits>
#include <vector>
#include <xcb/xcb.h>

namespace marrowfin::x11 {

struct FreeReply {
    void operator()(void* reply) const { std::free(reply); }
};
// A reply, an error or an event of the library's, which are all freed the same way. Null when the request
// failed.
template <class T>
using Reply = std::unique_ptr<T, FreeReply>;

// What the server can do, asked once when the connection is made. Without one of these the backend goes a
// slower way.
struct Extensions {
    bool shm = false;
    bool damage = false;
    bool composite = false;
    bool xfixes = false;
    bool randr = false;
    bool res = false;
    bool shape = false;
    bool xtest = false;
    bool xkb = false;
    std::uint8_t damageFirstEvent = 0;
    std::uint8_t xkbFirstEvent = 0;
    std::uint8_t randrFirstEvent = 0;
};

class Connection {
public:
    // A connection of our own; an empty name means $DISPLAY.
    static Result<std::unique_ptr<Connection>> open(const QByteArray& displayName = {});
    // The one that Qt talks through. Unavailable when the application doesn't run on X11. Left open at the
    // end.
    static Result<std::unique_ptr<Connection>> adoptQt();
    // The display name that Qt connected to, for opening another connection to the same server.
    static QByteArray qtDisplayName();

    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    xcb_connection_t* raw() const { return connection; }
    int screenNumber() const { return number; }
    const xcb_screen_t& screen() const { return *xscreen; }
    xcb_window_t root() const { return xscreen->root; }
    xcb_atom_t atom(Atom name) const { return atoms[static_cast<std::size_t>(name)]; }
    // Any other atom; one round trip. XCB_ATOM_NONE when the connection is lost.
    xcb_atom_t intern(const QByteArray& name) const;
    const Extensions& extensions() const { return present; }
    // The server is gone: every reply is null from now on.
    bool isLost() const { return xcb_connection_has_error(connection) != 0; }
    void flush() const { xcb_flush(connection); }

    // Waits for the answer: auto geometry = c.reply(xcb_get_geometry_reply, xcb_get_geometry(c.raw(),
    // window));
    template <class R, class Cookie>
    Reply<R> reply(R* (*wait)(xcb_connection_t*, Cookie, xcb_generic_error_t**),
                   std::type_identity_t<Cookie> cookie) const {
        xcb_generic_error_t* error = nullptr;
        Reply<R> answer(wait(connection, cookie, &error));
        std::free(error);
        return answer;
    }
    // Waits for a request made by an xcb_..._checked function: 0 when it worked, else the X error code. A
    // lost connection is reported as BadImplementation.
    std::uint8_t check(xcb_void_cookie_t cookie) const;
    // For checked requests whose failure nobody minds (the window may be gone): nobody waits.
    void ignore(xcb_void_cookie_t cookie) const { xcb_discard_reply(connection, cookie.sequence); }
    // A round trip: everything sent before has been done by the server.
    void sync() const;

    // The property as 32-bit items; empty when it is missing, of another type, or the window is gone.
    std::vector<std::uint32_t> property32(xcb_window_t window, xcb_atom_t name, xcb_atom_t type) const;
    // The window that owns a selection; XCB_WINDOW_NONE when nobody does.
    xcb_window_t selectionOwner(xcb_atom_t selection) const;
    // Whether the window was made over this connection.
    bool made(xcb_window_t window) const;
    // The window that owns the compositing manager selection of our screen; 0 when no compositor runs.
    xcb_window_t compositor() const;

private:
    enum class Ownership { Ours, Lent };
    Connection(xcb_connection_t* connection, int number, Ownership ownership);
    bool setUp();
    void internAtoms();
    void askExtensions();

    xcb_connection_t* connection;
    int number;
    Ownership ownership;
    xcb_screen_t* xscreen = nullptr;
    std::vector<xcb_atom_t> atoms;
    xcb_atom_t compositorSelection = XCB_ATOM_NONE;
    Extensions present;
};

// The items of a GetProperty reply, when it has the expected type and 32-bit items.
std::vector<std::uint32_t> items32(const xcb_get_property_reply_t* reply, xcb_atom_t type);
// The bytes of a GetProperty reply with 8-bit items.
QByteArray items8(const xcb_get_property_reply_t* reply);

} // namespace marrowfin::x11
