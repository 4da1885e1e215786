#include "base/Geometry.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace marrowfin {

namespace {
bool hasNaN(const QRectF& rect) {
    return std::isnan(rect.x()) || std::isnan(rect.y()) || std::isnan(rect.width()) ||
           std::isnan(rect.height());
}
} // namespace

QRectF standardized(const QRectF& rect) {
    // Not QRectF::normalized(), which leaves a null size alone but also treats NaN differently across
    // versions.
    const double x = rect.width() < 0 ? rect.x() + rect.width() : rect.x();
    const double y = rect.height() < 0 ? rect.y() + rect.height() : rect.y();
    return {x, y, std::abs(rect.width()), std::abs(rect.height())};
}

double minX(const QRectF& rect) {
    return rect.width() < 0 ? rect.x() + rect.width() : rect.x();
}
double maxX(const QRectF& rect) {
    return rect.width() < 0 ? rect.x() : rect.x() + rect.width();
}
double midX(const QRectF& rect) {
    return rect.x() + rect.width() * 0.5;
}
double minY(const QRectF& rect) {
    return rect.height() < 0 ? rect.y() + rect.height() : rect.y();
}
double maxY(const QRectF& rect) {
    return rect.height() < 0 ? rect.y() : rect.y() + rect.height();
}
double midY(const QRectF& rect) {
    return rect.y() + rect.height() * 0.5;
}

bool isEmpty(const QRectF& rect) {
    return rect.width() == 0 || rect.height() == 0;
}

bool contains(const QRectF& rect, const QPointF& point) {
    return point.x() >= minX(rect) && point.x() < maxX(rect) && point.y() >= minY(rect) &&
           point.y() < maxY(rect);
}

bool containsRect(const QRectF& outer, const QRectF& inner) {
    return minX(inner) >= minX(outer) && maxX(inner) <= maxX(outer) && minY(inner) >= minY(outer) &&
           maxY(inner) <= maxY(outer);
}

std::optional<QRectF> intersection(const QRectF& a, const QRectF& b) {
    // What isn't a number has no place, and max() below would take the other's.
    if (hasNaN(a) || hasNaN(b))
        return std::nullopt;
    const double left = std::max(minX(a), minX(b));
    const double right = std::min(maxX(a), maxX(b));
    const double low = std::max(minY(a), minY(b));
    const double high = std::min(maxY(a), maxY(b));
    if (!(left <= right && low <= high))
        return std::nullopt;
    return QRectF(left, low, right - left, high - low);
}

QRectF unionOf(const QRectF& a, const QRectF& b) {
    const double left = std::min(minX(a), minX(b));
    const double low = std::min(minY(a), minY(b));
    return {left, low, std::max(maxX(a), maxX(b)) - left, std::max(maxY(a), maxY(b)) - low};
}

QRectF inset(const QRectF& rect, double dx, double dy) {
    const QRectF r = standardized(rect);
    const double width = r.width() - 2 * dx;
    const double height = r.height() - 2 * dy;
    if (!(width >= 0 && height >= 0))
        return {};
    return {r.x() + dx, r.y() + dy, width, height};
}

QRectF offset(const QRectF& rect, double dx, double dy) {
    const QRectF r = standardized(rect);
    return {r.x() + dx, r.y() + dy, r.width(), r.height()};
}

QRectF integral(const QRectF& rect) {
    const double left = std::floor(minX(rect));
    const double low = std::floor(minY(rect));
    return {left, low, std::ceil(maxX(rect)) - left, std::ceil(maxY(rect)) - low};
}

QRectF rectBetween(const QPointF& a, const QPointF& b) {
    return {std::min(a.x(), b.x()), std::min(a.y(), b.y()), std::abs(a.x() - b.x()), std::abs(a.y() - b.y())};
}

QPointF center(const QRectF& rect) {
    return {midX(rect), midY(rect)};
}

double distance(const QPointF& a, const QPointF& b) {
    return std::hypot(a.x() - b.x(), a.y() - b.y());
}

double rounded(double value) {
    return std::round(value);
}

int roundedToInt(double value) {
    if (std::isnan(value))
        return 0;
    constexpr double lowest = std::numeric_limits<int>::min();
    constexpr double highest = std::numeric_limits<int>::max();
    return static_cast<int>(std::clamp(std::round(value), lowest, highest));
}

bool isFinite(const QPointF& point) {
    return std::isfinite(point.x()) && std::isfinite(point.y());
}

bool isFinite(const QRectF& rect) {
    return std::isfinite(rect.x()) && std::isfinite(rect.y()) && std::isfinite(rect.width()) &&
           std::isfinite(rect.height());
}

} // namespace marrowfin
