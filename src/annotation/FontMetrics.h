// The line metrics that ink text is drawn with and edited with: one source, so that an edit stands exactly
// where its ink will be. In the unit of the font's size. GUI thread.
#pragma once

#include "base/SystemFonts.h"

namespace marrowfin::annotation {

// From one baseline to the next.
double defaultLineHeightForFont(const ExactFont& font);
// From the top of a line to its baseline.
double defaultBaselineOffsetForFont(const ExactFont& font);

// The text tool's font at this size.
ExactFont textFont(double fontSize);
// A text of another size is refused: it has no extent and paints nothing.
bool isTextSize(double fontSize);

struct LineMetrics {
    double height = 0;
    double baseline = 0;
};
// The metrics of textFont at this size; both grow with the size alone. Zero for a size that is refused.
LineMetrics textLineMetrics(double fontSize);

} // namespace marrowfin::annotation
