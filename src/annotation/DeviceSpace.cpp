#include "annotation/DeviceSpace.h"

#include "base/Geometry.h"

#include <QPainter>

namespace marrowfin::annotation {

namespace {
constexpr double farthest = 1e6;
} // namespace

QRectF paintableRect(const QPainter& painter) {
    const QPaintDevice& device = *painter.device();
    const QRectF whole =
        painter.worldTransform().inverted().mapRect(QRectF(0, 0, device.width(), device.height()));
    if (!painter.hasClipping())
        return whole;
    return intersection(whole, painter.clipBoundingRect()).value_or(QRectF());
}

QRectF paintableDeviceRect(const QPainter& painter) {
    return painter.deviceTransform().mapRect(paintableRect(painter));
}

void enterDeviceSpace(QPainter& painter) {
    painter.setWorldTransform(painter.deviceTransform().inverted(), true);
}

bool isPaintable(const QRectF& rect) {
    return isFinite(rect) && minX(rect) >= -farthest && minY(rect) >= -farthest && maxX(rect) <= farthest &&
           maxY(rect) <= farthest;
}

} // namespace marrowfin::annotation
