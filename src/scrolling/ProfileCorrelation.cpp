#include "scrolling/ProfileCorrelation.h"

#include <algorithm>
#include <cmath>

namespace marrowfin::scrolling {

namespace {

// Of 1. Different lines of one text agree to 0.8 and more at every multiple of their pitch, so that the best
// offset has to stand out from the others too.
constexpr double leastAgreement = 0.9;
constexpr double leastLead = 1.3;
// A few edges agree with any others sooner or later.
constexpr double leastRowsThatTell = 24;

// How the mean brightness of each cell differs from that of the one above, in quarters of a level; 0 where
// nothing changed. Small enough that 8000 products fit a 32 bit sum.
class Slopes {
public:
    Slopes(const QImage& frame, const CellComparison& cells)
        : rows(cells.rows()), strips(cells.strips()), values(cells.changed.size()),
          energyUpTo(static_cast<size_t>(rows) + 1) {
        std::vector<int> above(static_cast<size_t>(strips));
        for (int row = 0; row < rows; ++row)
            addRow(frame, cells, row, above);
        for (size_t row = 0; row < static_cast<size_t>(rows); ++row)
            energyUpTo[row + 1] += energyUpTo[row];
    }

    double energy(int first, int end) const {
        return energyUpTo[static_cast<size_t>(end)] - energyUpTo[static_cast<size_t>(first)];
    }
    // How many rows the differences are spread over.
    double rowsThatTell() const {
        double squares = 0;
        for (int row = 0; row < rows; ++row)
            squares += energy(row, row + 1) * energy(row, row + 1);
        return squares > 0 ? energy(0, rows) * energy(0, rows) / squares : 0;
    }
    const qint16* strip(int index) const {
        return values.data() + static_cast<size_t>(index) * static_cast<size_t>(rows);
    }

private:
    // A cell is less than 256 pixels wide, so that two sums fit one register.
    static int brightness(const QRgb* pixels, int count) {
        quint32 redAndBlue = 0;
        quint32 green = 0;
        for (int i = 0; i < count; ++i) {
            redAndBlue += pixels[i] & 0x00ff00ffU;
            green += pixels[i] >> 8 & 0xffU;
        }
        return static_cast<int>(((redAndBlue >> 16) + (redAndBlue & 0xffffU) + 2 * green) /
                                static_cast<quint32>(count));
    }
    void addRow(const QImage& frame, const CellComparison& cells, int row, std::vector<int>& above) {
        const auto* pixels = reinterpret_cast<const QRgb*>(frame.constScanLine(row));
        for (int i = 0; i < strips; ++i) {
            const int from = i * cells.newer.stripWidth();
            const int to = i + 1 == strips ? frame.width() : from + cells.newer.stripWidth();
            const int mean = brightness(pixels + from, to - from);
            int& before = above[static_cast<size_t>(i)];
            if (row > 0 && cells.changed[cells.at(i, row)]) {
                const int slope = std::clamp(mean - before, -511, 511);
                values[cells.at(i, row)] = static_cast<qint16>(slope);
                energyUpTo[static_cast<size_t>(row) + 1] += static_cast<double>(slope * slope);
            }
            before = mean;
        }
    }

    int rows;
    int strips;
    std::vector<qint16> values; // strip by strip
    std::vector<double> energyUpTo;
};

int product(const qint16* a, const qint16* b, int count) {
    int sum = 0;
    for (int i = 0; i < count; ++i)
        sum += static_cast<int>(a[i]) * static_cast<int>(b[i]);
    return sum;
}

// From -1 to 1: row y of the newer frame against row y + offset of the older.
double agreement(const Slopes& older, const Slopes& newer, const CellComparison& cells, int offset) {
    constexpr int atOnce = 4096;
    const int first = std::max(0, -offset);
    const int end = cells.rows() - std::max(0, offset);
    double sum = 0;
    for (int strip = 0; strip < cells.strips(); ++strip)
        for (int row = first; row < end; row += atOnce)
            sum += product(newer.strip(strip) + row, older.strip(strip) + row + offset,
                           std::min(atOnce, end - row));
    const double energy = older.energy(first + offset, end + offset) * newer.energy(first, end);
    return energy > 0 ? sum / std::sqrt(energy) : 0;
}

} // namespace

std::optional<int> correlatedOffset(const QImage& older, const QImage& newer, const CellComparison& cells) {
    const Slopes before(older, cells);
    const Slopes now(newer, cells);
    if (now.rowsThatTell() < leastRowsThatTell)
        return std::nullopt;
    const int reach = cells.rows() / 2;
    std::vector<double> agreements;
    for (int offset = -reach; offset <= reach; ++offset)
        agreements.push_back(agreement(before, now, cells, offset));
    const auto best = std::max_element(agreements.begin(), agreements.end());
    // Beside the best one its neighbours are nearly as good.
    const std::ptrdiff_t beside = std::max(4, cells.rows() / 100);
    double next = 0;
    for (auto other = agreements.begin(); other != agreements.end(); ++other)
        if (std::abs(other - best) > beside)
            next = std::max(next, *other);
    if (*best < leastAgreement || *best < leastLead * next)
        return std::nullopt;
    return static_cast<int>(best - agreements.begin()) - reach;
}

} // namespace marrowfin::scrolling
