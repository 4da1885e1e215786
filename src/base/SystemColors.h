// The named colours that the interface and the ink are drawn in, each with its light and its dark value.
// Ink takes the light value once, when a record is made; only chrome follows the appearance. Any thread.
#pragma once

#include <QColor>

namespace marrowfin {

enum class ColorScheme { Light, Dark };

enum class SystemColor {
    red,
    orange,
    yellow,
    green,
    blue,
    purple,
    pink,
    gray,
    label,          // labelColor
    secondaryLabel, // secondaryLabelColor
    tertiaryLabel,  // tertiaryLabelColor
    controlText,    // controlTextColor
    controlAccent,  // controlAccentColor
    accentGround,   // the accent, dark enough for white text on it, also when it is lit up a little
    windowBackground,
    separator,
    underPageBackground, // what an image is shown on
    black,
    white,
};

QColor systemColor(SystemColor name, ColorScheme scheme = ColorScheme::Light);

} // namespace marrowfin
