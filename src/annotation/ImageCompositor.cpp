#include "annotation/ImageCompositor.h"

#include "annotation/AnnotationDocument.h"
#include "annotation/GaussianBlur.h"
#include "base/Geometry.h"

#include <QColorSpace>
#include <QPainter>
#include <algorithm>
#include <cmath>
#include <vector>

namespace marrowfin::annotation::ImageCompositor {

using namespace imaging;

namespace {

bool hasArea(const QSizeF& size) {
    return size.width() > 0 && size.height() > 0;
}

// Ready to be painted on. A picture without alpha stays opaque, and its pixels what they were.
QImage paintable(const QImage& pixels) {
    return pixels.convertToFormat(pixels.hasAlphaChannel() ? QImage::Format_ARGB32_Premultiplied
                                                           : QImage::Format_RGB32);
}

void flatten(const AnyAnnotation& annotation, QImage& pixels, const QTransform& toPixels) {
    if (const auto* blur = annotation.as<BlurAnnotation>())
        return applyBlur(blur->box(), pixels, toPixels);
    QPainter painter(&pixels);
    painter.setTransform(toPixels);
    annotation.draw(painter);
}

// How much of each pixel from `first` on lies between two edges, of 256.
std::vector<int> coverage(double low, double high, int first, int count) {
    std::vector<int> shares;
    for (int i = first; i < first + count; ++i)
        shares.push_back(static_cast<int>(
            std::lround(std::max(std::min(high, i + 1.0) - std::max(low, double(i)), 0.0) * 256)));
    return shares;
}

quint32 mixed(quint32 from, quint32 to, int share) {
    quint32 result = 0;
    for (int shift = 0; shift < 32; shift += 8) {
        const int a = (from >> shift) & 255;
        const int b = (to >> shift) & 255;
        result |= static_cast<quint32>((a * (256 - share) + b * share + 128) >> 8) << shift;
    }
    return result;
}

// Puts the patch at the region's place, as far as the box covers each pixel.
void putPatch(QImage& pixels, const QImage& patch, const QRect& region, const QRectF& box) {
    const std::vector<int> across = coverage(minX(box), maxX(box), region.left(), region.width());
    const std::vector<int> down = coverage(minY(box), maxY(box), region.top(), region.height());
    for (int y = 0; y < region.height(); ++y) {
        auto* to = reinterpret_cast<quint32*>(pixels.scanLine(region.top() + y)) + region.left();
        const auto* from = reinterpret_cast<const quint32*>(patch.constScanLine(y));
        for (int x = 0; x < region.width(); ++x) {
            const int share = (across[static_cast<size_t>(x)] * down[static_cast<size_t>(y)] + 128) / 256;
            to[x] = share == 256 ? from[x] : mixed(to[x], from[x], share);
        }
    }
}

} // namespace

Image composite(const AnnotationDocument& document) {
    const Image& base = document.baseImage();
    const std::optional<QSize> pixelSize = realPixelSize(base);
    if (!pixelSize || !hasArea(base.size()))
        return {};
    if (document.annotations().isEmpty())
        return base; // and with it the file that was encoded of it
    QImage pixels = paintable(base.pixels());
    if (pixels.isNull())
        return {};
    const QTransform toPixels = QTransform::fromScale(pixelSize->width() / base.size().width(),
                                                      pixelSize->height() / base.size().height());
    for (const AnyAnnotation& annotation : inPaintOrder(document.annotations()))
        flatten(annotation, pixels, toPixels);
    return Image::withSize(std::move(pixels), base.size());
}

void applyBlur(const QRectF& box, QImage& pixels, const QTransform& toPixels) {
    if (!isFinite(box) || std::abs(box.width()) < 1.0 || std::abs(box.height()) < 1.0)
        return;
    const QRectF inPixels = toPixels.mapRect(standardized(box));
    const auto insidePicture = [&](const QRectF& rect) {
        return intersection(integral(rect), pixels.rect()).value_or(QRectF()).toRect();
    };
    const QRect region = insidePicture(inPixels);
    if (region.isEmpty())
        return;
    const double sigma = std::abs(toPixels.m11()) * blurSigma;
    const QRect padded = insidePicture(inset(region, -3 * sigma, -3 * sigma));
    const QImage patch = gaussianBlurred(pixels, region, padded, sigma);
    if (!patch.isNull())
        putPatch(pixels, patch, region, inPixels);
}

QImage blurredImage(const QImage& pixels, double sigma) {
    if (pixels.isNull())
        return {};
    const QImage source = paintable(pixels);
    QImage blurred =
        source.isNull() ? QImage() : gaussianBlurred(source, source.rect(), source.rect(), sigma);
    if (!blurred.isNull())
        blurred.setColorSpace(pixels.colorSpace());
    return blurred;
}

Image cropImage(const Image& image, const QRectF& rect) {
    const std::optional<QSize> pixelSize = realPixelSize(image);
    if (!pixelSize || !hasArea(image.size()) || !isFinite(rect))
        return {};
    const double sx = pixelSize->width() / image.size().width();
    const double sy = pixelSize->height() / image.size().height();
    // Each edge by itself: neighbouring crops share theirs and leave no gap.
    const auto edge = [](double pixel, int limit) { return std::clamp(roundedToInt(pixel), 0, limit); };
    const int left = edge(sx * minX(rect), pixelSize->width());
    const int right = edge(sx * maxX(rect), pixelSize->width());
    const int top = edge(sy * minY(rect), pixelSize->height());
    const int bottom = edge(sy * maxY(rect), pixelSize->height());
    const QRect cut(left, top, right - left, bottom - top);
    if (cut.isEmpty())
        return {};
    QImage pixels = image.pixels().copy(cut);
    return Image::withSize(std::move(pixels), {cut.width() / sx, cut.height() / sy});
}

std::optional<QByteArray> encodeImage(const Image& image, ImageFormat format, double quality) {
    return imaging::encodeImage(image, format, quality);
}

} // namespace marrowfin::annotation::ImageCompositor
