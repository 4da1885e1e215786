#include "scrolling/CellComparison.h"

#include "scrolling/EdgeIndex.h"

#include <algorithm>

namespace marrowfin::scrolling {

namespace {

// What occurs more often speaks for nearly every offset.
constexpr int mostAlike = 32;

void weigh(std::span<const quint32> edges, const EdgeIndex& one, const EdgeIndex& other, float* weights) {
    for (size_t row = 0; row < edges.size(); ++row)
        weights[row] =
            edges[row] == 0
                ? 0.0F
                : 1.0F / static_cast<float>(std::max(one.count(edges[row]), other.count(edges[row])));
}

} // namespace

CellComparison::CellComparison(const RowHashes& older, const RowHashes& newer)
    : older(older), newer(newer), changed(at(strips(), 0)), olderWeight(changed.size()),
      newerWeight(changed.size()), votes(2 * static_cast<size_t>(rows())) {
    EdgeIndex olderIndex(rows());
    EdgeIndex newerIndex(rows());
    for (int strip = 0; strip < strips(); ++strip) {
        olderIndex.fill(older.edges(strip));
        newerIndex.fill(newer.edges(strip));
        weigh(older.edges(strip), olderIndex, newerIndex, olderWeight.data() + at(strip, 0));
        weigh(newer.edges(strip), newerIndex, olderIndex, newerWeight.data() + at(strip, 0));
        findChanges(strip);
        const std::span<const quint32> edges = newer.edges(strip);
        for (int row = 0; row < rows(); ++row) {
            const quint32 edge = edges[static_cast<size_t>(row)];
            if (edge == 0 || !changed[at(strip, row)] || olderIndex.count(edge) > mostAlike)
                continue;
            olderIndex.eachRow(edge, [&](int from) {
                if (changed[at(strip, from)])
                    votes[static_cast<size_t>(from - row + rows() - 1)] += newerWeight[at(strip, row)];
            });
        }
    }
}

void CellComparison::findChanges(int strip) {
    const std::span<const quint32> before = older.cells(strip);
    const std::span<const quint32> now = newer.cells(strip);
    bool changedAbove = false;
    for (size_t row = 0; row < now.size(); ++row) {
        const bool changedHere = before[row] != now[row];
        changed[at(strip, 0) + row] = changedHere || changedAbove;
        changedAbove = changedHere;
    }
}

std::vector<int> CellComparison::bestOffsets(size_t most) const {
    std::vector<int> offsets;
    for (size_t i = 0; i < votes.size(); ++i)
        if (votes[i] > 0)
            offsets.push_back(static_cast<int>(i) - rows() + 1);
    const auto votesOf = [this](int offset) { return votes[static_cast<size_t>(offset + rows() - 1)]; };
    const size_t count = std::min(most, offsets.size());
    std::partial_sort(offsets.begin(), offsets.begin() + static_cast<std::ptrdiff_t>(count), offsets.end(),
                      [&](int a, int b) { return votesOf(a) > votesOf(b); });
    offsets.resize(count);
    return offsets;
}

} // namespace marrowfin::scrolling
