#include "scrolling/RowHashes.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace marrowfin::scrolling {

namespace {

constexpr quint64 colours = 0x00ffffff00ffffffULL;
constexpr quint64 factor = 0x9e3779b97f4a7c15ULL;

quint64 twoPixels(const quint32* pixels) {
    quint64 two = 0;
    std::memcpy(&two, pixels, sizeof two);
    return two & colours;
}

quint64 mixed(quint64 state, quint64 value) {
    return std::rotl((state ^ value) * factor, 31);
}

// Four chains at once: one alone would wait for each of its multiplications.
quint32 hashOf(const quint32* pixels, int count) {
    quint64 a = 1;
    quint64 b = 2;
    quint64 c = 3;
    quint64 d = 4;
    int i = 0;
    for (; i + 8 <= count; i += 8) {
        a = mixed(a, twoPixels(pixels + i));
        b = mixed(b, twoPixels(pixels + i + 2));
        c = mixed(c, twoPixels(pixels + i + 4));
        d = mixed(d, twoPixels(pixels + i + 6));
    }
    for (; i < count; ++i)
        a = mixed(a, pixels[i] & colours);
    return static_cast<quint32>(mixed(mixed(mixed(a, b), c), d) >> 32);
}

// Narrow enough that a scroll bar or a picture that plays spoils only its own strips, wide enough that a
// piece of text seldom looks like another.
int stripWidthFor(int pixels) {
    return std::clamp(pixels / 16, 16, 96) / 8 * 8;
}

} // namespace

RowHashes::RowHashes(const QImage& frame, int rows)
    : rowCount(rows), width(stripWidthFor(frame.width())), stripCount(std::max(1, frame.width() / width)),
      cellHashes(static_cast<size_t>(stripCount) * static_cast<size_t>(rows)), edgeHashes(cellHashes.size()) {
    for (int row = 0; row < rows; ++row)
        hashRow(reinterpret_cast<const quint32*>(frame.constScanLine(row)), frame.width(), row);
    findEdges();
}

void RowHashes::hashRow(const quint32* pixels, int pixelCount, int row) {
    for (int strip = 0; strip < stripCount; ++strip) {
        const int from = strip * width;
        const int to = strip + 1 == stripCount ? pixelCount : from + width;
        cellHashes[static_cast<size_t>(strip) * static_cast<size_t>(rowCount) + static_cast<size_t>(row)] =
            hashOf(pixels + from, to - from);
    }
}

void RowHashes::findEdges() {
    for (int strip = 0; strip < stripCount; ++strip) {
        const std::span<const quint32> cell = cells(strip);
        quint32* edge = edgeHashes.data() + static_cast<size_t>(strip) * static_cast<size_t>(rowCount);
        for (size_t y = 1; y < cell.size(); ++y)
            edge[y] = cell[y] == cell[y - 1]
                          ? 0
                          : static_cast<quint32>(mixed(mixed(factor, cell[y - 1]), cell[y]) >> 32) | 1U;
    }
}

} // namespace marrowfin::scrolling
