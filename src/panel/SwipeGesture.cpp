#include "panel/SwipeGesture.h"

#include <QPointingDevice>
#include <QWheelEvent>
#include <cmath>

namespace marrowfin {

namespace {
constexpr double neededDistance = 70;
// Fingers that rest this long begin anew.
constexpr quint64 pauseMilliseconds = 250;

// Scroll deltas move the content; with natural scrolling that is the fingers' own direction.
QPointF fingerDelta(const QWheelEvent& event) {
    const QPointF delta =
        event.pixelDelta().isNull() ? QPointF(event.angleDelta()) / 8 : QPointF(event.pixelDelta());
    return event.inverted() ? delta : -delta;
}
} // namespace

void SwipeGesture::begin() {
    total = {};
    consumed = false;
}

std::optional<int> SwipeGesture::move(const QPointF& delta) {
    if (consumed)
        return std::nullopt;
    total += delta;
    const double across = std::fabs(total.x());
    if (across < neededDistance || 2 * std::fabs(total.y()) >= across)
        return std::nullopt;
    consumed = true;
    return total.x() < 0 ? -1 : 1;
}

ScrollPhases::Step ScrollPhases::read(const QWheelEvent& event) {
    const QPointF delta = fingerDelta(event);
    switch (event.phase()) {
    case Qt::ScrollBegin:
        return {ScrollPhase::Began, delta};
    case Qt::ScrollUpdate:
        return {ScrollPhase::Changed, delta};
    case Qt::ScrollEnd:
    case Qt::ScrollMomentum:
        return {};
    case Qt::NoScrollPhase:
        break;
    }
    const QPointingDevice* device = event.pointingDevice();
    if (!device || device->type() != QInputDevice::DeviceType::TouchPad)
        return {};
    const quint64 now = event.timestamp();
    const bool rested = !lastMilliseconds || now - *lastMilliseconds > pauseMilliseconds;
    lastMilliseconds = now;
    return {rested ? ScrollPhase::Began : ScrollPhase::Changed, delta};
}

} // namespace marrowfin
