// What each of the nine records answers, and AnyAnnotation for whichever of them it holds. Image points, y
// down.
#pragma once

#include "annotation/Ink.h"

#include <concepts>

class QPainter;

namespace marrowfin::annotation {

template <class T>
concept AnnotationProtocol = std::derived_from<T, Ink> && std::equality_comparable<T> &&
    requires(T record, const T& constant, QPainter& painter, QPointF point, double number) {
    // What the selection chrome frames.
    { constant.boundingRect() } -> std::same_as<QRectF>;
    // Paints the record with a painter whose space is image points.
    {constant.draw(painter)};
    // Whether a press at the point, with this reach, takes the record.
    { constant.hitTest(point, number) } -> std::same_as<bool>;
    // Moves the record; ink may be moved off the image.
    {record.translate(number, number)};
};

} // namespace marrowfin::annotation
