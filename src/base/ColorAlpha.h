// A colour made translucent. Any thread.
#pragma once

#include <QColor>

namespace marrowfin {

// The colour with this alpha, from 0 to 1, instead of its own.
inline QColor withAlpha(QColor color, double alpha) {
    color.setAlphaF(static_cast<float>(alpha));
    return color;
}

} // namespace marrowfin
