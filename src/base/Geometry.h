// The one convention for rectangles: minimum edges are inside, maximum edges are not; a rectangle with a
// negative side means the same as its standardised form. Plain doubles; the unit and the space are the
// caller's. QRectF's own contains() counts the maximum edges and its intersected() can't tell "touching" from
// "apart".
#pragma once

#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <optional>

namespace marrowfin {

// The same area with non-negative sides.
QRectF standardized(const QRectF& rect);

double minX(const QRectF& rect);
double midX(const QRectF& rect);
double maxX(const QRectF& rect);
double minY(const QRectF& rect);
double midY(const QRectF& rect);
double maxY(const QRectF& rect);

// True when a side is zero or the rectangle is null.
bool isEmpty(const QRectF& rect);

// Half open: the minimum edges belong to the rectangle.
bool contains(const QRectF& rect, const QPointF& point);
// The inner rectangle lies wholly in the outer one; shared edges are allowed.
bool containsRect(const QRectF& outer, const QRectF& inner);
// The common area; nothing when the two are apart. Touching edges give a rectangle with a zero side.
std::optional<QRectF> intersection(const QRectF& a, const QRectF& b);
QRectF unionOf(const QRectF& a, const QRectF& b);

// Each side moved inwards by dx or dy (outwards when negative); the null rectangle when nothing is left.
QRectF inset(const QRectF& rect, double dx, double dy);
QRectF offset(const QRectF& rect, double dx, double dy);
// The smallest rectangle with whole coordinates that holds this one.
QRectF integral(const QRectF& rect);

// The rectangle between two corners, in any order.
QRectF rectBetween(const QPointF& a, const QPointF& b);
QPointF center(const QRectF& rect);
double distance(const QPointF& a, const QPointF& b);

// To the nearest integer, halves away from zero.
double rounded(double value);
// The same as an int, saturated at int's limits; 0 for a value that isn't a number.
int roundedToInt(double value);

bool isFinite(const QPointF& point);
bool isFinite(const QRectF& rect);

} // namespace marrowfin
