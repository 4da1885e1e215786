#include "panel/Thumbnail.h"

#include "base/Geometry.h"
#include "imaging/GaussianKernel.h"

#include <QPainter>
#include <algorithm>
#include <cmath>
#include <vector>

namespace marrowfin::panel {

using namespace imaging;

namespace {
constexpr double sharpDensity = 2;
constexpr int blurWidth = 72;
constexpr double blurSigma = 8;

bool hasArea(const QSizeF& size) {
    return size.width() > 0 && size.height() > 0;
}

// Whole but for the last bits of a product: such a side isn't a point longer.
double cleaned(double value) {
    return std::fabs(value - std::round(value)) < 1e-9 ? std::round(value) : value;
}

QRectF centered(const QSizeF& exact, const QRectF& bounds) {
    const QSizeF size(cleaned(exact.width()), cleaned(exact.height()));
    return integral(QRectF(bounds.center() - QPointF(size.width() / 2, size.height() / 2), size));
}

// The same pixels without a copy, some rows of them.
QImage rows(const QImage& image, int first, int count) {
    return QImage(image.constScanLine(first), image.width(), count, image.bytesPerLine(), image.format());
}

// A large picture made smaller by an even factor, each block of pixels one average. Of each row that is read,
// half the pixels are, those of the next row shifted by one, so that thin lines count the same in either
// direction; of large blocks every other row is enough. So a capture of a huge screen costs no more than a
// glance. Only for 32-bit pixels that are opaque or premultiplied.
QImage averagedBlocks(const QImage& image, int factor) {
    QImage result(image.width() / factor, image.height() / factor, image.format());
    constexpr quint32 evenBytes = 0x00ff00ff;
    const int step = factor >= 4 ? 2 : 1;
    const auto samples = static_cast<quint32>((factor / step) * (factor / step));
    const auto average = [samples](quint32 sum) { return (sum + samples / 2) / samples; };
    for (int y = 0; y < result.height(); ++y) {
        auto* out = reinterpret_cast<quint32*>(result.scanLine(y));
        for (int x = 0; x < result.width(); ++x) {
            quint32 even = 0; // two channels each, 16 bits apart
            quint32 odd = 0;
            for (int row = 0; row < factor; row += step) {
                const auto* line = reinterpret_cast<const quint32*>(image.constScanLine(y * factor + row));
                for (int i = x * factor + ((row / 2) & (step - 1)); i < (x + 1) * factor; i += step) {
                    even += line[i] & evenBytes;
                    odd += (line[i] >> 8) & evenBytes;
                }
            }
            out[x] = average(even & 0xffff) | average(even >> 16) << 16 | average(odd & 0xffff) << 8 |
                     average(odd >> 16) << 24;
        }
    }
    return result;
}

// What smooth scaling may start from: not the whole of a picture that is many times too large.
QImage coarser(const QImage& image, const QSize& target) {
    const bool plain =
        image.format() == QImage::Format_RGB32 || image.format() == QImage::Format_ARGB32_Premultiplied;
    const int ratio = std::min(image.width() / target.width(), image.height() / target.height());
    // At least twice the target, an even factor (so that both kinds of row count the same), 16 bits of sum.
    const int factor = std::min(ratio / 2, 16) & ~1;
    return plain && factor >= 2 ? averagedBlocks(image, factor) : image;
}

QImage scaledTo(const QImage& image, const QSize& size) {
    const bool opaque = !image.hasAlphaChannel();
    return coarser(image, size)
        .scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
        .convertToFormat(opaque ? QImage::Format_RGB32 : QImage::Format_ARGB32_Premultiplied);
}

QImage renderSharp(const QImage& pixels, const QSizeF& fitted) {
    return scaledTo(pixels, QSize(std::max(1, roundedToInt(fitted.width() * sharpDensity)),
                                  std::max(1, roundedToInt(fitted.height() * sharpDensity))));
}

// The part of the blurred capture that shows in the bounds. A tall capture is blurred only where that is.
QImage renderBackdrop(const QImage& pixels, const QRectF& filled, const QRectF& bounds) {
    const double perPoint = pixels.height() / filled.height();
    const double blurScale = static_cast<double>(blurWidth) / pixels.width();
    const double top = (filled.bottom() - bounds.bottom()) * perPoint;
    const double reach = 3 * blurSigma / blurScale;
    const int first = std::clamp(static_cast<int>(top - reach), 0, pixels.height() - 1);
    const int last = std::clamp(static_cast<int>(std::ceil(top + bounds.height() * perPoint + reach)),
                                first + 1, pixels.height());
    const QSize size(blurWidth, std::max(1, roundedToInt((last - first) * blurScale)));
    const QImage blurred = blurredClamped(scaledTo(rows(pixels, first, last - first), size), blurSigma);
    const double across = blurWidth / filled.width();
    const double down = static_cast<double>(size.height()) / (last - first);
    QImage result(bounds.size().toSize(), QImage::Format_ARGB32_Premultiplied);
    result.fill(Qt::transparent);
    QPainter painter(&result);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(QRectF(result.rect()), blurred,
                      QRectF((bounds.left() - filled.left()) * across, (top - first) * down,
                             bounds.width() * across, bounds.height() * perPoint * down));
    return result;
}

// Blurs rows and turns the picture, four channels a pixel; twice gives both ways.
std::vector<float> blurTurned(const std::vector<float>& in, int width, int height,
                              const std::vector<float>& weights) {
    const int reach = static_cast<int>(weights.size() / 2);
    std::vector<float> out(in.size());
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            float* sum = &out[4 * (static_cast<std::size_t>(x) * height + y)];
            for (int k = -reach; k <= reach; ++k) {
                const int from = std::clamp(x + k, 0, width - 1);
                const float* source = &in[4 * (static_cast<std::size_t>(y) * width + from)];
                for (int channel = 0; channel < 4; ++channel)
                    sum[channel] += source[channel] * weights[k + reach];
            }
        }
    return out;
}
} // namespace

