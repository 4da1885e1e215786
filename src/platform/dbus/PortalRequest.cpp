#include "platform/dbus/PortalRequest.h"

#include "platform/dbus/RequestProxy.h"

#include <QDBusError>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QUuid>
#include <utility>

namespace marrowfin::dbus {

namespace {

constexpr uint responseSuccess = 0;
constexpr uint responseCancelled = 1;

// Where the portal puts the object of a request that we name.
QString requestPath(const QDBusConnection& bus, const QString& token) {
    const QString sender = bus.baseService().mid(1).replace(u'.', u'_');
    return portalPath + QStringLiteral("/request/") + sender + u'/' + token;
}

Error errorOf(const QDBusError& error) {
    switch (error.type()) {
    case QDBusError::ServiceUnknown:
    case QDBusError::UnknownInterface:
    case QDBusError::UnknownMethod:
    case QDBusError::UnknownObject:
    case QDBusError::Disconnected:
        return {Error::Kind::Unavailable, QStringLiteral("This desktop has no such portal.")};
    default:
        return {Error::Kind::Failed, error.message()};
    }
}

} // namespace

PortalRequest::PortalRequest(QDBusConnection connection, QVariantMap options, const Call& call)
    : bus(std::move(connection)), portal(portalService, bus, QDBusServiceWatcher::WatchForUnregistration) {
    const QString token = QStringLiteral("marrowfin_") + QUuid::createUuid().toString(QUuid::Id128);
    options.insert(QStringLiteral("handle_token"), token);
    listenAt(requestPath(bus, token));
    connect(&portal, &QDBusServiceWatcher::serviceUnregistered, this, [this] {
        result.settler.settle(failure(QStringLiteral("The portal went away."), Error::Kind::Dropped));
    });
    auto* reply = new QDBusPendingCallWatcher(call(options), this);
    connect(reply, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher* done) {
        done->deleteLater();
        accepted(*done);
    });
}

PortalRequest::~PortalRequest() {
    if (!result.settler.isSettled())
        request->Close();
}

void PortalRequest::listenAt(const QString& path) {
    request = std::make_unique<RequestProxy>(portalService, path, bus);
    connect(request.get(), &RequestProxy::Response, this, &PortalRequest::responded);
}

// Portals from before the naming answer with a path of their own.
void PortalRequest::accepted(const QDBusPendingCall& reply) {
    const QDBusPendingReply<QDBusObjectPath> path = reply;
    if (path.isError())
        result.settler.settle(tl::unexpected(errorOf(path.error())));
    else if (path.value().path() != request->path())
        listenAt(path.value().path());
}

void PortalRequest::responded(uint response, const QVariantMap& results) {
    if (response == responseSuccess)
        result.settler.settle(results);
    else if (response == responseCancelled)
        result.settler.settle(cancelled());
    else
        result.settler.settle(failure(QStringLiteral("The portal could not do it.")));
}

} // namespace marrowfin::dbus
