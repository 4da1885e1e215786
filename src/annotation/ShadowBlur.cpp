#include "annotation/ShadowBlur.h"

#include "annotation/ShadowLoops.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <numeric>

namespace marrowfin::annotation {

namespace {

// Below half a pixel the samples of a Gaussian don't add up to one any more.
constexpr double smallestSigma = 0.5;
// What is cut off beyond is less than half of one of 255, at the shadow's alpha.
constexpr double reachInSigmas = 2.5;
constexpr int weightSum = 256;

// A plane of 8-bit values around the layer, zero where nothing was written.
class Plane {
public:
    Plane(QSize size, int above, int below)
        : stride(size.width()), above(above),
          bytes(static_cast<quint8*>(std::calloc(static_cast<size_t>(size.height() + above + below) *
                                                         static_cast<size_t>(stride) +
                                                     shadowLoopSlack,
                                                 1)),
                std::free) {}

    bool isNull() const { return !bytes; }
    std::ptrdiff_t rowLength() const { return stride; }
    quint8* row(int y) { return bytes.get() + (y + above) * stride; }

private:
    std::ptrdiff_t stride;
    int above;
    std::unique_ptr<quint8[], decltype(&std::free)> bytes;
};

// The rows of a layer, without asking it for each whether it is shared.
class Rows {
public:
    explicit Rows(QImage& layer)
        : first(reinterpret_cast<quint32*>(layer.bits())),
          length(layer.bytesPerLine() / qsizetype(sizeof(quint32))) {}
    quint32* at(const QRect& rect, int y) const { return first + y * length + rect.left(); }

private:
    quint32* first;
    qsizetype length;
};

} // namespace

ShadowBlur::ShadowBlur(double sigma, const QPointF& offset, double alpha)
    : across(makeKernel(sigma, offset.x())), down(makeKernel(sigma, offset.y())),
      strength(static_cast<quint16>(std::lround(alpha * 256))) {}

ShadowBlur::Kernel ShadowBlur::makeKernel(double sigma, double offset) {
    const double s = std::max(sigma, smallestSigma);
    // At least one pixel to either side of where the offset leads, and none of the ink is out of reach.
    const int reach = static_cast<int>(std::ceil(reachInSigmas * s));
    Kernel kernel;
    kernel.first = std::min(static_cast<int>(std::ceil(offset)) - reach, 0);
    const int last = std::max(static_cast<int>(std::floor(offset)) + reach, 0);
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

void ShadowBlur::putUnder(QImage& layer, const std::vector<QRect>& rects) const {
    Plane blurred(layer.size(), std::max(down.last(), 0), std::max(-down.first, 0));
    if (blurred.isNull())
        return;
    const ShadowLoops& loops = shadowLoops();
    const Rows pixels(layer);
    const int before = across.last();
    const int behind = shadowLoopSlack - across.first;
    std::vector<quint8> alpha(static_cast<size_t>(before + layer.width() + behind));
    std::vector<quint8> values(static_cast<size_t>(layer.width() + shadowLoopSlack));
    for (const QRect& rect : rects) {
        // A run has no ink within reach beyond its ends: zeros.
        std::fill_n(alpha.begin(), before, quint8(0));
        std::fill_n(alpha.begin() + before + rect.width(), behind, quint8(0));
        for (int y = rect.top(); y <= rect.bottom(); ++y) {
            loops.takeAlpha(alpha.data() + before, pixels.at(rect, y), rect.width());
            loops.convolve(values.data(), alpha.data() + before - across.first, -1, rect.width(),
                           across.weights.data(), across.taps());
            std::memcpy(blurred.row(y) + rect.left(), values.data(), static_cast<size_t>(rect.width()));
        }
    }
    for (const QRect& rect : rects) {
        for (int y = rect.top(); y <= rect.bottom(); ++y) {
            loops.convolve(values.data(), blurred.row(y - down.first) + rect.left(), -blurred.rowLength(),
                           rect.width(), down.weights.data(), down.taps());
            loops.putUnder(pixels.at(rect, y), values.data(), rect.width(), strength);
        }
    }
}

} // namespace marrowfin::annotation
