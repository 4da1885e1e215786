// The pen of a record that is stroked. Image points; GUI thread.
#pragma once

#include "annotation/Ink.h"

#include <QPen>

namespace marrowfin::annotation {

// No pen for a width that isn't above 0: the toolkit would draw a hairline of one pixel.
inline QPen inkPen(const Ink& ink, Qt::PenCapStyle cap, Qt::PenJoinStyle join) {
    if (!(ink.strokeWidth > 0))
        return Qt::NoPen;
    QPen pen(ink.strokeColor, ink.strokeWidth, Qt::SolidLine, cap, join);
    pen.setMiterLimit(10);
    return pen;
}

} // namespace marrowfin::annotation
