#include "settings/PanelAutoClose.h"

namespace marrowfin::settings {

QString rawValue(PanelAutoClose interval) {
    switch (interval) {
    case PanelAutoClose::fiveSeconds:
        return QStringLiteral("5 seconds");
    case PanelAutoClose::tenSeconds:
        return QStringLiteral("10 seconds");
    case PanelAutoClose::fifteenSeconds:
        return QStringLiteral("15 seconds");
    case PanelAutoClose::thirtySeconds:
        return QStringLiteral("30 seconds");
    case PanelAutoClose::oneMinute:
        return QStringLiteral("1 minute");
    case PanelAutoClose::never:
        return QStringLiteral("Never");
    }
    return {};
}

std::optional<PanelAutoClose> panelAutoClose(const QString& raw) {
    for (const PanelAutoClose interval : allPanelAutoCloses)
        if (rawValue(interval) == raw)
            return interval;
    return std::nullopt;
}

std::optional<int> seconds(PanelAutoClose interval) {
    switch (interval) {
    case PanelAutoClose::fiveSeconds:
        return 5;
    case PanelAutoClose::tenSeconds:
        return 10;
    case PanelAutoClose::fifteenSeconds:
        return 15;
    case PanelAutoClose::thirtySeconds:
        return 30;
    case PanelAutoClose::oneMinute:
        return 60;
    case PanelAutoClose::never:
        return std::nullopt;
    }
    return std::nullopt;
}

} // namespace marrowfin::settings
