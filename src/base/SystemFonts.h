// The one place where fonts are made. Sizes are logical pixels and may be fractional (11.5, 19.2); they don't
// depend on any image's or screen's DPI. No hinting, so that a line of text has the same width at every
// scale. GUI thread.
#pragma once

#include <QFont>

namespace marrowfin {

// For widgets, at the nearest whole pixel: the toolkit's font engine cuts fractions off. Inter, or the
// desktop's own sans-serif where Inter isn't installed (one log line says so).
QFont systemFont(double size, QFont::Weight weight = QFont::Normal);
// JetBrains Mono, or the desktop's own fixed-width font likewise.
QFont monospacedSystemFont(double size, QFont::Weight weight = QFont::Normal);
// Digits of equal width, for counters and sizes.
QFont monospacedDigitSystemFont(double size, QFont::Weight weight = QFont::Normal);

// The same faces at exactly the size asked for. Text is laid out in `font`, which is large, and everything
// that comes of it is multiplied by `scale`: measures by hand, painting by scaling the painter. Glyphs are
// rendered at the size they get, so nothing blurs.
struct ExactFont {
    QFont font;
    double scale = 1;
};
ExactFont exactSystemFont(double size, QFont::Weight weight = QFont::Normal);
ExactFont exactMonospacedSystemFont(double size, QFont::Weight weight = QFont::Normal);

} // namespace marrowfin
