#include "annotation/GaussianBlur.h"

#include "base/Invariant.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <vector>

namespace marrowfin::annotation {

namespace {

constexpr int channels = 4;
constexpr int largestStep = 16; // at which the sums of a block still fit 16 bits
constexpr double least = 2.5;   // sigma on the coarse grid
constexpr double largestSigma = 768;
constexpr double reachInSigmas = 4;

// Four channels as the processor likes them.
using Vector = float __attribute__((vector_size(16)));
struct CoarsePixel {
    Vector value;
};
using CoarseRow = std::vector<CoarsePixel>;
using ByteRow = std::vector<quint8>;
using SumRow = std::vector<quint16>;

// The spacing of the coarse grid: a power of two, so that interpolating divides by shifting.
int stepFor(double sigma) {
    int step = 1;
    while (step < largestStep && sigma / (2 * step) >= least)
        step *= 2;
    return step;
}

// In steps. A triangle of this step has a variance of (step² - 1) / 6, and there is one on either way.
double coarseSigma(double sigma, int step) {
    const double square = static_cast<double>(step) * step;
    return std::sqrt((sigma * sigma - (square - 1) / 3) / square);
}

// One side of the kernel: its middle, then outwards.
std::vector<float> makeKernel(double sigma) {
    const int reach = std::max(static_cast<int>(std::ceil(reachInSigmas * sigma)), 1);
    std::vector<double> samples;
    double total = 0;
    for (int i = 0; i <= reach; ++i) {
        samples.push_back(std::exp(-0.5 * i * i / (sigma * sigma)));
        total += i == 0 ? samples.back() : 2 * samples.back();
    }
    std::vector<float> kernel;
    for (const double sample : samples)
        kernel.push_back(static_cast<float>(sample / total));
    return kernel;
}

// Sample i of the coarse grid stands on pixel i * step of the source. Block i is the pixels from there to the
// next.
struct Grid {
    int step;
    int first; // the samples that the wanted pixels are interpolated between
    int last;
    int reach; // how many more the kernel asks for on either side

    Grid(int from, int to, int step, int reach)
        : step(step), first(from / step), last((to - 1) / step + 1), reach(reach) {}
    int count() const { return last - first + 1; }
};

// out += weight * in
void addScaled(CoarsePixel* __restrict out, const CoarsePixel* __restrict in, int count, float weight) {
    for (int i = 0; i < count; ++i)
        out[i].value += weight * in[i].value;
}

// plain += in, weighted += weight * in
void addRow(quint16* __restrict plain, quint16* __restrict weighted, const quint8* __restrict in, int count,
            quint16 weight) {
    for (int i = 0; i < count; ++i) {
        plain[i] = static_cast<quint16>(plain[i] + in[i]);
        weighted[i] = static_cast<quint16>(weighted[i] + in[i] * weight);
    }
}

// Averages the source down to the coarse grid. A pixel at t within its block counts step - t for the sample
// before it and t for the one behind: with the plain and the weighted sum of a block both shares are known.
class Averaging {
public:
    Averaging(const QImage& pixels, const QRect& source, const Grid& across, int step)
        : pixels(pixels), source(source), across(across), step(step),
          plain(static_cast<size_t>(source.width() * channels)), weighted(plain.size()),
          weightedBefore(plain.size()), down(plain.size()) {}

    // One row of the coarse grid, from across.first - across.reach on. Rows are asked for in rising order.
    const CoarseRow& row(int index) {
        const Side side = sideOf(index);
        if (side != Side::Inside && side == previousSide)
            return averaged;
        if (previous != index - 1)
            sumBlock(index - 1);
        std::swap(weighted, weightedBefore);
        sumBlock(index);
        for (size_t i = 0; i < down.size(); ++i)
            down[i] = static_cast<quint16>(step * plain[i] - weighted[i] + weightedBefore[i]);
        averageAcross();
        previous = index;
        previousSide = side;
        return averaged;
    }

private:
    // Beyond the source all rows are the same, and made once.
    enum class Side { Above, Inside, Below };
    Side sideOf(int index) const {
        if ((index + 1) * step <= 1)
            return Side::Above;
        return (index - 1) * step + 1 >= source.height() - 1 ? Side::Below : Side::Inside;
    }

    void sumBlock(int block) {
        std::fill(plain.begin(), plain.end(), quint16(0));
        std::fill(weighted.begin(), weighted.end(), quint16(0));
        for (int t = 0; t < step; ++t) {
            const int y = std::clamp(block * step + t, 0, source.height() - 1);
            addRow(plain.data(), weighted.data(),
                   pixels.constScanLine(source.top() + y) + source.left() * channels,
                   source.width() * channels, static_cast<quint16>(t));
        }
    }

    static Vector load(const quint16* sums) {
        return Vector{static_cast<float>(sums[0]), static_cast<float>(sums[1]), static_cast<float>(sums[2]),
                      static_cast<float>(sums[3])};
    }

    void averageAcross() {
        const int begin = across.first - across.reach;
        const int end = across.last + across.reach;
        const int lastPixel = source.width() - 1;
        averaged.assign(static_cast<size_t>(end - begin + 1), CoarsePixel{});
        const float share = 1.0F / static_cast<float>(step * step * step * step);
        for (int block = begin - 1; block <= end; ++block) {
            Vector sum{};
            Vector late{};
            for (int t = 0; t < step; ++t) {
                const int x = std::clamp(block * step + t, 0, lastPixel);
                const Vector value = load(down.data() + x * channels);
                sum += value;
                late += static_cast<float>(t) * value;
            }
            if (block >= begin)
                averaged[static_cast<size_t>(block - begin)].value +=
                    (static_cast<float>(step) * sum - late) * share;
            if (block < end)
                averaged[static_cast<size_t>(block - begin + 1)].value += late * share;
        }
    }

