#include "platform/freedesktop/NotifierHostWatch.h"

#include "base/Log.h"
#include "base/Outcome.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QPointer>

namespace marrowfin::freedesktop {

NotifierHostWatch::NotifierHostWatch() {
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        postToMain([guard = QPointer(this)] {
            if (guard)
                guard->setHost(Host::Absent);
        });
        return;
    }
    services.setConnection(bus);
    services.setWatchMode(QDBusServiceWatcher::WatchForOwnerChange);
    services.addWatchedService(notifierWatcherService);
    connect(&services, &QDBusServiceWatcher::serviceRegistered, this, &NotifierHostWatch::ask);
    connect(&services, &QDBusServiceWatcher::serviceUnregistered, this, [this] {
        ++latestQuestion;
        setHost(Host::Absent);
    });
    for (const char* signal : {"StatusNotifierHostRegistered", "StatusNotifierHostUnregistered"})
        bus.connect(notifierWatcherService, notifierWatcherPath, notifierWatcherService,
                    QString::fromLatin1(signal), this, SLOT(ask()));
    ask();
}

void NotifierHostWatch::ask() {
    QDBusMessage question = QDBusMessage::createMethodCall(notifierWatcherService, notifierWatcherPath,
                                                           QStringLiteral("org.freedesktop.DBus.Properties"),
                                                           QStringLiteral("Get"));
    question << notifierWatcherService << QStringLiteral("IsStatusNotifierHostRegistered");
    // Asking must not start a watcher on desktops that only have one installed.
    question.setAutoStartService(false);
    auto* reply = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(question), this);
    connect(reply, &QDBusPendingCallWatcher::finished, this, [this, number = ++latestQuestion](auto* done) {
        done->deleteLater();
        if (number != latestQuestion)
            return;
        const QDBusPendingReply<QVariant> answer = *done;
        // A watcher that is there and doesn't answer is no reason to put up a second kind of icon beside its
        // own.
        if (answer.isError() && answer.error().type() == QDBusError::NoReply)
            logLine(QStringLiteral(
                "[Marrowfin] The desktop's status area doesn't answer: no status icon for now"));
        else
            setHost(!answer.isError() && answer.value().toBool() ? Host::Present : Host::Absent);
    });
}

void NotifierHostWatch::setHost(Host host) {
    if (host == current && host == Host::Absent)
        return;
    current = host;
    Q_EMIT changed();
}

} // namespace marrowfin::freedesktop