QRectF fitRect(const QSizeF& imageSize, const QRectF& bounds) {
    if (!hasArea(imageSize))
        return bounds;
    const double scale =
        std::min({bounds.width() / imageSize.width(), bounds.height() / imageSize.height(), 1.0});
    return centered(imageSize * scale, bounds);
}

QRectF fillRect(const QSizeF& imageSize, const QRectF& bounds) {
    if (!hasArea(imageSize))
        return bounds;
    const double scale = std::max(bounds.width() / imageSize.width(), bounds.height() / imageSize.height());
    return centered(imageSize * scale, bounds);
}

QImage blurredClamped(const QImage& pixels, double sigma) {
    const QImage source = pixels.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    const int width = source.width();
    const int height = source.height();
    std::vector<float> plane(4 * static_cast<std::size_t>(width) * height);
    for (int y = 0; y < height; ++y)
        std::copy_n(source.constScanLine(y), 4 * width,
                    plane.begin() + 4 * static_cast<std::ptrdiff_t>(width) * y);
    const std::vector<float> weights = gaussianKernel(sigma);
    plane = blurTurned(blurTurned(plane, width, height, weights), height, width, weights);
    QImage result(width, height, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < height; ++y)
        for (int i = 0; i < 4 * width; ++i)
            result.scanLine(y)[i] =
                static_cast<uchar>(std::lround(plane[4 * static_cast<std::size_t>(width) * y + i]));
    return result;
}

std::optional<QColor> tintOf(const QImage& pixels) {
    if (pixels.isNull())
        return std::nullopt;
    const QColor average =
        pixels.scaled(1, 1, Qt::IgnoreAspectRatio, Qt::SmoothTransformation).pixelColor(0, 0).toRgb();
    const float hue = std::max(average.hsvHueF(), 0.0F); // grey has none
    return QColor::fromHsvF(hue, std::min(average.hsvSaturationF(), 0.5F),
                            std::clamp(average.valueF(), 0.35F, 0.75F));
}

Thumbnail renderThumbnail(const Image& image, const QRectF& bounds) {
    Thumbnail result;
    result.fit = fitRect(image.size(), bounds);
    const QImage& pixels = image.pixels();
    if (pixels.isNull() || !hasArea(image.size()))
        return result;
    result.sharp = renderSharp(pixels, result.fit.size());
    // The small render is as good a source for a blur and an average as the capture, and far quicker to read.
    const bool isFine = result.sharp.width() >= 2 * blurWidth;
    const QImage& source = isFine ? result.sharp : pixels;
    result.backdrop = renderBackdrop(source, fillRect(image.size(), bounds), bounds);
    result.tint = tintOf(isFine ? result.sharp : result.backdrop);
    return result;
}

} // namespace marrowfin::panel
