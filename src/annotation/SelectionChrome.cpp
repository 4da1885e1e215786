#include "annotation/SelectionChrome.h"

#include "annotation/DeviceSpace.h"

#include <QPainter>

namespace marrowfin::annotation {

namespace {

QPen outlinePen(const QColor& color, double width) {
    QPen pen(color, width, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin);
    pen.setMiterLimit(10);
    return pen;
}

// Dashes of 4 view points, 4 apart.
QPen dashedPen(const QColor& color, double scale) {
    QPen pen = outlinePen(color, 1.5 / scale);
    const double dash = 4 / scale / pen.widthF(); // the toolkit counts dashes in widths of the pen
    pen.setDashPattern({dash, dash});
    return pen;
}

} // namespace

void drawSelectionChrome(const AnyAnnotation& annotation, double scale, QPainter& painter,
                         ColorScheme scheme) {
    const QRectF frame = annotation.boundingRect();
    if (!(scale > 0) || !isPaintable(frame))
        return;
    const QColor blue = systemColor(SystemColor::blue, scheme);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(dashedPen(blue, scale));
    painter.drawRect(frame);
    painter.setBrush(Qt::white);
    painter.setPen(outlinePen(blue, 1 / scale));
    for (const auto& [handle, square] : annotation.handleRects(scale))
        painter.drawRect(square);
    painter.restore();
}

} // namespace marrowfin::annotation
