#include "annotation/LineAnnotation.h"

#include "annotation/HitTesting.h"
#include "annotation/InkPen.h"
#include "annotation/InkShadow.h"
#include "base/Geometry.h"

namespace marrowfin::annotation {

QRectF LineAnnotation::boundingRect() const {
    return rectBetween(startPoint, endPoint);
}

bool LineAnnotation::hitTest(const QPointF& point, double tolerance) const {
    return distanceToSegment(point, startPoint, endPoint) < tolerance;
}

void LineAnnotation::draw(QPainter& painter) const {
    paintWithInkShadow(painter, {{startPoint, endPoint, strokeWidth / 2}}, [&](QPainter& ink) {
        ink.setPen(inkPen(*this, Qt::RoundCap, Qt::MiterJoin));
        ink.drawLine(startPoint, endPoint);
    });
}

} // namespace marrowfin::annotation
