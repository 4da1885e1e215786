// One request to a desktop portal, which answers when the user has: by the Response signal of an object that
// is named before the call and listened to from then on, so that no answer comes too early to be heard.
// Destroying it while it is unanswered gives it up, and the portal's dialog closes. Main thread.
#pragma once

#include "base/Outcome.h"

#include <QDBusConnection>
#include <QDBusPendingCall>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QVariantMap>
#include <functional>
#include <memory>

class RequestProxy;

namespace marrowfin::dbus {

inline const QString portalService = QStringLiteral("org.freedesktop.portal.Desktop");
inline const QString portalPath = QStringLiteral("/org/freedesktop/portal/desktop");

class PortalRequest final : public QObject {
    Q_OBJECT
public:
    // Makes the portal's call with the options as they are given to it, the request's name among them.
    using Call = std::function<QDBusPendingCall(const QVariantMap& options)>;

    PortalRequest(QDBusConnection bus, QVariantMap options, const Call& call);
    ~PortalRequest() override;

    // Cancelled when the user said no; Unavailable where the desktop has no such portal; Dropped when it went
    // away.
    Outcome<QVariantMap> answer() const { return result.outcome; }

private:
    void listenAt(const QString& path);
    void accepted(const QDBusPendingCall& reply);
    void responded(uint response, const QVariantMap& results);

    QDBusConnection bus;
    OutcomePair<QVariantMap> result = makeOutcome<QVariantMap>();
    std::unique_ptr<RequestProxy> request;
    QDBusServiceWatcher portal;
};

} // namespace marrowfin::dbus