    const QImage& pixels;
    const QRect source;
    const Grid across;
    const int step;
    SumRow plain;
    SumRow weighted;
    SumRow weightedBefore;
    SumRow down; // step² times the average down the columns
    CoarseRow averaged;
    int previous = std::numeric_limits<int>::min();
    Side previousSide = Side::Inside;
};

// The coarse grid, blurred across; down it is blurred as rows are asked for.
class CoarseBlur {
public:
    CoarseBlur(Averaging& averaging, const Grid& across, const Grid& down, const std::vector<float>& kernel)
        : kernel(kernel), columns(across.count()), top(down.first), reach(down.reach) {
        for (int row = down.first - reach; row <= down.last + reach; ++row)
            rows.push_back(blurredAcross(averaging.row(row)));
    }

    void takeRow(int index, CoarseRow& out) const {
        out.assign(static_cast<size_t>(columns), CoarsePixel{});
        const int middle = index - top + reach;
        add(out, middle, kernel[0]);
        for (int k = 1; k <= reach; ++k) {
            add(out, middle - k, kernel[static_cast<size_t>(k)]);
            add(out, middle + k, kernel[static_cast<size_t>(k)]);
        }
    }

private:
    void add(CoarseRow& out, int row, float weight) const {
        addScaled(out.data(), rows[static_cast<size_t>(row)].data(), columns, weight);
    }

    CoarseRow blurredAcross(const CoarseRow& in) const {
        CoarseRow out(static_cast<size_t>(columns), CoarsePixel{});
        addScaled(out.data(), in.data() + reach, columns, kernel[0]);
        for (int k = 1; k <= reach; ++k) {
            addScaled(out.data(), in.data() + reach - k, columns, kernel[static_cast<size_t>(k)]);
            addScaled(out.data(), in.data() + reach + k, columns, kernel[static_cast<size_t>(k)]);
        }
        return out;
    }

    const std::vector<float>& kernel;
    const int columns;
    const int top;
    const int reach;
    std::vector<CoarseRow> rows;
};

// Between two rows of the coarse grid, as whole numbers whose unit is step / 256.
void mixRows(const CoarseRow& above, const CoarseRow& below, double share, int step, SumRow& out) {
    const auto unit = static_cast<float>(256 / step);
    const auto late = static_cast<float>(share);
    for (size_t i = 0; i < above.size(); ++i) {
        const Vector value = (above[i].value * (1 - late) + below[i].value * late) * unit + 0.5F;
        for (size_t c = 0; c < channels; ++c)
            out[i * channels + c] = static_cast<quint16>(static_cast<int>(value[c]));
    }
}

// Whole blocks of pixels between each sample of the row and the next.
template <int step>
void interpolate(const SumRow& row, int blocks, ByteRow& out) {
    quint8* to = out.data();
    for (int block = 0; block < blocks; ++block, to += step * channels) {
        const quint16* before = row.data() + block * channels;
        const quint16* after = before + channels;
        for (int t = 0; t < step; ++t)
            for (int c = 0; c < channels; ++c)
                to[t * channels + c] =
                    static_cast<quint8>((before[c] * (step - t) + after[c] * t + 128) / 256);
    }
}

void interpolate(int step, const SumRow& row, int blocks, ByteRow& out) {
    switch (step) {
    case 1:
        return interpolate<1>(row, blocks, out);
    case 2:
        return interpolate<2>(row, blocks, out);
    case 4:
        return interpolate<4>(row, blocks, out);
    case 8:
        return interpolate<8>(row, blocks, out);
    default:
        return interpolate<largestStep>(row, blocks, out);
    }
}

// `part` in the source's coordinates.
void interpolateInto(QImage& result, const QRect& part, const CoarseBlur& coarse, const Grid& across,
                     int step) {
    const int blocks = across.count() - 1;
    CoarseRow above;
    CoarseRow below;
    SumRow mixed(static_cast<size_t>(across.count() * channels));
    ByteRow bytes(static_cast<size_t>(blocks * step * channels));
    const int skipped = (part.left() - across.first * step) * channels;
    int current = -2;
    for (int y = 0; y < part.height(); ++y) {
        const int row = (part.top() + y) / step;
        if (row != current) {
            if (row == current + 1)
                std::swap(above, below);
            else
                coarse.takeRow(row, above);
            coarse.takeRow(row + 1, below);
            current = row;
        }
        mixRows(above, below, static_cast<double>((part.top() + y) % step) / step, step, mixed);
        interpolate(step, mixed, blocks, bytes);
        std::memcpy(result.scanLine(y), bytes.data() + skipped, static_cast<size_t>(part.width() * channels));
    }
}

} // namespace

QImage gaussianBlurred(const QImage& pixels, const QRect& part, const QRect& source, double sigma) {
    MARROWFIN_INVARIANT(source.contains(part) && pixels.rect().contains(source) && pixels.depth() == 32);
    QImage result(part.size(), pixels.format());
    if (result.isNull() || !(sigma > 0))
        return {};
    const double wanted = std::min(sigma, largestSigma);
    const int step = stepFor(wanted);
    const std::vector<float> kernel = makeKernel(coarseSigma(wanted, step));
    const int reach = static_cast<int>(kernel.size()) - 1;
    const QRect inSource = part.translated(-source.topLeft());
    const Grid across(inSource.left(), inSource.right() + 1, step, reach);
    const Grid down(inSource.top(), inSource.bottom() + 1, step, reach);
    Averaging averaging(pixels, source, across, step);
    interpolateInto(result, inSource, CoarseBlur(averaging, across, down, kernel), across, step);
    return result;
}

} // namespace marrowfin::annotation
