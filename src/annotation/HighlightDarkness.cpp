#include "annotation/HighlightDarkness.h"

#include "base/Geometry.h"

#include <QColorSpace>
#include <QColorTransform>
#include <algorithm>

namespace marrowfin::annotation {

using namespace imaging;

namespace {

// Some 16 samples along the shorter side tell a dark page from a light one.
int sampleStep(const QRect& area) {
    const int shorter = std::min(area.width(), area.height());
    return shorter >= 16 ? shorter / 16 : 1;
}

double luminance(const QColor& color) {
    return 0.2126 * color.redF() + 0.7152 * color.greenF() + 0.0722 * color.blueF();
}

// Captures without a colour space are taken for sRGB.
QColorTransform toSRgb(const QImage& pixels) {
    const QColorSpace space = pixels.colorSpace();
    return space.isValid() ? space.transformationToColorSpace(QColorSpace(QColorSpace::SRgb))
                           : QColorTransform();
}

double meanLuminance(const QImage& pixels, const QRect& area) {
    const QColorTransform transform = toSRgb(pixels);
    const int step = sampleStep(area);
    double sum = 0;
    int count = 0;
    for (int x = area.left(); x <= area.right(); x += step) {
        for (int y = area.top(); y <= area.bottom(); y += step, ++count)
            sum += luminance(transform.map(pixels.pixelColor(x, y)));
    }
    return sum / count;
}

} // namespace

std::optional<bool> isDarkBackdrop(const Image& image, const QRectF& rect) {
    const std::optional<QSize> pixelSize = realPixelSize(image);
    const QRectF box = standardized(rect);
    const QSizeF size = image.size();
    if (!pixelSize || !isFinite(box) || box.width() < 1.0 || box.height() < 1.0 || !(size.width() > 0) ||
        !(size.height() > 0))
        return std::nullopt;
    const double sx = pixelSize->width() / size.width();
    const double sy = pixelSize->height() / size.height();
    const QRectF scaled(box.x() * sx, box.y() * sy, box.width() * sx, box.height() * sy);
    const std::optional<QRectF> seen = intersection(integral(scaled), image.pixels().rect());
    if (!seen || seen->width() < 1 || seen->height() < 1)
        return std::nullopt;
    return meanLuminance(image.pixels(), seen->toRect()) < 0.5;
}

} // namespace marrowfin::annotation
