// The words under a capture: its pixels, its file's bytes, and for a while how to drag it out. Any thread.
#pragma once

#include "imaging/Image.h"

#include <QString>
#include <optional>

namespace marrowfin::panel {

struct CaptionText {
    QString facts; // "1234 × 567 · 1.2 MB"; empty for an image without pixels
    QString hint;  // "  —  Drag out to share", or empty
    QString whole() const { return facts + hint; }
};

CaptionText captionText(const std::optional<QSize>& pixelSize, std::optional<qint64> byteCount,
                        bool showsHint);

// As a file manager writes it, in decimal units: "Zero KB", "1 byte", "999 bytes", "12 KB", "1.2 MB", "1.23
// GB".
QString fileByteCount(qint64 bytes);

} // namespace marrowfin::panel
