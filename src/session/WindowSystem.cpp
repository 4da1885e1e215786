#include "session/WindowSystem.h"

#include "platform/dbus/SessionBus.h"
#include "platform/x11/server/Connection.h"

#include <QByteArray>

namespace marrowfin::session {

Result<void> chooseWindowSystem() {
    dbus::meetSessionBus();
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

} // namespace marrowfin::session
