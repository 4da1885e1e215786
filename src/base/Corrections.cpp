#include "base/Corrections.h"

#include <array>
#include <optional>

namespace marrowfin {

namespace {

struct Named {
    Correction correction;
    const char* name;
};
constexpr std::array named{
    Named{Correction::WindowRectangles, "window-rectangles"},
    Named{Correction::ScrollPoint, "scroll-point"},
    Named{Correction::RecordingArea, "recording-area"},
    Named{Correction::RecordingTake, "recording-take"},
};

std::optional<QStringList> chosen;

QStringList parse(const QString& value) {
    QStringList names;
    for (const QString& part : value.split(u',', Qt::SkipEmptyParts))
        names << part.trimmed();
    return names;
}

const QStringList& chosenNames() {
    if (!chosen)
        chosen = parse(qEnvironmentVariable("MARROWFIN_CORRECTIONS"));
    return *chosen;
}

} // namespace

bool Corrections::isActive(Correction correction) {
    const QStringList& names = chosenNames();
    if (names.contains(QLatin1String("all")))
        return true;
    for (const Named& entry : named)
        if (entry.correction == correction)
            return names.contains(QLatin1String(entry.name));
    return false;
}

QStringList Corrections::activeNames() {
    QStringList active;
    for (const Named& entry : named)
        if (isActive(entry.correction))
            active << QLatin1String(entry.name);
    return active;
}

void Corrections::override(const QString& value) {
    chosen = parse(value);
}
void Corrections::reset() {
    chosen.reset();
}

} // namespace marrowfin
