#include "imaging/PngRows.h"

#include <QColorSpace>
#include <QtEndian>
#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <new>
#include <utility>

#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace marrowfin::imaging {

namespace {

enum Filter : std::uint8_t { None = 0, Sub = 1, Up = 2 };

constexpr QRgb alphaMask = 0xff000000U;

bool isOpaque(const QImage& picture) {
    for (int y = 0; y < picture.height(); ++y) {
        const auto* row = reinterpret_cast<const QRgb*>(picture.constScanLine(y));
        QRgb all = alphaMask;
        for (int x = 0; x < picture.width(); ++x)
            all &= row[x];
        if (all != alphaMask)
            return false;
    }
    return true;
}

#if defined(__x86_64__)
// Sixteen pixels at a time, as far as they go; every processor of the last fifteen years has this
// instruction, but the compiler may only use it where it is told so.
__attribute__((target("ssse3"))) int toRgbBySixteens(const QRgb* from, int width, std::uint8_t* to) {
    const __m128i order = _mm_setr_epi8(2, 1, 0, 6, 5, 4, 10, 9, 8, 14, 13, 12, -1, -1, -1, -1);
    const auto load = [&](const QRgb* at) __attribute__((target("ssse3"))) {
        return _mm_shuffle_epi8(_mm_loadu_si128(reinterpret_cast<const __m128i*>(at)), order);
    };
    int x = 0;
    for (; x + 16 <= width; x += 16, to += 48) {
        const __m128i a = load(from + x);
        const __m128i b = load(from + x + 4);
        const __m128i c = load(from + x + 8);
        const __m128i d = load(from + x + 12);
        auto* out = reinterpret_cast<__m128i*>(to);
        _mm_storeu_si128(out, _mm_or_si128(a, _mm_slli_si128(b, 12)));
        _mm_storeu_si128(out + 1, _mm_or_si128(_mm_srli_si128(b, 4), _mm_slli_si128(c, 8)));
        _mm_storeu_si128(out + 2, _mm_or_si128(_mm_srli_si128(c, 8), _mm_slli_si128(d, 4)));
    }
    return x;
}
bool hasShuffle() {
    return __builtin_cpu_supports("ssse3") != 0;
}
#else
int toRgbBySixteens(const QRgb*, int, std::uint8_t*) {
    return 0;
}
bool hasShuffle() {
    return false;
}
#endif

void toRgb(const QRgb* from, int width, std::uint8_t* to) {
    int x = hasShuffle() ? toRgbBySixteens(from, width, to) : 0;
    for (to += 3 * x; x < width; ++x, to += 3) {
        to[0] = static_cast<std::uint8_t>(qRed(from[x]));
        to[1] = static_cast<std::uint8_t>(qGreen(from[x]));
        to[2] = static_cast<std::uint8_t>(qBlue(from[x]));
    }
}

void toRgba(const QRgb* from, int width, std::uint8_t* to) {
    for (int x = 0; x < width; ++x, to += 4) {
        to[0] = static_cast<std::uint8_t>(qRed(from[x]));
        to[1] = static_cast<std::uint8_t>(qGreen(from[x]));
        to[2] = static_cast<std::uint8_t>(qBlue(from[x]));
        to[3] = static_cast<std::uint8_t>(qAlpha(from[x]));
    }
}

void filterSub(const std::uint8_t* row, std::size_t pixel, std::size_t size, std::uint8_t* to) {
    std::copy_n(row, pixel, to);
    for (std::size_t i = pixel; i < size; ++i)
        to[i] = static_cast<std::uint8_t>(row[i] - row[i - pixel]);
}

void filterUp(const std::uint8_t* row, const std::uint8_t* above, std::size_t size, std::uint8_t* to) {
    for (std::size_t i = 0; i < size; ++i)
        to[i] = static_cast<std::uint8_t>(row[i] - above[i]);
}

// A pixel of one to four bytes as a number. Reads four bytes, whatever the pixel has.
template <std::size_t Pixel>
std::uint32_t load(const std::uint8_t* at) {
    std::uint32_t word = 0;
    std::memcpy(&word, at, sizeof word);
    return qFromLittleEndian(word) & (0xffffffffU >> (32 - 8 * Pixel));
}

template <std::size_t Pixel>
bool areNear(const std::uint8_t* a, const std::uint8_t* b) {
    constexpr int nearness = 12;
    for (std::size_t i = 0; i < Pixel; ++i)
        if (std::abs(a[i] - b[i]) > nearness)
            return false;
    return true;
}

// What a few pixels of a row are like. Windows compress best as they are: their pixels repeat exactly or
// differ sharply. Photographs and soft slopes don't repeat, but each pixel is near its neighbours, and the
// differences are small numbers.
struct RowSample {
    int asked = 0;
    int sharp = 0;  // far from the pixels on the left and above
    int grainy = 0; // near one of them, equal to neither
    int sloped = 0; // equal to one and near the other, as in a title bar, where that says little
    // How large the numbers are that each filter would leave.
    int leftBySub = 0;
    int leftByUp = 0;

