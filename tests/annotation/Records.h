// Records for tests, in red at width 3 unless a test says otherwise. Image points.
#pragma once

#include "annotation/AnyAnnotation.h"

namespace marrowfin::test {

inline const QColor red(255, 59, 48);

template <class R>
R box(double x, double y, double width, double height) {
    R record;
    record.strokeColor = red;
    record.origin = {x, y};
    record.size = {width, height};
    return record;
}

template <class R>
R segment(QPointF start, QPointF end, double strokeWidth = 3) {
    R record;
    record.strokeColor = red;
    record.strokeWidth = strokeWidth;
    record.startPoint = start;
    record.endPoint = end;
    return record;
}

inline annotation::FreehandAnnotation pen(QList<QPointF> points, double strokeWidth = 3) {
    annotation::FreehandAnnotation record;
    record.strokeColor = red;
    record.strokeWidth = strokeWidth;
    record.points = std::move(points);
    return record;
}

inline annotation::NumberAnnotation badge(QPointF center, qint64 number = 1) {
    annotation::NumberAnnotation record;
    record.strokeColor = red;
    record.center = center;
    record.number = number;
    return record;
}

inline annotation::TextAnnotation text(QPointF position, const QString& words, double fontSize = 24) {
    annotation::TextAnnotation record;
    record.strokeColor = red;
    record.position = position;
    record.text = words;
    record.fontSize = fontSize;
    return record;
}

} // namespace marrowfin::test
