#include "annotation/ArrowAnnotation.h"

#include "annotation/ArrowGeometry.h"
#include "annotation/HitTesting.h"
#include "annotation/InkPen.h"
#include "annotation/InkShadow.h"
#include "base/Geometry.h"

#include <QPainterPath>
#include <algorithm>

namespace marrowfin::annotation {

QRectF ArrowAnnotation::boundingRect() const {
    const double head = arrowHeadLength(distance(startPoint, endPoint), strokeWidth);
    const double pad = std::max(10.0, strokeWidth + head * 0.5);
    return inset(rectBetween(startPoint, endPoint), -pad, -pad);
}

bool ArrowAnnotation::hitTest(const QPointF& point, double tolerance) const {
    return distanceToSegment(point, startPoint, endPoint) < tolerance;
}

void ArrowAnnotation::draw(QPainter& painter) const {
    if (!(distance(startPoint, endPoint) > 0.5))
        return;
    const ArrowGeometry shape = arrowGeometry(startPoint, endPoint, strokeWidth);
    const QPointF headFoot = (shape.firstWing + shape.secondWing) / 2;
    const InkOutline outline{{startPoint, shape.shaftEnd, strokeWidth / 2},
                             {headFoot, endPoint, shape.head / 2}};
    paintWithInkShadow(painter, outline, [&](QPainter& ink) {
        ink.setPen(inkPen(*this, Qt::RoundCap, Qt::MiterJoin));
        ink.drawLine(startPoint, shape.shaftEnd);
        QPainterPath head;
        head.setFillRule(Qt::WindingFill);
        head.addPolygon(QPolygonF{endPoint, shape.firstWing, shape.secondWing});
        head.closeSubpath();
        ink.fillPath(head, strokeColor);
    });
}

} // namespace marrowfin::annotation
