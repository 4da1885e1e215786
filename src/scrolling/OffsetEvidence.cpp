#include "scrolling/OffsetEvidence.h"

#include <algorithm>

namespace marrowfin::scrolling {

namespace {

// The cells of one strip that both frames show.
class StripWalk {
public:
    StripWalk(const CellComparison& cells, int strip, int offset)
        : cells(cells), offset(offset), base(cells.at(strip, 0)), before(cells.older.edges(strip).data()),
          now(cells.newer.edges(strip).data()) {}

    void add(int row, OffsetEvidence& to, std::vector<quint8>& rowMoved) const {
        const size_t from = static_cast<size_t>(row + offset);
        const size_t y = static_cast<size_t>(row);
        const bool alike = before[from] == now[y];
        if (!cells.changed[base + y]) {
            if (!alike)
                to.stayed += static_cast<double>(cells.newerWeight[base + y]);
            return;
        }
        const float weight = std::max(cells.newerWeight[base + y], cells.olderWeight[base + from]);
        if (weight == 0 || !cells.changed[base + from])
            return;
        if (!alike) {
            to.missed += static_cast<double>(weight);
            return;
        }
        to.moved += static_cast<double>(weight);
        ++to.movedCells;
        rowMoved[y] = 1;
    }

private:
    const CellComparison& cells;
    int offset;
    size_t base;
    const quint32* before;
    const quint32* now;
};

} // namespace

OffsetEvidence evidenceFor(int offset, const CellComparison& cells) {
    OffsetEvidence evidence;
    evidence.offset = offset;
    std::vector<quint8> rowMoved(static_cast<size_t>(cells.rows()));
    const int first = std::max(0, -offset);
    const int end = cells.rows() - std::max(0, offset);
    for (int strip = 0; strip < cells.strips(); ++strip) {
        const StripWalk walk(cells, strip, offset);
        for (int row = first; row < end; ++row)
            walk.add(row, evidence, rowMoved);
    }
    evidence.movedRows = static_cast<int>(std::count(rowMoved.begin(), rowMoved.end(), 1));
    return evidence;
}

} // namespace marrowfin::scrolling
