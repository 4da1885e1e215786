// How well one opaque colour is told from another, as the guidelines for readable text count it: 1 for the
// same colour, 21 for black on white, 4.5 or more for text. Any thread.
#pragma once

#include <QColor>
#include <algorithm>
#include <cmath>

namespace marrowfin::testsupport {

inline double luminance(const QColor& color) {
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

inline double contrast(const QColor& a, const QColor& b) {
    const double first = luminance(a);
    const double second = luminance(b);
    return (std::max(first, second) + 0.05) / (std::min(first, second) + 0.05);
}

} // namespace marrowfin::testsupport
