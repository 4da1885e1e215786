#include "annotation/FreehandAnnotation.h"

#include "annotation/DeviceSpace.h"
#include "annotation/HitTesting.h"
#include "annotation/InkPen.h"
#include "annotation/InkShadow.h"
#include "annotation/PenSmoothing.h"

#include <algorithm>

namespace marrowfin::annotation {

QRectF FreehandAnnotation::boundingRect() const {
    if (points.isEmpty())
        return {};
    double left = points.first().x(), right = left;
    double top = points.first().y(), bottom = top;
    for (const QPointF& point : points) {
        left = std::min(left, point.x());
        right = std::max(right, point.x());
        top = std::min(top, point.y());
        bottom = std::max(bottom, point.y());
    }
    return {left, top, right - left, bottom - top};
}

bool FreehandAnnotation::hitTest(const QPointF& point, double tolerance) const {
    for (qsizetype i = 1; i < points.size(); ++i)
        if (distanceToSegment(point, points[i - 1], points[i]) < tolerance)
            return true;
    return false;
}

void FreehandAnnotation::translate(double dx, double dy) {
    for (QPointF& point : points)
        point += QPointF(dx, dy);
}

void FreehandAnnotation::draw(QPainter& painter) const {
    if (points.size() < 2 || !isPaintable(boundingRect()) || !isHandsStroke(points))
        return;
    const QList<QPointF> smooth = smoothedPoints(points);
    // The curves leave the straight way between their points by less than a point.
    const double reach = strokeWidth / 2 + 1;
    InkOutline outline;
    outline.reserve(static_cast<size_t>(smooth.size()));
    for (qsizetype i = 1; i < smooth.size(); ++i)
        outline.push_back({smooth[i - 1], smooth[i], reach});
    paintWithInkShadow(painter, outline, [&](QPainter& ink) {
        ink.setPen(inkPen(*this, Qt::RoundCap, Qt::RoundJoin));
        ink.drawPath(curveThrough(smooth));
    });
}

} // namespace marrowfin::annotation
