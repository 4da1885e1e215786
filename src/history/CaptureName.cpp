#include "history/CaptureName.h"

#include <QRandomGenerator>
#include <QStringList>
#include <QUuid>
#include <algorithm>
#include <atomic>

namespace marrowfin::history {

namespace {

// Milliseconds since 1970 in the upper 48 bits, a counter in the lower 12: what a time-ordered UUID (version
// 7) holds.
std::atomic<quint64> lastTick{0};

quint64 nextTick(const QDateTime& now) {
    const quint64 clock = static_cast<quint64>(std::max<qint64>(now.toMSecsSinceEpoch(), 0)) << 12;
    quint64 last = lastTick.load();
    quint64 next = 0;
    do
        next = std::max(clock, last + 1);
    while (!lastTick.compare_exchange_weak(last, next));
    return next;
}

QUuid makeUuid(quint64 tick) {
    const quint64 random = QRandomGenerator::global()->generate64();
    const auto octet = [random](int index) { return static_cast<uchar>(random >> (8 * index)); };
    return {static_cast<uint>(tick >> 28),
            static_cast<ushort>(tick >> 12),
            static_cast<ushort>(0x7000 | (tick & 0xfff)),
            static_cast<uchar>(0x80 | (octet(0) & 0x3f)),
            octet(1),
            octet(2),
            octet(3),
            octet(4),
            octet(5),
            octet(6),
            octet(7)};
}

} // namespace

QString CaptureName::fileName() const {
    return QStringLiteral("capture_%1_%2.png").arg(seconds).arg(uuid);
}

CaptureName makeCaptureName(const QDateTime& now) {
    const QUuid uuid = makeUuid(nextTick(now));
    return {now.toMSecsSinceEpoch() / 1000, uuid.toString(QUuid::WithoutBraces).toUpper()};
}

std::optional<CaptureName> parseCaptureName(const QString& fileName) {
    const QStringList parts = fileName.split(u'_');
    if (parts.size() != 3 || parts[0] != QLatin1String("capture") ||
        !parts[2].endsWith(QLatin1String(".png")))
        return std::nullopt;
    bool isNumber = false;
    const CaptureName name{parts[1].toLongLong(&isNumber), parts[2].chopped(4)};
    if (!isNumber || QUuid(name.uuid).isNull())
        return std::nullopt;
    return name;
}

} // namespace marrowfin::history
