// How long a capture's card stays before it closes by itself. Values; any thread.
#pragma once

#include <QString>
#include <array>
#include <optional>

namespace marrowfin::settings {

enum class PanelAutoClose { fiveSeconds, tenSeconds, fifteenSeconds, thirtySeconds, oneMinute, never };

// In the order in which they are offered.
inline constexpr std::array allPanelAutoCloses{PanelAutoClose::fiveSeconds,    PanelAutoClose::tenSeconds,
                                               PanelAutoClose::fifteenSeconds, PanelAutoClose::thirtySeconds,
                                               PanelAutoClose::oneMinute,      PanelAutoClose::never};

// At once the stored form and the title on screen: a change of wording is a change of file format.
QString rawValue(PanelAutoClose interval);
// Nothing for an unknown string.
std::optional<PanelAutoClose> panelAutoClose(const QString& rawValue);
// Nothing for never: such a card has no timer.
std::optional<int> seconds(PanelAutoClose interval);

} // namespace marrowfin::settings
