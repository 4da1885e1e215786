#include "editor/CropOverlay.h"

#include "annotation/ResizeHandle.h"
#include "base/ColorAlpha.h"

#include <QPainter>
#include <QPainterPath>

namespace marrowfin::editor {

using namespace annotation;

namespace {

constexpr double handleSide = 9.0; // view points

QPen solid(const QColor& color, double width) {
    return {color, width, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin};
}

void dim(QPainter& painter, const QRectF& cropRect, const QSizeF& image) {
    QPainterPath around;
    around.setFillRule(Qt::OddEvenFill);
    const QRectF whole(QPointF(0, 0), image);
    around.addRect(whole);
    around.addRect(cropRect.intersected(whole));
    painter.fillPath(around, withAlpha(Qt::black, 0.45));
}

void drawThirds(QPainter& painter, const QRectF& rect, double scale) {
    painter.setPen(solid(withAlpha(Qt::white, 0.35), 1 / scale));
    for (const double part : {1.0 / 3, 2.0 / 3}) {
        const double x = rect.x() + rect.width() * part;
        const double y = rect.y() + rect.height() * part;
        painter.drawLine(QPointF(x, rect.top()), QPointF(x, rect.bottom()));
        painter.drawLine(QPointF(rect.left(), y), QPointF(rect.right(), y));
    }
}

} // namespace

void drawCropOverlay(QPainter& painter, const QRectF& cropRect, const QSizeF& image, double scale) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    dim(painter, cropRect, image);
    painter.setBrush(Qt::NoBrush);
    drawThirds(painter, cropRect, scale);
    painter.setPen(solid(withAlpha(Qt::black, 0.5), 3 / scale));
    painter.drawRect(cropRect);
    painter.setPen(solid(Qt::white, 1.5 / scale));
    painter.drawRect(cropRect);
    painter.setPen(solid(withAlpha(Qt::black, 0.5), 1 / scale));
    for (const auto& [handle, square] : handleRects(cropRect, handleSide / scale)) {
        painter.fillRect(square, Qt::white);
        painter.drawRect(square);
    }
    painter.restore();
}

} // namespace marrowfin::editor
