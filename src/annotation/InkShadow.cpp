#include "annotation/InkShadow.h"

#include "annotation/DeviceSpace.h"
#include "base/Geometry.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace marrowfin::annotation {

namespace {

constexpr double shadowAlpha = 0.32;
// A blur of two points is a Gaussian of one. Captures have one to four pixels to a point; the bound is for
// images of absurd density, where the shadow stops growing.
constexpr double largestSigma = 16;

double densityOf(const QTransform& m) {
    return (std::hypot(m.m11(), m.m12()) + std::hypot(m.m21(), m.m22())) * 0.5;
}

// The image of one point down, whichever way the transform turns.
QPointF offsetFor(const QTransform& m) {
    const double length = std::hypot(m.m21(), m.m22());
    const double bound = length > largestSigma ? largestSigma / length : 1.0;
    return {m.m21() * bound, m.m22() * bound};
}

bool canBePainted(const InkOutline& outline) {
    return std::all_of(outline.begin(), outline.end(), [](const InkSegment& segment) {
        return isPaintable(inset(rectBetween(segment.from, segment.to), -segment.reach, -segment.reach)) &&
               isFinite(segment.from) && isFinite(segment.to) && segment.reach >= 0;
    });
}

ShadowBlur shadowFor(const QTransform& toDevice) {
    return {std::min(densityOf(toDevice), largestSigma), offsetFor(toDevice), shadowAlpha};
}

InkCoverage coverageOf(const QPainter& target, const InkOutline& outline, const QTransform& toDevice,
                       const QMargins& reach) {
    if (!canBePainted(outline) || !toDevice.isInvertible())
        return {{}, {}, {}, {}};
    // Ink just outside of what can be seen casts its shadow into it.
    const QRect seen = integral(paintableDeviceRect(target)).toRect();
    const QMargins casting(reach.right(), reach.bottom(), reach.left(), reach.top());
    return {outline, toDevice, reach, seen.marginsAdded(casting)};
}

} // namespace

InkLayer::InkLayer(const QPainter& target, const InkOutline& outline)
    : toDevice(target.deviceTransform()), shadow(shadowFor(toDevice)),
      coverage(coverageOf(target, outline, toDevice, shadow.reach())) {
    if (isEmpty())
        return;
    layer = QImage(coverage.bounds().size(), QImage::Format_ARGB32_Premultiplied);
    const qsizetype rowLength = layer.bytesPerLine();
    uchar* const first = layer.bits();
    for (const QRect& rect : coverage.rects()) {
        const QRect local = rect.translated(-coverage.bounds().topLeft());
        for (int y = local.top(); y <= local.bottom(); ++y)
            std::memset(first + y * rowLength + local.left() * 4, 0, static_cast<size_t>(local.width()) * 4);
    }
}

QTransform InkLayer::transform() const {
    return toDevice * QTransform::fromTranslate(-coverage.bounds().left(), -coverage.bounds().top());
}

void InkLayer::addShadow() {
    std::vector<QRect> rects = coverage.rects();
    for (QRect& rect : rects)
        rect.translate(-coverage.bounds().topLeft());
    shadow.putUnder(layer, rects);
}

void InkLayer::putOnto(QPainter& target) const {
    target.save();
    enterDeviceSpace(target);
    for (const QRect& rect : coverage.rects())
        target.drawImage(rect.topLeft(), layer, rect.translated(-coverage.bounds().topLeft()));
    target.restore();
}

} // namespace marrowfin::annotation
