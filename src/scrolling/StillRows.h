// How many rows at the top and the bottom of an area don't go along when its content moves: a fixed header,
// with its shadow, and a fixed footer.
#pragma once

#include "scrolling/CellComparison.h"

namespace marrowfin::scrolling {

struct StillRows {
    int top = 0;
    int bottom = 0;
};

// For an offset that explains most of what moved.
StillRows stillRows(int offset, const CellComparison& cells);
// Rows at both ends in which nothing at all changed.
StillRows equalRows(const CellComparison& cells);

} // namespace marrowfin::scrolling
