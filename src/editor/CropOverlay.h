// The pending crop as it is shown: everything else dimmed, thirds, outline, handles. The painter's user space
// is image points, y down; `scale` is the canvas scale, so that lines and handles keep their size on screen.
// Main thread.
#pragma once

#include <QRectF>
#include <QSizeF>

class QPainter;

namespace marrowfin::editor {

void drawCropOverlay(QPainter& painter, const QRectF& cropRect, const QSizeF& image, double scale);
// How far beyond the rectangle handles and outline reach, in view points.
constexpr double cropOverlayReach = 6.0;

} // namespace marrowfin::editor
