#include "annotation/ShadowBlur.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <numeric>

namespace marrowfin {

namespace {

// Below half a pixel the samples of a Gaussian don't add up to one any more.
constexpr double smallestSigma = 0.5;
constexpr double reachInSigmas = 3;
constexpr int weightSum = 256;

// One axis of the blur: output[i] = sum of weights[k] * input[i - first - k], over weightSum.
struct Kernel {
    int first = 0;
    std::vector<quint16> weights;

    int last() const { return first + static_cast<int>(weights.size()) - 1; }
};

Kernel makeKernel(double sigma, double offset) {
    const double s = std::max(sigma, smallestSigma);
    Kernel kernel;
    kernel.first = static_cast<int>(std::ceil(offset - reachInSigmas * s));
    const int last = static_cast<int>(std::floor(offset + reachInSigmas * s));
    std::vector<double> samples;
    for (int i = kernel.first; i <= last; ++i)
        samples.push_back(std::exp(-0.5 * (i - offset) * (i - offset) / (s * s)));
    const double total = std::accumulate(samples.begin(), samples.end(), 0.0);
    // Rounding carries over, so that the weights add up exactly and a solid area keeps its full shadow.
    double exact = 0;
    int given = 0;
    for (const double sample : samples) {
        exact += sample / total * weightSum;
        const int weight = static_cast<int>(std::lround(exact)) - given;
        kernel.weights.push_back(static_cast<quint16>(weight));
        given += weight;
    }
    return kernel;
}

// A plane of 8-bit values around the layer, zero where nothing was written. Fresh zero pages cost nothing
// until they are touched.
class Plane {
public:
    Plane(int width, int height, int margin)
        : stride(width), margin(margin),
          bytes(static_cast<quint8*>(
                    std::calloc(static_cast<size_t>(stride), static_cast<size_t>(height + 2 * margin))),
                std::free) {}

    bool isNull() const { return !bytes; }
    quint8* row(int y) { return bytes.get() + static_cast<std::ptrdiff_t>(y + margin) * stride; }

private:
    std::ptrdiff_t stride;
    int margin;
    std::unique_ptr<quint8[], decltype(&std::free)> bytes;
};

// sums[i] += weight * from[i]
void addWeighted(quint16* __restrict sums, const quint8* __restrict from, int count, quint16 weight) {
    for (int i = 0; i < count; ++i)
        sums[i] = static_cast<quint16>(sums[i] + from[i] * weight);
}

// A run of the layer's alpha, with zeros on either side for as far as the kernel reaches.
void takeAlpha(std::vector<quint8>& alpha, const quint32* pixels, int count, int before, int after) {
    std::fill_n(alpha.begin(), before, quint8(0));
    quint8* out = alpha.data() + before;
    for (int i = 0; i < count; ++i)
        out[i] = static_cast<quint8>(pixels[i] >> 24);
    std::fill_n(alpha.begin() + before + count, after, quint8(0));
}

void blurAcross(const QImage& layer, Plane& blurred, const QRect& rect, const Kernel& kernel) {
    const int count = rect.width();
    const int before = std::max(kernel.last(), 0);
    const int after = std::max(-kernel.first, 0);
    std::vector<quint8> alpha(static_cast<size_t>(before + count + after));
    std::vector<quint16> sums(static_cast<size_t>(count));
    for (int y = rect.top(); y <= rect.bottom(); ++y) {
        takeAlpha(alpha, reinterpret_cast<const quint32*>(layer.constScanLine(y)) + rect.left(), count,
                  before, after);
        std::fill(sums.begin(), sums.end(), quint16(weightSum / 2));
        for (size_t k = 0; k < kernel.weights.size(); ++k)
            addWeighted(sums.data(), alpha.data() + before - kernel.first - static_cast<int>(k), count,
                        kernel.weights[k]);
        quint8* out = blurred.row(y) + rect.left();
        for (int i = 0; i < count; ++i)
            out[i] = static_cast<quint8>(sums[static_cast<size_t>(i)] / weightSum);
    }
}

// The shadow shows through the ink by as much as the ink lets through.
void putUnder(quint32* __restrict pixels, const quint16* __restrict shadow, int count, quint32 strength) {
    for (int i = 0; i < count; ++i) {
        const quint32 alpha = pixels[i] >> 24;
        const quint32 under = (shadow[i] / weightSum * strength + 128) >> 8; // 0 to 255
        const quint32 added = ((255 - alpha) * under * 257 + 32768) >> 16;   // over 255, rounded
        pixels[i] = (pixels[i] & 0xffffffu) | (alpha + added) << 24;
    }
}

void blurDownAndPut(QImage& layer, Plane& blurred, const QRect& rect, const Kernel& kernel,
                    quint32 strength) {
    const int count = rect.width();
    std::vector<quint16> sums(static_cast<size_t>(count));
    for (int y = rect.top(); y <= rect.bottom(); ++y) {
        std::fill(sums.begin(), sums.end(), quint16(weightSum / 2));
        for (size_t k = 0; k < kernel.weights.size(); ++k)
            addWeighted(sums.data(), blurred.row(y - kernel.first - static_cast<int>(k)) + rect.left(), count,
                        kernel.weights[k]);
        putUnder(reinterpret_cast<quint32*>(layer.scanLine(y)) + rect.left(), sums.data(), count, strength);
    }
}

} // namespace

double shadowReach(double sigma, const QPointF& offset) {
    return reachInSigmas * std::max(sigma, smallestSigma) +
           std::max(std::abs(offset.x()), std::abs(offset.y()));
}

void addShadowUnderneath(QImage& layer, const std::vector<QRect>& rects, double sigma, const QPointF& offset,
                         double alpha) {
    const Kernel across = makeKernel(sigma, offset.x());
    const Kernel down = makeKernel(sigma, offset.y());
    const int margin = std::max(std::abs(down.first), std::abs(down.last()));
    Plane blurred(layer.width(), layer.height(), margin);
    if (blurred.isNull())
        return;
    for (const QRect& rect : rects)
        blurAcross(layer, blurred, rect, across);
    const auto strength = static_cast<quint32>(std::lround(alpha * 256));
    for (const QRect& rect : rects)
        blurDownAndPut(layer, blurred, rect, down, strength);
}

} // namespace marrowfin
