#include "chrome/Layer.h"

#include "base/Geometry.h"
#include "chrome/AnimationClock.h"
#include "chrome/LayerHost.h"

#include <algorithm>

namespace marrowfin::chrome {

void Layer::adopt(std::unique_ptr<Layer> layer) {
    layer->superlayer = this;
    sublayers.push_back(std::move(layer));
}

void Layer::adoptMask(std::unique_ptr<Layer> layer) {
    layer->superlayer = this;
    mask = std::move(layer);
    changed();
}

void Layer::setMaskHole(const QRectF& hole) {
    maskHole = hole;
    changed();
}

QRectF Layer::frame() const {
    return {position - QPointF(anchor.x() * size.width(), anchor.y() * size.height()), size};
}

void Layer::setFrame(const QRectF& frame) {
    size = frame.size();
    position = frame.topLeft() + QPointF(anchor.x() * size.width(), anchor.y() * size.height());
    changed();
}

void Layer::setAnchorPoint(const QPointF& point) {
    const QRectF kept = frame();
    anchor = point;
    setFrame(kept);
}

Value Layer::value(Property property) const {
    switch (property) {
    case Property::Opacity:
        return modelOpacity;
    case Property::Transform:
        return modelTransform;
    case Property::BackgroundColor:
        return background;
    case Property::ShadowOpacity:
        return cast.opacity;
    case Property::ShadowRadius:
        return cast.radius;
    case Property::StrokeEnd:
        return modelStrokeEnd;
    }
    return 0.0;
}

void Layer::setValue(Property property, const Value& value) {
    switch (property) {
    case Property::Opacity:
        modelOpacity = std::get<double>(value);
        break;
    case Property::Transform:
        modelTransform = std::get<QTransform>(value);
        break;
    case Property::BackgroundColor:
        background = std::get<QColor>(value);
        break;
    case Property::ShadowOpacity:
        cast.opacity = std::get<double>(value);
        break;
    case Property::ShadowRadius:
        cast.radius = std::get<double>(value);
        break;
    case Property::StrokeEnd:
        modelStrokeEnd = std::get<double>(value);
        break;
    }
    changed();
}

Value Layer::presented(Property property) const {
    return presentedAt(property, AnimationClock::shared().now());
}

Value Layer::presentedAt(Property property, double now) const {
    for (auto running = animations.rbegin(); running != animations.rend(); ++running)
        if (running->animation.property == property)
            if (const std::optional<Value> shownValue = running->animation.valueAt(now))
                return *shownValue;
    return value(property);
}

void Layer::setContents(const QImage& image) {
    picture.set(image);
    changed();
}

void Layer::setCornerRadius(double newRadius, CornerCurve curve) {
    radius = newRadius;
    cornerCurve = curve;
    changed();
}

void Layer::setMasksToBounds(bool masks) {
    clips = masks;
    changed();
}

void Layer::setBorder(const Border& border) {
    edge = border;
    changed();
}

void Layer::setShadow(const Shadow& shadow) {
    cast = shadow;
    changed();
}

void Layer::addAnimation(const QString& key, Animation animation) {
    std::erase_if(animations, [&](const Running& running) { return running.key == key; });
    if (animation.beginTime == 0)
        animation.beginTime = AnimationClock::shared().now();
    animations.push_back({key, std::move(animation)});
    changed();
}

void Layer::removeAnimation(const QString& key) {
    if (std::erase_if(animations, [&](const Running& running) { return running.key == key; }) > 0)
        changed();
}

const Animation* Layer::animation(const QString& key) const {
    const double now = AnimationClock::shared().now();
    for (const Running& running : animations)
        if (running.key == key && !running.animation.isOver(now))
            return &running.animation;
    return nullptr;
}

QTransform Layer::toSuperlayer(double now) const {
    QTransform result = QTransform::fromTranslate(-anchor.x() * size.width(), -anchor.y() * size.height());
    result *= std::get<QTransform>(presentedAt(Property::Transform, now));
    result *= QTransform::fromTranslate(position.x(), position.y());
    return result;
}

QTransform Layer::toRoot(double now) const {
    const QTransform here = toSuperlayer(now);
    return superlayer ? here * superlayer->toRoot(now) : here;
}

double Layer::nextChange(const Animation& animation, double now, double) const {
    if (animation.beginTime > now)
        return animation.beginTime;
    return AnimationClock::shared().nextFrame();
}

void Layer::changed() {
    if (LayerHost* owner = host())
        owner->layerChanged(*this);
}

LayerHost* Layer::host() const {
    const Layer* layer = this;
    while (layer->superlayer)
        layer = layer->superlayer;
    return layer->rootHost;
}

QRectF Layer::shadowExtent(double now) const {
    if (cast.path.isEmpty() || presentedNumber(Property::ShadowOpacity, now) <= 0)
        return {};
    const double reach = ShadowMask::reach(presentedNumber(Property::ShadowRadius, now)) + 1;
    return inset(cast.path.boundingRect().translated(cast.offset), -reach, -reach);
}

QRectF Layer::extent(double now) const {
    if (presentedNumber(Property::Opacity, now) <= 0)
        return {};
    QRectF all = clips ? bounds() : ownExtent(now);
    if (!clips)
        for (const std::unique_ptr<Layer>& sublayer : sublayers)
            all |= sublayer->toSuperlayer(now).mapRect(sublayer->extent(now));
    return all | shadowExtent(now);
}

} // namespace marrowfin::chrome
