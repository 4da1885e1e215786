#include "annotation/FontMetrics.h"

#include "base/Shared.h"
#include "base/SystemFonts.h"

#include <QFontMetricsF>
#include <QHash>

namespace marrowfin {

namespace {

constexpr double largestTextSize = 4096;
// Sizes come from a style bar, so there are few; the bound is for documents made to be awkward.
constexpr qsizetype rememberedSizes = 256;

struct KnownMetrics {
    QHash<double, LineMetrics> bySize;
};

} // namespace

double defaultLineHeightForFont(const QFont& font) {
    const QFontMetricsF metrics(font);
    return metrics.ascent() + metrics.descent() + metrics.leading();
}

double defaultBaselineOffsetForFont(const QFont& font) {
    return QFontMetricsF(font).ascent();
}

LineMetrics textLineMetrics(double fontSize) {
    if (!isTextSize(fontSize))
        return {};
    QHash<double, LineMetrics>& known = Shared<KnownMetrics>::instance().bySize;
    if (const auto found = known.constFind(fontSize); found != known.constEnd())
        return *found;
    if (known.size() >= rememberedSizes)
        known.clear();
    const QFont font = textFont(fontSize);
    const LineMetrics metrics{defaultLineHeightForFont(font), defaultBaselineOffsetForFont(font)};
    known.insert(fontSize, metrics);
    return metrics;
}

QFont textFont(double fontSize) {
    return systemFont(fontSize, QFont::Medium);
}

bool isTextSize(double fontSize) {
    return fontSize > 0 && fontSize <= largestTextSize;
}

} // namespace marrowfin
