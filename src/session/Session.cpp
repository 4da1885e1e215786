#include "session/Session.h"

#include "platform/x11/X11Backend.h"
#include "session/ServiceChoice.h"

#include <QDBusConnection>
#include <QDBusMessage>

namespace marrowfin::session {

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

Session::Session(std::unique_ptr<ChosenServices> made) : chosen(std::move(made)) {}
Session::~Session() = default;

Result<std::unique_ptr<Session>> Session::open(const QString& busName,
                                               std::function<void(const QString&)> onLost) {
    Result<std::unique_ptr<x11::X11Backend>> backend = x11::X11Backend::make(std::move(onLost));
    if (!backend)
        return tl::unexpected(backend.error());
    Result<std::unique_ptr<ChosenServices>> chosen = chooseServices(std::move(*backend));
    if (!chosen)
        return tl::unexpected(chosen.error());
    requestBusName(busName);
    return std::unique_ptr<Session>(new Session(std::move(*chosen)));
}

const platform::Services& Session::services() const {
    return chosen->services;
}

} // namespace marrowfin::session
