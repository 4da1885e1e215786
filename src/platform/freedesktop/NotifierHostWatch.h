// Whether the desktop shows status items over D-Bus now: a watcher is on the bus, and a host has registered
// with it. Both may come late, go and come back. Asks without ever waiting. Main thread.
#pragma once

#include "platform/dbus/NotifierWatcherProxy.h"

#include <QDBusServiceWatcher>
#include <QObject>
#include <QString>
#include <memory>

namespace marrowfin::freedesktop {

inline const QString notifierWatcherService = QStringLiteral("org.kde.StatusNotifierWatcher");
inline const QString notifierWatcherPath = QStringLiteral("/StatusNotifierWatcher");

class NotifierHostWatch : public QObject {
    Q_OBJECT
public:
    enum class Host {
        Unknown, // not told yet
        Absent,
        Present,
    };

    // The first answer comes by changed(), from the event loop.
    NotifierHostWatch();

    Host host() const { return current; }

Q_SIGNALS:
    // Also when a watcher was replaced by another one: items register anew.
    void changed();

private:
    void begin();
    void ask();
    void askWatcher(const QString& owner, int number);
    void heard(const QDBusError& error, bool hasHost, int number);
    void setHost(Host host);

    std::unique_ptr<NotifierWatcherProxy> watcher;
    QDBusServiceWatcher services;
    Host current = Host::Unknown;
    int latestQuestion = 0;
};

} // namespace marrowfin::freedesktop
