#include "platform/x11/X11Backend.h"

#include "platform/x11/capture/X11ScreenAccess.h"
#include "platform/x11/capture/X11ScreenSource.h"
#include "platform/x11/desktop/X11Pasteboard.h"
#include "platform/x11/desktop/X11TrayIcon.h"
#include "platform/x11/input/X11HotKeys.h"
#include "platform/x11/input/X11ScrollGestures.h"
#include "platform/x11/input/X11ScrollPoster.h"
#include "platform/x11/layout/X11Screens.h"
#include "platform/x11/server/Connection.h"
#include "platform/x11/server/ConnectionLoss.h"

namespace marrowfin::x11 {

struct X11Backend::Parts {
    Parts(std::unique_ptr<Connection> qt, std::function<void(const QString&)> onLost)
        : connection(std::move(qt)), loss(connection->raw(), std::move(onLost)), screens(*connection, board),
          grabs(std::make_shared<GrabLink>(Connection::qtDisplayName(), board)), source(grabs),
          hotKeys(*connection), scrollGestures(*connection), scrollPoster(*connection, board),
          pasteboard(*connection) {}

    std::unique_ptr<Connection> connection;
    ConnectionLoss loss;
    std::shared_ptr<LayoutBoard> board = std::make_shared<LayoutBoard>();
    X11Screens screens;
    std::shared_ptr<GrabLink> grabs;
    X11ScreenSource source;
    X11ScreenAccess access;
    X11HotKeys hotKeys;
    X11ScrollGestures scrollGestures;
    X11ScrollPoster scrollPoster;
    X11Pasteboard pasteboard;
};

Result<std::unique_ptr<X11Backend>> X11Backend::make(std::function<void(const QString&)> onLost) {
    auto connection = Connection::adoptQt();
    if (!connection)
        return tl::unexpected(connection.error());
    auto parts = std::make_unique<Parts>(*std::move(connection), std::move(onLost));
    return std::unique_ptr<X11Backend>(new X11Backend(std::move(parts)));
}

X11Backend::X11Backend(std::unique_ptr<Parts> parts) : parts(std::move(parts)) {}
X11Backend::~X11Backend() = default;

platform::Screens& X11Backend::screens() {
    return parts->screens;
}
platform::ScreenSource& X11Backend::screenSource() {
    return parts->source;
}
platform::ScreenAccess& X11Backend::screenAccess() {
    return parts->access;
}
platform::HotKeyService& X11Backend::hotKeys() {
    return parts->hotKeys;
}
platform::ScrollGestures& X11Backend::scrollGestures() {
    return parts->scrollGestures;
}
platform::Pasteboard& X11Backend::pasteboard() {
    return parts->pasteboard;
}
std::unique_ptr<platform::TrayIcon> X11Backend::makeTrayIcon(platform::TrayIcon::Click click) {
    return std::make_unique<X11TrayIcon>(*parts->connection, std::move(click));
}
platform::ScrollPoster& X11Backend::scrollPoster() {
    return parts->scrollPoster;
}
Connection& X11Backend::connection() {
    return *parts->connection;
}
X11Screens& X11Backend::nativeScreens() {
    return parts->screens;
}
std::shared_ptr<GrabLink> X11Backend::grabs() {
    return parts->grabs;
}

} // namespace marrowfin::x11
