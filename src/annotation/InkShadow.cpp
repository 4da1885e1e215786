#include "annotation/InkShadow.h"

#include "annotation/DeviceSpace.h"
#include "annotation/ShadowBlur.h"
#include "base/Geometry.h"

#include <algorithm>
#include <cmath>

namespace marrowfin {

namespace {

constexpr double shadowAlpha = 0.32;
// A blur of two points is a Gaussian of one. Captures have one to four pixels to a point; the bound is for
// images of absurd density, where the shadow stops growing.
constexpr double largestSigma = 16;

double densityOf(const QTransform& m) {
    return (std::hypot(m.m11(), m.m12()) + std::hypot(m.m21(), m.m22())) * 0.5;
}

double sigmaFor(double density) {
    return std::min(density, largestSigma);
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

InkCoverage coverageOf(const QPainter& target, const InkOutline& outline, const QTransform& toDevice) {
    const double margin = shadowReach(sigmaFor(densityOf(toDevice)), offsetFor(toDevice));
    if (!canBePainted(outline) || !toDevice.isInvertible())
        return {{}, {}, 0, {}};
    // Ink just outside of what can be seen casts its shadow into it.
    const QRectF limits = inset(paintableDeviceRect(target), -margin, -margin);
    return {outline, toDevice, margin, integral(limits).toRect()};
}

} // namespace

InkLayer::InkLayer(const QPainter& target, const InkOutline& outline)
    : toDevice(target.deviceTransform()), density(densityOf(toDevice)),
      coverage(coverageOf(target, outline, toDevice)) {
    if (isEmpty())
        return;
    layer = QImage(coverage.bounds().size(), QImage::Format_ARGB32_Premultiplied);
    for (const QRect& rect : coverage.rects()) {
        const QRect local = rect.translated(-coverage.bounds().topLeft());
        for (int y = local.top(); y <= local.bottom(); ++y)
            std::fill_n(reinterpret_cast<quint32*>(layer.scanLine(y)) + local.left(), local.width(), 0u);
    }
}

QTransform InkLayer::transform() const {
    return toDevice * QTransform::fromTranslate(-coverage.bounds().left(), -coverage.bounds().top());
}

void InkLayer::addShadow() {
    std::vector<QRect> rects = coverage.rects();
    for (QRect& rect : rects)
        rect.translate(-coverage.bounds().topLeft());
    addShadowUnderneath(layer, rects, sigmaFor(density), offsetFor(toDevice), shadowAlpha);
}

void InkLayer::putOnto(QPainter& target) const {
    target.save();
    enterDeviceSpace(target);
    for (const QRect& rect : coverage.rects())
        target.drawImage(rect.topLeft(), layer, rect.translated(-coverage.bounds().topLeft()));
    target.restore();
}

} // namespace marrowfin
