// The offset at which the slopes of two frames' brightness agree best, for content that doesn't come out the
// same to the last bit when it moves. Searches up to half the height.
#pragma once

#include "scrolling/CellComparison.h"

#include <QImage>
#include <optional>

namespace marrowfin::scrolling {

// Frames of 32 bits a pixel and one width. None where no offset stands out.
std::optional<int> correlatedOffset(const QImage& older, const QImage& newer, const CellComparison& cells);

} // namespace marrowfin::scrolling
