#include "base/SystemColors.h"

namespace marrowfin {

QColor systemColor(SystemColor name, ColorScheme scheme) {
    const bool dark = scheme == ColorScheme::Dark;
    const auto either = [dark](QColor light, QColor darkValue) { return dark ? darkValue : light; };
    switch (name) {
    case SystemColor::red:
        return either(QColor(255, 59, 48), QColor(255, 69, 58));
    case SystemColor::orange:
        return either(QColor(255, 149, 0), QColor(255, 159, 10));
    case SystemColor::yellow:
        // No blue at all: multiplied over white it stays the colour that people know from a marker.
        return either(QColor(255, 204, 0), QColor(255, 214, 0));
    case SystemColor::green:
        return either(QColor(40, 205, 65), QColor(50, 215, 75));
    case SystemColor::blue:
        return either(QColor(0, 122, 255), QColor(10, 132, 255));
    case SystemColor::purple:
        return either(QColor(175, 82, 222), QColor(191, 90, 242));
    case SystemColor::pink:
        return either(QColor(255, 45, 85), QColor(255, 55, 95));
    case SystemColor::gray:
        return either(QColor(142, 142, 147), QColor(152, 152, 157));
    case SystemColor::label:
    case SystemColor::controlText:
        return either(QColor(0, 0, 0, 217), QColor(255, 255, 255, 217));
    case SystemColor::secondaryLabel:
        return either(QColor(0, 0, 0, 153), QColor(255, 255, 255, 153));
    case SystemColor::tertiaryLabel:
        return either(QColor(0, 0, 0, 77), QColor(255, 255, 255, 77));
    case SystemColor::controlAccent:
        return either(QColor(0, 122, 255), QColor(10, 132, 255));
    case SystemColor::accentGround:
        return either(QColor(0, 95, 222), QColor(0, 96, 226));
    case SystemColor::windowBackground:
        return either(QColor(246, 246, 246), QColor(40, 40, 40));
    case SystemColor::separator:
        return either(QColor(0, 0, 0, 26), QColor(255, 255, 255, 26));
    case SystemColor::underPageBackground:
        return either(QColor(200, 200, 200), QColor(40, 40, 40));
    case SystemColor::black:
        return QColor(0, 0, 0);
    case SystemColor::white:
        return QColor(255, 255, 255);
    }
    return {};
}

} // namespace marrowfin
