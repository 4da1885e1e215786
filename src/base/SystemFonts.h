// The one place where fonts are made. Sizes are logical pixels and may be fractional (11.5, 19.2); they don't
// depend on any image's or screen's DPI. No hinting, so that a line of text has the same width at every
// scale. GUI thread.
#pragma once

#include <QFont>

namespace marrowfin {

// Inter, or the desktop's own sans-serif where Inter isn't installed (one log line says so).
QFont systemFont(double size, QFont::Weight weight = QFont::Normal);
// JetBrains Mono, or the desktop's own fixed-width font likewise.
QFont monospacedSystemFont(double size, QFont::Weight weight = QFont::Normal);
// Digits of equal width, for counters and sizes.
QFont monospacedDigitSystemFont(double size, QFont::Weight weight = QFont::Normal);

} // namespace marrowfin
