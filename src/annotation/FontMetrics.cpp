#include "annotation/FontMetrics.h"

#include "base/Shared.h"

#include <QFontMetricsF>

namespace marrowfin::annotation {

namespace {

constexpr double largestTextSize = 4096;

// Measured once: a press on the canvas asks for the metrics of each text there is.
struct MetricsPerPoint {
    LineMetrics metrics{defaultLineHeightForFont(textFont(1)), defaultBaselineOffsetForFont(textFont(1))};
};

} // namespace

double defaultLineHeightForFont(const ExactFont& font) {
    const QFontMetricsF metrics(font.font);
    return (metrics.ascent() + metrics.descent() + metrics.leading()) * font.scale;
}

double defaultBaselineOffsetForFont(const ExactFont& font) {
    return QFontMetricsF(font.font).ascent() * font.scale;
}

ExactFont textFont(double fontSize) {
    return exactSystemFont(fontSize, QFont::Medium);
}

bool isTextSize(double fontSize) {
    return fontSize > 0 && fontSize <= largestTextSize;
}

LineMetrics textLineMetrics(double fontSize) {
    if (!isTextSize(fontSize))
        return {};
    const LineMetrics& perPoint = Shared<MetricsPerPoint>::instance().metrics;
    return {perPoint.height * fontSize, perPoint.baseline * fontSize};
}

} // namespace marrowfin::annotation
