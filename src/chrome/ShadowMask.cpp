#include "chrome/ShadowMask.h"

#include "base/Geometry.h"

#include <QPainter>
#include <algorithm>
#include <cmath>
#include <vector>

namespace marrowfin::chrome {

namespace {
// Wide blurs are computed on a coarser grid: a Gaussian of this many cells is smooth enough to be enlarged.
constexpr double coarseSigma = 4;

std::vector<float> gaussianKernel(double sigma) {
    const int reach = std::max(1, static_cast<int>(std::ceil(3 * sigma)));
    std::vector<float> kernel(2 * reach + 1);
    float sum = 0;
    for (int i = -reach; i <= reach; ++i)
        sum += kernel[i + reach] = static_cast<float>(std::exp(-i * i / (2 * sigma * sigma)));
    for (float& weight : kernel)
        weight /= sum;
    return kernel;
}

// Blurs the rows of a width x height plane and writes them as columns, so that two calls blur both ways.
void blurTransposed(const std::vector<float>& in, std::vector<float>& out, int width, int height,
                    const std::vector<float>& kernel) {
    const int reach = static_cast<int>(kernel.size() / 2);
    std::vector<float> row(width + 2 * reach);
    std::vector<float> sums(width);
    for (int y = 0; y < height; ++y) {
        std::copy_n(in.begin() + static_cast<std::ptrdiff_t>(y) * width, width, row.begin() + reach);
        std::fill(sums.begin(), sums.end(), 0.0F);
        for (std::size_t k = 0; k < kernel.size(); ++k)
            for (int x = 0; x < width; ++x)
                sums[x] += row[x + k] * kernel[k];
        for (int x = 0; x < width; ++x)
            out[static_cast<std::size_t>(x) * height + y] = sums[x];
    }
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
    const std::vector<float> kernel = gaussianKernel(sigma);
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
    QImage outline(size, QImage::Format_Alpha8);
    outline.fill(0);
    QPainter painter(&outline);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(cells, cells);
    painter.translate(-area.topLeft());
    painter.fillPath(path, Qt::black);
    painter.end();
    mask = blurredAlpha(outline, radius * cells);
}

void ShadowMask::paint(QPainter& painter, const QPainterPath& path, double radius, const QPointF& offset,
                       const QColor& color, double density, const QRectF& hidden) {
    if (path.isEmpty() || color.alphaF() <= 0)
        return;
    if (radius != cachedRadius || density != cachedDensity || path != cachedPath)
        compute(path, radius, density);
    QColor opaque = color;
    opaque.setAlpha(255);
    if (tint != opaque) {
        tint = opaque;
        tinted = QImage(mask.size(), QImage::Format_ARGB32_Premultiplied);
        tinted.fill(opaque);
        QPainter tinting(&tinted);
        tinting.setCompositionMode(QPainter::CompositionMode_DestinationIn);
        tinting.drawImage(0, 0, mask);
    }
    painter.save();
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.setOpacity(painter.opacity() * color.alphaF());
    const QRectF all = area.translated(offset);
    if (!hidden.isEmpty()) {
        const QRect whole = integral(all).toRect();
        painter.setClipRegion(QRegion(whole).subtracted(QRegion(hidden.toAlignedRect())), Qt::IntersectClip);
    }
    painter.drawImage(all, tinted);
    painter.restore();
}

} // namespace marrowfin::chrome
