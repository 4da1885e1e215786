#include "chrome/Paths.h"

#include <algorithm>

namespace marrowfin::chrome {

namespace {
// How far beyond the radius a continuous corner begins.
constexpr double continuousReach = 1.28;
// Of the way from a circular corner's start to its corner point, where the control point lies.
constexpr double circularControl = 0.5522847498;
// The middle of a corner's arc is this part of the radius away from both edges.
constexpr double arcMiddle = 0.2928932188;

// One cubic per corner: from `reach` before the corner point to `reach` behind it, both control points
// `control` from the corner point.
QPainterPath corners(const QRectF& r, double reach, double control) {
    const double left = r.left(), top = r.top(), right = r.right(), bottom = r.bottom();
    QPainterPath path;
    path.moveTo(left + reach, top);
    path.lineTo(right - reach, top);
    path.cubicTo(right - control, top, right, top + control, right, top + reach);
    path.lineTo(right, bottom - reach);
    path.cubicTo(right, bottom - control, right - control, bottom, right - reach, bottom);
    path.lineTo(left + reach, bottom);
    path.cubicTo(left + control, bottom, left, bottom - control, left, bottom - reach);
    path.lineTo(left, top + reach);
    path.cubicTo(left, top + control, left + control, top, left + reach, top);
    path.closeSubpath();
    return path;
}
} // namespace

QPainterPath roundedRect(const QRectF& rect, double radius, CornerCurve curve) {
    const QRectF r = rect.normalized();
    const double half = std::min(r.width(), r.height()) / 2;
    const double limited = std::clamp(radius, 0.0, half);
    if (limited <= 0) {
        QPainterPath path;
        path.addRect(r);
        return path;
    }
    const double reach = std::min(limited * continuousReach, half);
    if (curve == CornerCurve::Circular || reach <= limited)
        return corners(r, limited, limited * (1 - circularControl));
    // Through the middle of the circular arc: (reach + 3 control) / 8 = arcMiddle * radius.
    return corners(r, reach, (8 * arcMiddle * limited - reach) / 3);
}

QTransform scaleAbout(const QPointF& center, double scale) {
    QTransform transform;
    transform.translate(center.x(), center.y());
    transform.scale(scale, scale);
    transform.translate(-center.x(), -center.y());
    return transform;
}

} // namespace marrowfin::chrome
