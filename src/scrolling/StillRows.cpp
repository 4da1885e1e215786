#include "scrolling/StillRows.h"

#include <cstdlib>

namespace marrowfin::scrolling {

namespace {

enum class End { Top, Bottom };

// One end of the area, seen from its outermost row inwards, in the frame that shows there what the other one
// shows further in.
class EndRows {
public:
    EndRows(End end, int offset, const CellComparison& cells)
        : shown((end == End::Top) == (offset > 0) ? cells.newer : cells.older),
          other(&shown == &cells.newer ? cells.older : cells.newer), end(end), by(std::abs(offset)) {
        for (int strip = 0; strip < shown.strips(); ++strip)
            if (goesAlong(strip))
                strips.push_back(strip);
    }

    // Up to the row at which most speaks for standing before it and for moving after it.
    int count() const {
        int sum = 0;
        int best = 0;
        int rows = 0;
        for (int row = 0; row < reach(); ++row) {
            for (const int strip : strips)
                sum += standing(strip, row);
            if (sum > best) {
                best = sum;
                rows = row + 1;
            }
        }
        return rows;
    }

private:
    int reach() const { return shown.rows() - by; }
    // 1 where the cell isn't the content that should have come there, -1 where it is and is new, 0 where
    // nothing can be told.
    int standing(int strip, int row) const {
        const int last = shown.rows() - 1;
        const auto y = static_cast<size_t>(end == End::Top ? row : last - row);
        const auto from = static_cast<size_t>(end == End::Top ? row + by : last - row - by);
        const quint32 cell = shown.cells(strip)[y];
        if (cell != other.cells(strip)[from])
            return 1;
        return cell != other.cells(strip)[y] ? -1 : 0;
    }
    // A sidebar's strips tell nothing about headers.
    bool goesAlong(int strip) const {
        int along = 0;
        int still = 0;
        for (int row = 0; row < reach(); ++row) {
            const int stands = standing(strip, row);
            along += stands < 0 ? 1 : 0;
            still += stands > 0 ? 1 : 0;
        }
        return along > 0 && 3 * along >= still;
    }

    const RowHashes& shown;
    const RowHashes& other;
    End end;
    int by;
    std::vector<int> strips;
};

bool isEqualRow(const CellComparison& cells, int row) {
    for (int strip = 0; strip < cells.strips(); ++strip)
        if (cells.older.cells(strip)[static_cast<size_t>(row)] !=
            cells.newer.cells(strip)[static_cast<size_t>(row)])
            return false;
    return true;
}

} // namespace

StillRows stillRows(int offset, const CellComparison& cells) {
    return {EndRows(End::Top, offset, cells).count(), EndRows(End::Bottom, offset, cells).count()};
}

StillRows equalRows(const CellComparison& cells) {
    StillRows still;
    while (still.top < cells.rows() && isEqualRow(cells, still.top))
        ++still.top;
    while (still.bottom < cells.rows() - still.top && isEqualRow(cells, cells.rows() - 1 - still.bottom))
        ++still.bottom;
    return still;
}

} // namespace marrowfin::scrolling