    template <std::size_t Pixel>
    void ask(const std::uint8_t* here, const std::uint8_t* above) {
        ++asked;
        const std::uint8_t* left = here - Pixel;
        const bool isLeft = load<Pixel>(here) == load<Pixel>(left);
        const bool isAbove = load<Pixel>(here) == load<Pixel>(above);
        if (isLeft && isAbove)
            return;
        const bool isNearOther =
            (!isLeft && areNear<Pixel>(here, left)) || (!isAbove && areNear<Pixel>(here, above));
        if (isLeft || isAbove)
            sloped += isNearOther;
        else
            ++(isNearOther ? grainy : sharp);
        for (std::size_t i = 0; isNearOther && i < Pixel; ++i) {
            leftBySub += std::abs(here[i] - left[i]);
            leftByUp += std::abs(here[i] - above[i]);
        }
    }

    Filter best() const {
        if (16 * grainy + sloped <= 32 * sharp || 4 * grainy + sloped <= asked / 8)
            return None;
        // The pixel above serves windows in the same row too, so the one on the left must be clearly better.
        return leftBySub * 2 < leftByUp ? Sub : Up;
    }
};

template <std::size_t Pixel>
Filter filterFor(const std::uint8_t* row, const std::uint8_t* above, std::size_t size) {
    constexpr std::size_t step = 7 * Pixel; // odd, so that no pattern of the screen keeps pace with it
    RowSample sample;
    for (std::size_t i = Pixel; i + Pixel <= size; i += step)
        sample.ask<Pixel>(row + i, above + i);
    return sample.best();
}

Filter filterFor(PngChannels channels, const std::uint8_t* row, const std::uint8_t* above, std::size_t size) {
    switch (channels) {
    case PngChannels::Gray:
        return filterFor<1>(row, above, size);
    case PngChannels::Rgb:
        return filterFor<3>(row, above, size);
    case PngChannels::Rgba:
        return filterFor<4>(row, above, size);
    }
    return None;
}

constexpr std::size_t slack = 3; // what load() reads beyond the last pixel

} // namespace

QImage readableForPng(const QImage& pixels) {
    switch (pixels.format()) {
    case QImage::Format_RGB32:
    case QImage::Format_ARGB32:
    case QImage::Format_ARGB32_Premultiplied:
        return pixels;
    case QImage::Format_Grayscale8:
        // A colour profile of red, green and blue says nothing about a file of greys.
        if (!pixels.colorSpace().isValid() || pixels.colorSpace() == QColorSpace(QColorSpace::SRgb))
            return pixels;
        return pixels.convertToFormat(QImage::Format_RGB32);
    default:
        return pixels.convertToFormat(pixels.hasAlphaChannel() ? QImage::Format_ARGB32
                                                               : QImage::Format_RGB32);
    }
}

PngChannels channelsFor(const QImage& readable) {
    if (readable.format() == QImage::Format_Grayscale8)
        return PngChannels::Gray;
    if (readable.format() == QImage::Format_RGB32 || isOpaque(readable))
        return PngChannels::Rgb;
    return PngChannels::Rgba;
}

PngRows::PngRows(const QImage& readable, PngChannels channels)
    : picture(readable), channels(channels),
      rowBytes(static_cast<std::size_t>(readable.width()) * static_cast<std::size_t>(channels)),
      unfiltered{std::vector<std::uint8_t>(rowBytes + slack), std::vector<std::uint8_t>(rowBytes + slack)} {}

std::span<const std::uint8_t> PngRows::rows(int first, int last) {
    const std::size_t size = bytesPerRow() * static_cast<std::size_t>(last - first);
    if (filtered.size() < size + slack)
        filtered.resize(size + slack);
    std::uint8_t* above = unfiltered[0].data();
    if (first > 0)
        convert(first - 1, above);
    else
        std::fill_n(above, rowBytes, std::uint8_t{0});
    std::uint8_t* to = filtered.data();
    for (int y = first; y < last; ++y) {
        convert(y, to + 1);
        above = filter(to, above);
        to += bytesPerRow();
    }
    return {filtered.data(), size};
}

// The row lies behind its filter byte. Gives the place where it is still as it was.
std::uint8_t* PngRows::filter(std::uint8_t* at, const std::uint8_t* above) {
    std::uint8_t* row = at + 1;
    const Filter chosen = filterFor(channels, row, above, rowBytes);
    *at = chosen;
    if (chosen == None)
        return row;
    std::uint8_t* kept = (above == unfiltered[0].data() ? unfiltered[1] : unfiltered[0]).data();
    std::memcpy(kept, row, rowBytes);
    if (chosen == Sub)
        filterSub(kept, static_cast<std::size_t>(channels), rowBytes, row);
    else
        filterUp(kept, above, rowBytes, row);
    return kept;
}

void PngRows::convert(int y, std::uint8_t* into) const {
    const int width = picture.width();
    if (channels == PngChannels::Gray) {
        std::memcpy(into, picture.constScanLine(y), rowBytes);
        return;
    }
    if (channels == PngChannels::Rgb)
        return toRgb(reinterpret_cast<const QRgb*>(picture.constScanLine(y)), width, into);
    if (picture.format() == QImage::Format_ARGB32)
        return toRgba(reinterpret_cast<const QRgb*>(picture.constScanLine(y)), width, into);
    // The toolkit's own conversion, row by row, so that any reader sees the very colours that the toolkit
    // would write.
    const QImage row = picture.copy(0, y, width, 1).convertToFormat(QImage::Format_ARGB32);
    if (row.isNull())
        throw std::bad_alloc();
    toRgba(reinterpret_cast<const QRgb*>(row.constScanLine(0)), width, into);
}

} // namespace marrowfin::imaging
