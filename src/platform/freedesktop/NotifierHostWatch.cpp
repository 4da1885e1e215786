#include "platform/freedesktop/NotifierHostWatch.h"

#include "base/Log.h"
#include "base/Outcome.h"
#include "platform/dbus/BusProxy.h"
#include "platform/dbus/PropertiesProxy.h"
#include "platform/dbus/SessionBus.h"

#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QPointer>

namespace marrowfin::freedesktop {

NotifierHostWatch::NotifierHostWatch() {
    dbus::whenBusAnswers(*this, [this] { begin(); });
    if (!watcher)
        postToMain([guard = QPointer(this)] {
            if (guard && !guard->watcher)
                guard->setHost(Host::Absent);
        });
}

void NotifierHostWatch::begin() {
    const QDBusConnection bus = dbus::sessionBus();
    services.setConnection(bus);
    services.setWatchMode(QDBusServiceWatcher::WatchForOwnerChange);
    services.addWatchedService(notifierWatcherService);
    connect(&services, &QDBusServiceWatcher::serviceRegistered, this, &NotifierHostWatch::ask);
    connect(&services, &QDBusServiceWatcher::serviceUnregistered, this, [this] {
        ++latestQuestion;
        setHost(Host::Absent);
    });
    watcher = std::make_unique<NotifierWatcherProxy>(notifierWatcherService, notifierWatcherPath, bus);
    connect(watcher.get(), &NotifierWatcherProxy::StatusNotifierHostRegistered, this,
            &NotifierHostWatch::ask);
    connect(watcher.get(), &NotifierWatcherProxy::StatusNotifierHostUnregistered, this,
            &NotifierHostWatch::ask);
    ask();
}

// The watcher is asked by its owner's name: by its own, the question would start one on desktops that only
// have one installed.
void NotifierHostWatch::ask() {
    const QString busService = QStringLiteral("org.freedesktop.DBus");
    BusProxy bus(busService, QStringLiteral("/org/freedesktop/DBus"), dbus::sessionBus());
    auto* reply = new QDBusPendingCallWatcher(bus.GetNameOwner(notifierWatcherService), this);
    connect(reply, &QDBusPendingCallWatcher::finished, this, [this, number = ++latestQuestion](auto* done) {
        done->deleteLater();
        const QDBusPendingReply<QString> owner = *done;
        if (number == latestQuestion && owner.isError())
            heard(owner.error(), false, number);
        else if (number == latestQuestion)
            askWatcher(owner.value(), number);
    });
}

void NotifierHostWatch::askWatcher(const QString& owner, int number) {
    PropertiesProxy properties(owner, notifierWatcherPath, dbus::sessionBus());
    auto* reply = new QDBusPendingCallWatcher(
        properties.Get(notifierWatcherService, QStringLiteral("IsStatusNotifierHostRegistered")), this);
    connect(reply, &QDBusPendingCallWatcher::finished, this, [this, number](auto* done) {
        done->deleteLater();
        const QDBusPendingReply<QDBusVariant> answer = *done;
        heard(answer.error(), !answer.isError() && answer.value().variant().toBool(), number);
    });
}

// A watcher that is there and doesn't answer is no reason to put up a second kind of icon beside its own.
void NotifierHostWatch::heard(const QDBusError& error, bool hasHost, int number) {
    if (number != latestQuestion)
        return;
    if (error.type() == QDBusError::NoReply)
        logLine(
            QStringLiteral("[Marrowfin] The desktop's status area doesn't answer: no status icon for now"));
    else
        setHost(hasHost ? Host::Present : Host::Absent);
}

void NotifierHostWatch::setHost(Host host) {
    if (host == current && host == Host::Absent)
        return;
    current = host;
    Q_EMIT changed();
}

} // namespace marrowfin::freedesktop
