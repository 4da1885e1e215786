// Requests to a portal that is played on the session's bus.
#include "platform/dbus/PortalRequest.h"
#include "desktop/support/Waiting.h"
#include "platform/dbus/SessionBus.h"

#include <QDBusContext>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <gtest/gtest.h>
#include <memory>

using namespace marrowfin;
using namespace marrowfin::testsupport;
using dbus::PortalRequest;

namespace {

// The object that a request is while it is unanswered.
class PlayedRequest : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Request")
public:
    bool closed = false;

public Q_SLOTS:
    void Close() { closed = true; }

Q_SIGNALS:
    void Response(uint response, const QVariantMap& results);
};

class PlayedPortal : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Played")
public:
    PlayedPortal()
        : bus(QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("played-portal"))) {
        bus.registerObject(dbus::portalPath, this, QDBusConnection::ExportAllSlots);
        bus.registerService(dbus::portalService);
    }
    ~PlayedPortal() override {
        bus.unregisterService(dbus::portalService);
        QDBusConnection::disconnectFromBus(QStringLiteral("played-portal"));
    }

    // In the same moment as the call's own reply, before it, when it is to be early.
    enum class When { Early, Later } when = When::Later;
    // As portals did before requests were named by those who make them.
    QString pathOfItsOwn;
    QString refusal;
    PlayedRequest request;
    QVariantMap options;
    uint response = 0;

    void respond() {
        Q_EMIT request.Response(response, {{QStringLiteral("uri"), QStringLiteral("file:///a")}});
    }

public Q_SLOTS:
    QDBusObjectPath Ask(const QVariantMap& given) {
        options = given;
        if (!refusal.isEmpty()) {
            sendErrorReply(refusal, QStringLiteral("No."));
            return {};
        }
        QString path = pathOfItsOwn;
        if (path.isEmpty())
            path = dbus::portalPath + QStringLiteral("/request/") +
                   message().service().mid(1).replace(u'.', u'_') + u'/' +
                   given.value(QStringLiteral("handle_token")).toString();
        bus.registerObject(path, &request,
                           QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals);
        if (when == When::Early)
            respond();
        return QDBusObjectPath(path);
    }

private:
    QDBusConnection bus;
};

class Portal : public testing::Test {
protected:
    std::unique_ptr<PortalRequest> ask() {
        return std::make_unique<PortalRequest>(
            dbus::sessionBus(), QVariantMap{{QStringLiteral("interactive"), true}},
            [](const QVariantMap& options) {
                QDBusMessage call = QDBusMessage::createMethodCall(
                    dbus::portalService, dbus::portalPath, QStringLiteral("org.freedesktop.portal.Played"),
                    QStringLiteral("Ask"));
                call << options;
                return dbus::sessionBus().asyncCall(call);
            });
    }
    bool arrived(const PlayedPortal& portal) {
        return waitUntil([&portal] { return !portal.options.isEmpty(); });
    }
};

} // namespace

TEST_F(Portal, answersWithItsResults) {
    PlayedPortal portal;
    const auto request = ask();
    ASSERT_TRUE(arrived(portal));
    EXPECT_EQ(portal.options.value(QStringLiteral("interactive")), QVariant(true));
    portal.respond();
    const Result<QVariantMap> answer = await(request->answer());
    ASSERT_TRUE(answer) << answer.error().message.toStdString();
    EXPECT_EQ(answer->value(QStringLiteral("uri")), QVariant(QStringLiteral("file:///a")));
}

TEST_F(Portal, thatAnswersBeforeItsReplyIsHeard) {
    PlayedPortal portal;
    portal.when = PlayedPortal::When::Early;
    const auto request = ask();
    EXPECT_TRUE(await(request->answer()));
}

TEST_F(Portal, tellsAChangeOfMindFromAFailure) {
    PlayedPortal portal;
    for (const auto& [response, kind] :
         {std::pair(1U, Error::Kind::Cancelled), std::pair(2U, Error::Kind::Failed)}) {
        portal.options.clear();
        portal.response = response;
        const auto request = ask();
        ASSERT_TRUE(arrived(portal));
        portal.respond();
        const Result<QVariantMap> answer = await(request->answer());
        ASSERT_FALSE(answer);
        EXPECT_EQ(answer.error().kind, kind);
    }
}

TEST_F(Portal, closesWhatIsGivenUpAndNothingElse) {
    PlayedPortal portal;
    auto request = ask();
    ASSERT_TRUE(arrived(portal));
    portal.respond();
    ASSERT_TRUE(await(request->answer()));
    request.reset();
    portal.options.clear();
    request = ask();
    ASSERT_TRUE(arrived(portal));
    EXPECT_FALSE(portal.request.closed);
    const Outcome<QVariantMap> answer = request->answer();
    request.reset();
    EXPECT_TRUE(waitUntil([&portal] { return portal.request.closed; }));
    EXPECT_EQ(await(answer).error().kind, Error::Kind::Dropped);
}

TEST_F(Portal, ofAnOlderKindIsHeardWhereItSays) {
    PlayedPortal portal;
    portal.pathOfItsOwn = QStringLiteral("/org/freedesktop/portal/desktop/request/its/own");
    const auto request = ask();
    ASSERT_TRUE(arrived(portal));
    bool answered = false;
    request->answer().then([&answered](const Result<QVariantMap>& answer) { answered = answer.has_value(); });
    // The subscription takes its way to the bus.
    EXPECT_TRUE(waitUntil([&] {
        portal.respond();
        return answered;
    }));
}

TEST_F(Portal, thatIsNotThereOrRefusesSaysSo) {
    const auto unanswered = ask();
    EXPECT_EQ(await(unanswered->answer()).error().kind, Error::Kind::Unavailable);
    PlayedPortal portal;
    portal.refusal = QStringLiteral("org.freedesktop.portal.Error.NotAllowed");
    const auto refused = ask();
    EXPECT_EQ(await(refused->answer()).error().kind, Error::Kind::Failed);
}

TEST_F(Portal, thatGoesAwayDropsTheRequest) {
    auto portal = std::make_unique<PlayedPortal>();
    const auto request = ask();
    ASSERT_TRUE(arrived(*portal));
    portal.reset();
    EXPECT_EQ(await(request->answer()).error().kind, Error::Kind::Dropped);
}

#include "PortalRequestTest.moc"
