#include "panel/CaptionText.h"

#include <array>
#include <cmath>

namespace marrowfin::panel {

namespace {
struct Unit {
    const char* name;
    double bytes;
    int decimals;
};
constexpr std::array units{Unit{"KB", 1e3, 0}, Unit{"MB", 1e6, 1}, Unit{"GB", 1e9, 2}, Unit{"TB", 1e12, 2},
                           Unit{"PB", 1e15, 2}};

QString withoutTrailingZeros(QString number) {
    while (number.contains(u'.') && (number.endsWith(u'0') || number.endsWith(u'.')))
        number.chop(1);
    return number;
}
} // namespace

QString fileByteCount(qint64 bytes) {
    if (bytes <= 0)
        return QStringLiteral("Zero KB");
    if (bytes < 1000)
        return bytes == 1 ? QStringLiteral("1 byte") : QStringLiteral("%1 bytes").arg(bytes);
    for (const Unit& unit : units) {
        const double step = std::pow(10.0, unit.decimals);
        const double amount = std::round(static_cast<double>(bytes) / unit.bytes * step) / step;
        // 999.96 MB would read "1000 MB": it is the next unit's.
        if (amount < 1000 || &unit == &units.back())
            return withoutTrailingZeros(QString::number(amount, 'f', unit.decimals)) + u' ' +
                   QLatin1String(unit.name);
    }
    return {};
}

CaptionText captionText(const std::optional<QSize>& pixelSize, std::optional<qint64> byteCount,
                        bool showsHint) {
    CaptionText text;
    if (!pixelSize)
        return text;
    text.facts = QStringLiteral("%1 \u00D7 %2").arg(pixelSize->width()).arg(pixelSize->height());
    if (byteCount)
        text.facts += QStringLiteral(" \u00B7 ") + fileByteCount(*byteCount);
    if (showsHint)
        text.hint = QStringLiteral("  \u2014  Drag out to share");
    return text;
}

} // namespace marrowfin::panel
