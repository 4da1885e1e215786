#include "annotation/PenSmoothing.h"

#include "base/Geometry.h"

#include <algorithm>

namespace marrowfin::annotation {

namespace {

constexpr double resampleSpacing = 2.0;
constexpr qsizetype windowReach = 3; // to either side: seven points

// One pass: each point becomes the mean of its neighbourhood, which shrinks at the ends. The ends stay.
QList<QPointF> averaged(const QList<QPointF>& points) {
    const qsizetype last = points.size() - 1;
    QList<QPointF> result = points;
    for (qsizetype i = 1; i < last; ++i) {
        const qsizetype from = std::max<qsizetype>(i - windowReach, 0);
        const qsizetype to = std::min(i + windowReach, last);
        QPointF sum;
        for (qsizetype j = from; j <= to; ++j)
            sum += points[j];
        result[i] = sum / static_cast<double>(to - from + 1);
    }
    return result;
}

bool isSame(const QPointF& a, const QPointF& b) {
    return a.x() == b.x() && a.y() == b.y(); // exactly, where == forgives small differences
}

} // namespace

bool isHandsStroke(const QList<QPointF>& points) {
    constexpr double longestStroke = 1e6;
    double length = 0;
    for (qsizetype i = 1; i < points.size(); ++i)
        length += distance(points[i - 1], points[i]);
    return length <= longestStroke;
}

QList<QPointF> resampled(const QList<QPointF>& points, double spacing) {
    if (points.isEmpty())
        return {};
    QList<QPointF> result{points.first()};
    double running = 0; // since the last emitted point
    for (qsizetype i = 1; i < points.size(); ++i) {
        const QPointF to = points[i];
        QPointF from = points[i - 1];
        double left = distance(from, to);
        if (!(left > 0 && spacing <= running + left)) {
            running += left;
            continue;
        }
        double step = spacing - running;
        do {
            from += (to - from) * std::min(step / left, 1.0);
            result.append(from);
            left -= step;
            step = spacing;
        } while (left > 0 && step <= left);
        running = left;
    }
    if (!isSame(result.last(), points.last()))
        result.append(points.last());
    return result;
}

QList<QPointF> smoothedPoints(const QList<QPointF>& points) {
    if (points.size() < 3 || !isHandsStroke(points))
        return points;
    const QList<QPointF> even = resampled(points, resampleSpacing);
    if (even.size() < 5)
        return even;
    return averaged(averaged(even));
}

QPainterPath curveThrough(const QList<QPointF>& points) {
    QPainterPath path;
    if (points.size() < 2)
        return path;
    const qsizetype last = points.size() - 1;
    path.reserve(static_cast<int>(3 * last + 1));
    path.moveTo(points.first());
    for (qsizetype i = 0; i < last; ++i) {
        const QPointF& from = points[i];
        const QPointF& to = points[i + 1];
        const QPointF& before = points[std::max<qsizetype>(i - 1, 0)];
        const QPointF& after = points[std::min(i + 2, last)];
        path.cubicTo(from + (to - before) / 6, to - (after - from) / 6, to);
    }
    return path;
}

QPainterPath smoothedPath(const QList<QPointF>& points) {
    return curveThrough(smoothedPoints(points));
}

} // namespace marrowfin::annotation
