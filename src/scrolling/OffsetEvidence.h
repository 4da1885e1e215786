// How well one offset explains what changed between two frames.
#pragma once

#include "scrolling/CellComparison.h"

namespace marrowfin::scrolling {

struct OffsetEvidence {
    int offset = 0;
    // Edges that changed in both frames, by weight: those that moved by the offset, and those that did not.
    double moved = 0;
    double missed = 0;
    // Edges that stayed where they were and that the offset doesn't explain.
    double stayed = 0;
    int movedCells = 0;
    int movedRows = 0;

    double ratio() const { return moved > 0 ? moved / (moved + missed) : 0; }
    double worth() const { return moved * ratio(); }
};

OffsetEvidence evidenceFor(int offset, const CellComparison& cells);

} // namespace marrowfin::scrolling
