// Blur boxes as the canvas shows them: each box is a window onto one blurred copy of the base image, kept at
// the size it is shown in. Ink beneath a box isn't blurred here; it is in the output. Main thread.
#pragma once

#include "annotation/BlurAnnotation.h"
#include "editor/CanvasBackdrop.h"

#include <QTransform>

class QPainter;

namespace marrowfin::editor {

class LiveBlur {
public:
    // The painter's user space is the layer's, to which the transform takes image points. A box below one
    // point paints nothing, and so does one whose image can't be blurred.
    void draw(QPainter& painter, const annotation::BlurAnnotation& box, const QTransform& toLayer,
              const CanvasBackdrop& backdrop, const imaging::Image& base);

private:
    void prepare(const CanvasBackdrop& backdrop, const imaging::Image& base);

    qint64 madeFrom = 0; // the scaled image it was made from
    QImage blurred;
};

} // namespace marrowfin::editor
