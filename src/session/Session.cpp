#include "session/Session.h"

#include "platform/dbus/BusProxy.h"
#include "platform/dbus/SessionBus.h"
#include "platform/x11/X11Backend.h"
#include "session/ServiceChoice.h"

#include <QApplication>

namespace marrowfin::session {

namespace {

// Others find the program by its name on the bus. A refusal is of no interest: nobody guards against two
// instances.
void requestBusName(const QString& name) {
    if (name.isEmpty())
        return;
    constexpr uint doNotQueue = 4;
    const QString bus = QStringLiteral("org.freedesktop.DBus");
    BusProxy(bus, QStringLiteral("/org/freedesktop/DBus"), dbus::sessionBus()).RequestName(name, doNotQueue);
}

} // namespace

Session::Session(std::unique_ptr<ChosenServices> made) : chosen(std::move(made)) {}
Session::~Session() = default;

Result<std::unique_ptr<Session>> Session::open(const QString& busName,
                                               std::function<void(const QString&)> onLost) {
    dbus::listenToSessionBus();
    Result<std::unique_ptr<x11::X11Backend>> backend = x11::X11Backend::make(std::move(onLost));
    if (!backend)
        return tl::unexpected(backend.error());
    Result<std::unique_ptr<ChosenServices>> chosen = chooseServices(std::move(*backend));
    if (!chosen)
        return tl::unexpected(chosen.error());
    dbus::whenBusAnswers(*qApp, [busName] { requestBusName(busName); });
    return std::unique_ptr<Session>(new Session(std::move(*chosen)));
}

const platform::Services& Session::services() const {
    return chosen->services;
}

} // namespace marrowfin::session
