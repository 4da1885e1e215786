#include "scrolling/EdgeIndex.h"

#include <algorithm>
#include <bit>

namespace marrowfin::scrolling {

EdgeIndex::EdgeIndex(int rows)
    : places(std::bit_ceil(static_cast<size_t>(rows) * 2 + 2)), mask(places.size() - 1),
      rowBefore(static_cast<size_t>(rows), -1) {}

void EdgeIndex::fill(std::span<const quint32> edges) {
    std::fill(places.begin(), places.end(), Place());
    for (size_t row = 0; row < edges.size(); ++row) {
        if (edges[row] == 0)
            continue;
        Place& place = places[placeOf(edges[row])];
        place.edge = edges[row];
        ++place.count;
        rowBefore[row] = place.lastRow;
        place.lastRow = static_cast<int>(row);
    }
}

} // namespace marrowfin::scrolling
