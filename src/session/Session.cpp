#include "session/Session.h"

#include "platform/ScreenAccess.h"
#include "platform/ScreenSource.h"
#include "platform/SurfaceHost.h"
#include "platform/freedesktop/FreedesktopAppearance.h"
#include "platform/freedesktop/FreedesktopFolders.h"
#include "platform/freedesktop/FreedesktopOpener.h"
#include "platform/freedesktop/FreedesktopStatusBar.h"
#include "platform/x11/X11Backend.h"
#include "platform/x11/surfaces/X11SurfaceHost.h"
#include "session/UnseenScreen.h"

#include <QDBusConnection>
#include <QDBusMessage>

namespace marrowfin::session {

struct Session::Parts {
    std::unique_ptr<x11::X11Backend> backend;
    std::unique_ptr<UnseenScreen> unseen; // null where the screen can be seen
    std::unique_ptr<platform::SurfaceHost> surfaceHost;
    freedesktop::FreedesktopStatusBar statusBar{
        [this](platform::TrayIcon::Click click) { return backend->makeTrayIcon(std::move(click)); }};
    freedesktop::FreedesktopOpener opener;
    freedesktop::FreedesktopFolders folders;
    freedesktop::FreedesktopAppearance appearance;
};

namespace {

// Others find the program by its name on the bus. A refusal is of no interest: nobody guards against two
// instances.
void requestBusName(const QString& name) {
    if (name.isEmpty())
        return;
    QDBusMessage request = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("RequestName"));
    constexpr uint doNotQueue = 4;
    request << name << doNotQueue;
    QDBusConnection::sessionBus().call(request, QDBus::NoBlock);
}

} // namespace

Session::Session(std::unique_ptr<Parts> made) : parts(std::move(made)) {}
Session::~Session() = default;

Result<std::unique_ptr<Session>> Session::open(const QString& busName,
                                               std::function<void(const QString&)> onLost) {
    auto parts = std::make_unique<Parts>();
    Result<std::unique_ptr<x11::X11Backend>> backend = x11::X11Backend::make(std::move(onLost));
    if (!backend)
        return tl::unexpected(backend.error());
    Result<std::unique_ptr<platform::SurfaceHost>> surfaceHost = x11::makeSurfaceHost((*backend)->grabs());
    if (!surfaceHost)
        return tl::unexpected(surfaceHost.error());
    parts->backend = std::move(*backend);
    if (isUnseenWaylandDesktop())
        parts->unseen = std::make_unique<UnseenScreen>(parts->backend->screenSource());
    parts->surfaceHost = std::move(*surfaceHost);
    requestBusName(busName);
    return std::unique_ptr<Session>(new Session(std::move(parts)));
}

platform::Services Session::services() const {
    platform::ScreenSource& source = parts->backend->screenSource();
    return {parts->unseen ? *parts->unseen : source,
            parts->backend->screenAccess(),
            parts->backend->screens(),
            *parts->surfaceHost,
            parts->backend->scrollGestures(),
            parts->backend->hotKeys(),
            parts->backend->pasteboard(),
            parts->statusBar,
            parts->opener,
            parts->folders,
            parts->appearance};
}

} // namespace marrowfin::session
