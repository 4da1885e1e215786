// The line metrics that ink text is drawn with and edited with: one source, so that an edit stands exactly
// where its ink will be. In the unit of the font's size. GUI thread.
#pragma once

#include <QFont>

namespace marrowfin {

// From one baseline to the next.
double defaultLineHeightForFont(const QFont& font);
// From the top of a line to its baseline.
double defaultBaselineOffsetForFont(const QFont& font);

struct LineMetrics {
    double height = 0;
    double baseline = 0;
};
// The metrics of the text tool's font at this size. Remembered by size: hit tests ask for each text there is.
// Zero for a size that no text can have (isTextSize).
LineMetrics textLineMetrics(double fontSize);

// The text tool's font at this size.
QFont textFont(double fontSize);
// Sizes beyond these are refused: such a text has no size and paints nothing.
bool isTextSize(double fontSize);

} // namespace marrowfin
