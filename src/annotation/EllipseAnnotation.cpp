#include "annotation/EllipseAnnotation.h"

#include "annotation/InkPen.h"
#include "annotation/InkShadow.h"
#include "base/Geometry.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace marrowfin::annotation {

namespace {

// A polygon that stays within half a point of the ellipse.
InkOutline ellipseOutline(const QRectF& box, double reach) {
    const double radius = std::max(box.width(), box.height()) / 2;
    const int corners =
        std::isfinite(radius) ? static_cast<int>(std::clamp(4 * std::sqrt(radius), 16.0, 4096.0)) : 16;
    const auto corner = [&](int i) {
        const double angle = 2 * std::numbers::pi * i / corners;
        return center(box) + QPointF(box.width() / 2 * std::cos(angle), box.height() / 2 * std::sin(angle));
    };
    InkOutline outline;
    for (int i = 0; i < corners; ++i)
        outline.push_back({corner(i), corner(i + 1), reach + 0.5});
    return outline;
}

} // namespace

bool EllipseAnnotation::hitTest(const QPointF& point, double) const {
    const double a = size.width() * 0.5;
    const double b = size.height() * 0.5;
    const double x = (point.x() - (origin.x() + a)) / a;
    const double y = (point.y() - (origin.y() + b)) / b;
    const double s = x * x + y * y;
    return 0.8 <= s && s <= 1.2; // false for a zero axis, where s is infinite or not a number
}

void EllipseAnnotation::draw(QPainter& painter) const {
    const QRectF outline = standardized(box());
    if (outline.isNull())
        return; // a press without a drag leaves no mark
    paintWithInkShadow(painter, ellipseOutline(outline, strokeWidth / 2), [&](QPainter& ink) {
        ink.setPen(inkPen(*this, Qt::FlatCap, Qt::MiterJoin));
        ink.drawEllipse(outline);
    });
}

} // namespace marrowfin::annotation
