#include "session/Session.h"

#include "platform/ScreenAccess.h"
#include "platform/ScreenSource.h"
#include "platform/SurfaceHost.h"
#include "platform/freedesktop/FreedesktopAppearance.h"
#include "platform/freedesktop/FreedesktopFolders.h"
#include "platform/freedesktop/FreedesktopOpener.h"
#include "platform/freedesktop/FreedesktopStatusBar.h"
#include "platform/x11/X11Backend.h"
#include "platform/x11/server/Connection.h"
#include "platform/x11/surfaces/X11SurfaceHost.h"

#include <QDBusConnection>
#include <QDBusMessage>

namespace marrowfin::session {

struct Session::Parts {
    std::unique_ptr<x11::X11Backend> backend;
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
void requestBusName() {
    QDBusMessage request = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("RequestName"));
    constexpr uint doNotQueue = 4;
    request << QStringLiteral("io.tessaly.marrowfin") << doNotQueue;
    QDBusConnection::sessionBus().call(request, QDBus::NoBlock);
}

} // namespace

Session::Session(std::unique_ptr<Parts> made) : parts(std::move(made)) {}
Session::~Session() = default;

Result<void> Session::prepare() {
    // There is one backend; on a Wayland desktop it runs on Xwayland. Who sets a platform plugin keeps it.
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "xcb");
    if (qgetenv("QT_QPA_PLATFORM") != "xcb")
        return {};
    // The toolkit aborts when it can't connect; this says why first.
    const Result<std::unique_ptr<x11::Connection>> reachable = x11::Connection::open();
    if (!reachable)
        return failure(QStringLiteral("Marrowfin needs an X11 desktop: ") + reachable.error().message);
    return {};
}

Result<std::unique_ptr<Session>> Session::open(std::function<void()> lastWill) {
    auto parts = std::make_unique<Parts>();
    Result<std::unique_ptr<x11::X11Backend>> backend = x11::X11Backend::make(std::move(lastWill));
    if (!backend)
        return tl::unexpected(backend.error());
    Result<std::unique_ptr<platform::SurfaceHost>> surfaceHost = x11::makeSurfaceHost((*backend)->grabs());
    if (!surfaceHost)
        return tl::unexpected(surfaceHost.error());
    parts->backend = std::move(*backend);
    parts->surfaceHost = std::move(*surfaceHost);
    requestBusName();
    return std::unique_ptr<Session>(new Session(std::move(parts)));
}

platform::Services Session::services() const {
    return {parts->backend->screenSource(),
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
