// Plays the desktop's side of status items over D-Bus, on a connection of its own: the watcher, and a host
// that registers with it. Tests only.
#pragma once

#include "desktop/support/Waiting.h"
#include "platform/freedesktop/NotifierTypes.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusContext>
#include <QDBusMessage>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QStringList>

namespace marrowfin::testsupport {

class NotifierDesktop : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
    Q_PROPERTY(bool IsStatusNotifierHostRegistered READ hasHost)
public:
    explicit NotifierDesktop(bool withHost = true)
        : bus(QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("played-desktop"))),
          host(withHost) {
        bus.registerObject(QStringLiteral("/StatusNotifierWatcher"), this,
                           QDBusConnection::ExportAllProperties | QDBusConnection::ExportAllSlots |
                               QDBusConnection::ExportAllSignals);
        bus.registerService(QStringLiteral("org.kde.StatusNotifierWatcher"));
        gone.setConnection(bus);
        gone.setWatchMode(QDBusServiceWatcher::WatchForUnregistration);
        connect(&gone, &QDBusServiceWatcher::serviceUnregistered, this,
                [this](const QString& service) { items.removeAll(service); });
    }
    ~NotifierDesktop() override {
        bus.unregisterService(QStringLiteral("org.kde.StatusNotifierWatcher"));
        QDBusConnection::disconnectFromBus(QStringLiteral("played-desktop"));
    }

    bool hasHost() const { return host; }
    void setHost(bool present) {
        host = present;
        if (present)
            Q_EMIT StatusNotifierHostRegistered();
        else
            Q_EMIT StatusNotifierHostUnregistered();
    }

    // The services of the items that registered and still live.
    QStringList items;

    QVariant property(const QString& name) {
        QDBusMessage question =
            call(QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
        question << QStringLiteral("org.kde.StatusNotifierItem") << name;
        const QDBusPendingReply<QVariant> reply = finished(question);
        return reply.isError() ? QVariant() : reply.value();
    }
    // As a host does on a click: "Activate" or "ContextMenu". False when the item refused.
    bool click(const QString& method, int x, int y) {
        QDBusMessage message = call(QStringLiteral("org.kde.StatusNotifierItem"), method);
        message << x << y;
        return !finished(message).isError();
    }

public Q_SLOTS:
    void RegisterStatusNotifierItem(const QString& service) {
        items << service;
        gone.addWatchedService(service);
    }

Q_SIGNALS:
    void StatusNotifierHostRegistered();
    void StatusNotifierHostUnregistered();

private:
    QDBusMessage call(const QString& interface, const QString& method) const {
        return QDBusMessage::createMethodCall(items.value(0), QStringLiteral("/StatusNotifierItem"),
                                              interface, method);
    }
    QDBusPendingCall finished(const QDBusMessage& message) {
        QDBusPendingCall pending = bus.asyncCall(message);
        waitUntil([&pending] { return pending.isFinished(); });
        return pending;
    }

    QDBusConnection bus;
    QDBusServiceWatcher gone;
    bool host;
};

} // namespace marrowfin::testsupport
