// Two frames of one area, cell by cell: what changed in place, how much each edge tells, and the offsets that
// the edges that changed speak for. Rows are pixels from the top.
#pragma once

#include "scrolling/RowHashes.h"

namespace marrowfin::scrolling {

struct CellComparison {
    CellComparison(const RowHashes& older, const RowHashes& newer);

    int rows() const { return newer.rows(); }
    int strips() const { return newer.strips(); }
    size_t at(int strip, int row) const {
        return static_cast<size_t>(strip) * static_cast<size_t>(rows()) + static_cast<size_t>(row);
    }
    // The offsets with the most votes, the best first; none without a vote.
    std::vector<int> bestOffsets(size_t most) const;

    const RowHashes& older;
    const RowHashes& newer;
    // 1 where a cell or the one above it isn't what it was; strip by strip.
    std::vector<quint8> changed;
    // The part of one edge among its equals: 1 if there is no other like it, 0 where there is no edge.
    std::vector<float> olderWeight;
    std::vector<float> newerWeight;
    std::vector<float> votes; // by offset + rows() - 1

private:
    void findChanges(int strip);
};

} // namespace marrowfin::scrolling
