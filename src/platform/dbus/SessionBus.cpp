#include "platform/dbus/SessionBus.h"

#include "base/Log.h"
#include "platform/dbus/BusGreeting.h"

#include <QCoreApplication>
#include <QPointer>
#include <QSocketNotifier>
#include <memory>
#include <utility>
#include <vector>

namespace marrowfin::dbus {

namespace {

// A bus answers within a millisecond; one on a machine that is starting up gets its time.
constexpr int patienceMilliseconds = 2000;
constexpr const char* addressVariable = "DBUS_SESSION_BUS_ADDRESS";
const QString lateName = QStringLiteral("marrowfin-session");

// What the bus is to this process, known before there is an application.
struct Bus {
    struct Waiting {
        QPointer<QObject> context;
        std::function<void()> block;
    };
    std::unique_ptr<BusGreeting> silent;
    QByteArray address;
    bool answeredLate = false;
    std::vector<Waiting> waiting;
};
Bus bus;

// The bus is alive now, so that connecting takes no time.
void becomeConnected() {
    bus.silent.reset();
    if (!QDBusConnection::connectToBus(QString::fromLocal8Bit(bus.address), lateName).isConnected())
        return;
    bus.answeredLate = true;
    logLine(QStringLiteral("[Marrowfin] The session bus answers now"));
    for (const Bus::Waiting& waiting : std::exchange(bus.waiting, {}))
        if (waiting.context)
            waiting.block();
}

void hear(QSocketNotifier* notifier) {
    notifier->setEnabled(false);
    notifier->deleteLater();
    if (bus.silent && bus.silent->wait(0) == BusGreeting::Answer::Given)
        becomeConnected();
}

} // namespace

void meetSessionBus() {
    const QByteArray address = qgetenv(addressVariable);
    std::optional<BusGreeting> greeting = BusGreeting::begin(address);
    if (!greeting || greeting->wait(patienceMilliseconds) != BusGreeting::Answer::None)
        return;
    logLine(QStringLiteral("[Marrowfin] The session bus doesn't answer: starting without it"));
    bus.silent = std::make_unique<BusGreeting>(std::move(*greeting));
    bus.address = address;
    qputenv(addressVariable, "disabled:");
}

void listenToSessionBus() {
    if (!bus.silent)
        return;
    // The toolkit asks once for its bus and keeps what it got.
    QDBusConnection::sessionBus();
    qputenv(addressVariable, bus.address);
    if (bus.silent->socket() < 0)
        return;
    auto* notifier = new QSocketNotifier(bus.silent->socket(), QSocketNotifier::Read, qApp);
    QObject::connect(notifier, &QSocketNotifier::activated, notifier, [notifier] { hear(notifier); });
}

QDBusConnection sessionBus() {
    return bus.answeredLate ? QDBusConnection(lateName) : QDBusConnection::sessionBus();
}

void whenBusAnswers(QObject& context, std::function<void()> block) {
    if (sessionBus().isConnected())
        block();
    else
        bus.waiting.push_back({&context, std::move(block)});
}

} // namespace marrowfin::dbus
