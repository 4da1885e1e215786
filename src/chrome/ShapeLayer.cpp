#include "chrome/ShapeLayer.h"

#include "base/Geometry.h"
#include "chrome/AnimationClock.h"
#include "chrome/Strips.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

namespace marrowfin::chrome {

void ShapeLayer::setPath(const QPainterPath& path) {
    outline = path;
    length = path.length();
    changed();
}

void ShapeLayer::setFillColor(std::optional<QColor> color) {
    fill = color;
    changed();
}

void ShapeLayer::setStrokeColor(std::optional<QColor> color) {
    stroke = color;
    changed();
}

void ShapeLayer::setLine(double width, Qt::PenCapStyle cap) {
    lineWidth = width;
    lineCap = cap;
    changed();
}

void ShapeLayer::paintOwn(QPainter& painter, const Moment& moment) const {
    const QRect device = onDevice(painter, ownExtent(moment.now), moment.deviceClip);
    if (fill)
        fillPath(painter, outline, *fill, device);
    const double end = std::min(presentedNumber(Property::StrokeEnd, moment.now), 1.0);
    if (!stroke || end <= 0)
        return;
    QPen pen(*stroke, lineWidth, Qt::SolidLine, lineCap, Qt::MiterJoin);
    if (end < 1)
        pen.setDashPattern({end * length / lineWidth, length / lineWidth + 1});
    strokePath(painter, outline, pen, device);
}

QRectF ShapeLayer::ownExtent(double) const {
    return inset(outline.boundingRect(), -lineWidth, -lineWidth);
}

double ShapeLayer::nextChange(const Animation& animation, double now, double density) const {
    const double frame = Layer::nextChange(animation, now, density);
    const TimingFunction* timing = std::get_if<TimingFunction>(&animation.curve);
    if (animation.property != Property::StrokeEnd || !timing || !timing->isLinear() || frame < now)
        return frame;
    // A slow line has nothing to show until its end reaches the next pixel.
    const double from = std::get<double>(animation.from);
    const double travel = (std::get<double>(animation.to) - from) * length * density; // pixels, with its sign
    if (travel == 0)
        return animation.beginTime + animation.duration;
    const double done =
        std::fabs(travel) * std::clamp((now - animation.beginTime) / animation.duration, 0.0, 1.0);
    const double next =
        animation.beginTime + animation.duration * (std::floor(done + 0.01) + 1) / std::fabs(travel);
    return std::max(frame, std::min(next, animation.beginTime + animation.duration));
}

std::optional<QRectF> ShapeLayer::damage(const Animation& animation, double before, double now) const {
    if (animation.property != Property::StrokeEnd || outline.elementCount() != 2)
        return std::nullopt;
    const auto endAt = [&](double time) {
        return outline.pointAtPercent(std::clamp(presentedNumber(Property::StrokeEnd, time), 0.0, 1.0));
    };
    return inset(rectBetween(endAt(before), endAt(now)), -lineWidth, -lineWidth);
}

void maskInside(Layer& layer, const QPainterPath& outline, double margin) {
    QPainterPath outside;
    outside.setFillRule(Qt::OddEvenFill);
    outside.addRect(inset(layer.bounds(), -margin, -margin));
    outside.addPath(outline);
    auto& mask = layer.makeMask<ShapeLayer>();
    mask.setFrame(layer.bounds());
    mask.setPath(outside);
    mask.setFillColor(Qt::black);
}

} // namespace marrowfin::chrome
