#include "panel/CountdownLine.h"

#include "chrome/AnimationClock.h"

#include <algorithm>

namespace marrowfin::panel {

using chrome::Animation;
using chrome::Property;
using chrome::TimingFunction;

namespace {
constexpr double sideInset = 24;
constexpr double aboveBottom = 9;
constexpr double settledAfterArrival = 0.5;

QString drain() {
    return QStringLiteral("drain");
}
QString lineFade() {
    return QStringLiteral("lineFade");
}
} // namespace

CountdownLine::CountdownLine(chrome::Layer& parent, const QRectF& card)
    : line(parent.add<chrome::ShapeLayer>()) {
    line.setFrame(card);
    QPainterPath path(QPointF(sideInset, aboveBottom));
    path.lineTo(card.width() - sideInset, aboveBottom);
    line.setPath(path);
    line.setFillColor(std::nullopt);
    line.setLine(2, Qt::RoundCap);
    line.setValue(Property::StrokeEnd, 1.0);
    line.setValue(Property::Opacity, 0.0);
}

void CountdownLine::setColor(const QColor& color) {
    line.setStrokeColor(color);
}

void CountdownLine::start(double seconds, double arrivalTime) {
    line.removeAnimation(drain());
    line.removeAnimation(lineFade());
    line.setValue(Property::Opacity, 1.0);
    line.setValue(Property::StrokeEnd, 0.0);
    line.addAnimation(drain(),
                      Animation::basic(Property::StrokeEnd, 1.0, 0.0, seconds, TimingFunction::linear()));
    Animation fade = Animation::basic(Property::Opacity, 0.0, 1.0, 0.25, TimingFunction::linear());
    fade.beginTime = std::max(chrome::AnimationClock::shared().now(), arrivalTime + settledAfterArrival);
    fade.fillMode = chrome::FillMode::Backwards;
    line.addAnimation(lineFade(), fade);
}

void CountdownLine::freeze() {
    const chrome::Value end = line.presented(Property::StrokeEnd);
    const chrome::Value opacity = line.presented(Property::Opacity);
    line.removeAnimation(drain());
    line.removeAnimation(lineFade());
    line.setValue(Property::StrokeEnd, end);
    line.setValue(Property::Opacity, 0.0);
    if (opacity != chrome::Value(0.0))
        line.addAnimation(lineFade(),
                          Animation::basic(Property::Opacity, opacity, 0.0, 0.15, TimingFunction::linear()));
}

} // namespace marrowfin::panel
