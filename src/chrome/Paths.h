// Outlines of rounded plates. Any unit. Any thread.
#pragma once

#include <QPainterPath>
#include <QRectF>
#include <QTransform>

namespace marrowfin::chrome {

enum class CornerCurve {
    Circular,
    Continuous, // the curvature grows gradually out of the straight edge
};

// The radius is limited to half of the shorter side; there a continuous corner is a circular one.
QPainterPath roundedRect(const QRectF& rect, double radius, CornerCurve curve = CornerCurve::Circular);

// Scales about a point.
QTransform scaleAbout(const QPointF& center, double scale);

} // namespace marrowfin::chrome
