// Behaviours that are settled but keep a desktop user from getting what the command promises have a
// correction each, off unless MARROWFIN_CORRECTIONS names it ("all", or a comma list). Read once, on first
// use.
#pragma once

#include <QStringList>

namespace marrowfin {

enum class Correction {
    WindowRectangles, // "window-rectangles": each rectangle of the window selector on its window, front on
                      // top
    ScrollPoint,      // "scroll-point": the wheel event at the selection instead of at its mirrored point
    RecordingArea,    // "recording-area": the selected area instead of its mirror image
    RecordingTake,    // "recording-take": the recording lasts until it is stopped
};

class Corrections {
public:
    static bool isActive(Correction correction);
    // The names of those active, in the order of the enumeration; for the line at start.
    static QStringList activeNames();
    // Tests: takes this text as the variable's value.
    static void override(const QString& value);
    static void reset();
};

} // namespace marrowfin
