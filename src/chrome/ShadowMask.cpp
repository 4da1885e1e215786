#include "chrome/ShadowMask.h"

#include "chrome/PremultipliedPixel.h"
#include "chrome/Strips.h"
#include "imaging/GaussianKernel.h"

#include <QPainter>
#include <algorithm>
#include <cmath>
#include <cstring>
#include <vector>

namespace marrowfin::chrome {

namespace {
// Wide blurs are computed on a coarser grid: a Gaussian of this many cells is smooth enough to be enlarged.
constexpr double coarseSigma = 4;

// As many numbers as the processor adds at once.
using Vector = float __attribute__((vector_size(16)));
constexpr int lanes = sizeof(Vector) / sizeof(float);

Vector vectorAt(const float* numbers) {
    Vector result;
    std::memcpy(&result, numbers, sizeof result);
    return result;
}

// Blurs the rows of a width x height plane and writes them as columns, so that two calls blur both ways.
void blurTransposed(const std::vector<float>& in, std::vector<float>& out, int width, int height,
                    const std::vector<float>& kernel) {
    const int reach = static_cast<int>(kernel.size() / 2);
    std::vector<float> row(width + 2 * reach + lanes);
    for (int y = 0; y < height; ++y) {
        std::copy_n(in.begin() + static_cast<std::ptrdiff_t>(y) * width, width, row.begin() + reach);
        for (int x = 0; x < width; x += lanes) {
            Vector sums{};
            for (std::size_t k = 0; k < kernel.size(); ++k)
                sums += vectorAt(&row[x + k]) * kernel[k];
            for (int lane = 0; lane < std::min(lanes, width - x); ++lane)
                out[static_cast<std::size_t>(x + lane) * height + y] = sums[lane];
        }
    }
}

// How much of each pixel the path covers. Painted in colour: only there does the toolkit fill an outline
// without handing it to other threads.
QImage covered(const QPainterPath& path, const QTransform& toPixels, const QSize& size) {
    QImage painted(size, QImage::Format_ARGB32_Premultiplied);
    painted.fill(Qt::transparent);
    QPainter painter(&painted);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setTransform(toPixels);
    painter.fillPath(path, Qt::black);
    painter.end();
    QImage result(size, QImage::Format_Alpha8);
    for (int y = 0; y < size.height(); ++y) {
        const auto* pixels = reinterpret_cast<const QRgb*>(painted.constScanLine(y));
        std::transform(pixels, pixels + size.width(), result.scanLine(y),
                       [](QRgb pixel) { return static_cast<uchar>(qAlpha(pixel)); });
    }
    return result;
}
} // namespace

QImage blurredAlpha(const QImage& alpha, double sigma) {
    const int width = alpha.width();
    const int height = alpha.height();
    if (!(sigma > 0) || alpha.isNull())
        return alpha;
    std::vector<float> plane(static_cast<std::size_t>(width) * height);
    for (int y = 0; y < height; ++y)
        std::copy_n(alpha.constScanLine(y), width, plane.begin() + static_cast<std::ptrdiff_t>(y) * width);
    const std::vector<float> kernel = imaging::gaussianKernel(sigma);
    std::vector<float> turned(plane.size());
    blurTransposed(plane, turned, width, height, kernel);
    blurTransposed(turned, plane, height, width, kernel);
    QImage result(width, height, QImage::Format_Alpha8);
    for (int y = 0; y < height; ++y)
        std::transform(plane.begin() + static_cast<std::ptrdiff_t>(y) * width,
                       plane.begin() + static_cast<std::ptrdiff_t>(y + 1) * width, result.scanLine(y),
                       [](float value) { return static_cast<uchar>(std::lround(value)); });
    return result;
}

void ShadowMask::compute(const QPainterPath& path, double radius, double density) {
    ++computed;
    cachedPath = path;
    cachedRadius = radius;
    cachedDensity = density;
    tint = QColor();
    const double cells = std::min(density, coarseSigma / std::max(radius, 1e-6)); // per unit
    const double margin = reach(radius) + 1 / cells;
    const QRectF wanted = path.boundingRect().adjusted(-margin, -margin, margin, margin);
    const QSize size(static_cast<int>(std::ceil(wanted.width() * cells)),
                     static_cast<int>(std::ceil(wanted.height() * cells)));
    area = QRectF(wanted.topLeft(), QSizeF(size) / cells);
    mask = blurredAlpha(
        covered(path, QTransform::fromTranslate(-area.x(), -area.y()) * QTransform::fromScale(cells, cells),
                size),
        radius * cells);
}

void ShadowMask::paint(QPainter& painter, const QPainterPath& path, double radius, const QPointF& offset,
                       const QColor& color, double density, const QRectF& deviceClip, const QRectF& hidden) {
    if (path.isEmpty() || color.alphaF() <= 0)
        return;
    if (radius != cachedRadius || density != cachedDensity || path != cachedPath)
        compute(path, radius, density);
    QColor opaque = color;
    opaque.setAlpha(255);
    if (tint != opaque)
        colorMask(opaque);
    painter.save();
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    // Its edges are far outside of what is seen of it: they need no blending.
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setOpacity(painter.opacity() * color.alphaF());
    const QRectF all = area.translated(offset);
    paintInStrips(painter, onDevice(painter, all, deviceClip), insideOnDevice(painter, hidden), Edges::Whole,
                  [&] { painter.drawImage(all, tinted); });
    painter.restore();
}

void ShadowMask::colorMask(const QColor& color) {
    tint = color;
    tinted = QImage(mask.size(), QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < mask.height(); ++y) {
        auto* pixels = reinterpret_cast<QRgb*>(tinted.scanLine(y));
        std::transform(mask.constScanLine(y), mask.constScanLine(y) + mask.width(), pixels,
                       [whole = color.rgba()](uchar alpha) { return timesAlpha(whole, alpha); });
    }
}

} // namespace marrowfin::chrome
