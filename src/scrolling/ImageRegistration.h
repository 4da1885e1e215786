// How far the content of one area moved between two bitmaps of it: our own measure, whole pixel rows,
// vertical only. Fixed headers, footers and sidebars, a moving scroll bar, a caret and a spinner don't
// mislead it. Pure; any thread.
#pragma once

#include "base/Result.h"

#include <QImage>
#include <optional>

namespace marrowfin::scrolling {

struct Movement {
    // Row y of the newer bitmap shows what row y + offset of the older one showed: above 0 the content went
    // up, below 0 it went down, 0 is an area that stayed or in which something plays.
    int offset = 0;
    // The rows at either end that don't go along, of an area that moved.
    int stillTop = 0;
    int stillBottom = 0;

    friend bool operator==(const Movement&, const Movement&) = default;
};

class ImageRegistration {
public:
    // None when the two don't show that the content moved, and by how much: unrelated pictures, equal rows
    // that several offsets explain alike. A newer bitmap of another width is taken as if stretched to the
    // older one's. Fails only for want of memory.
    static Result<std::optional<Movement>> movement(const QImage& older, const QImage& newer);
};

} // namespace marrowfin::scrolling
