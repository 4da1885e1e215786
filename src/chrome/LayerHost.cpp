#include "chrome/LayerHost.h"

#include "chrome/LayerPainter.h"

#include <QPainter>
#include <QWidget>
#include <algorithm>
#include <cmath>

namespace marrowfin::chrome {

LayerHost::LayerHost(QWidget& owner) : widget(owner), top(std::make_unique<Layer>()) {
    top->rootHost = this;
}

LayerHost::~LayerHost() {
    top->rootHost = nullptr;
    AnimationClock::shared().cancel(*this);
}

void LayerHost::setSize(const QSizeF& size) {
    top->setFrame({QPointF(0, 0), size});
}

void LayerHost::paint(QPainter& painter, const QRect& dirty) {
    painter.save();
    // As painted, not as the widget has it: a picture of the widget may be denser than its screen.
    const QTransform device = painter.deviceTransform();
    const double density = std::hypot(device.m11(), device.m12());
    const QRectF deviceClip = painter.deviceTransform().mapRect(QRectF(dirty));
    painter.translate(0, top->bounds().height());
    painter.scale(1, -1);
    LayerPainter::paint(painter, *top, shownTime, density, deviceClip);
    painter.restore();
}

QRectF LayerHost::toWidget(const QRectF& rect) const {
    return {rect.x(), top->bounds().height() - rect.y() - rect.height(), rect.width(), rect.height()};
}

QPointF LayerHost::toLayer(const QPointF& point) const {
    return {point.x(), top->bounds().height() - point.y()};
}

void LayerHost::layerChanged(Layer& layer) {
    shownTime = AnimationClock::shared().now();
    // A mask shows nothing itself: what it masks has changed.
    Layer* seen = &layer;
    while (seen->superlayer && seen->superlayer->mask.get() == seen)
        seen = seen->superlayer;
    repaint(*seen, shownTime);
    if (!layer.animations.empty())
        AnimationClock::shared().schedule(*this, AnimationClock::shared().nextFrame());
}

void LayerHost::repaint(const QRectF& layerRect) {
    // A pixel more on each side: antialiasing touches the next one.
    if (!layerRect.isEmpty())
        widget.update(toWidget(layerRect).toAlignedRect().adjusted(-1, -1, 1, 1));
}

void LayerHost::repaint(Layer& layer, double now) {
    const QRectF before = layer.shown;
    rememberShown(layer, now, layer.toRoot(now));
    repaint(before);
    if (layer.shown != before)
        repaint(layer.shown);
}

void LayerHost::rememberShown(Layer& layer, double now, const QTransform& toRoot) {
    layer.shown = toRoot.mapRect(layer.extent(now));
    layer.shownAt = now;
    for (const std::unique_ptr<Layer>& sublayer : layer.sublayers)
        rememberShown(*sublayer, now, sublayer->toSuperlayer(now) * toRoot);
}

std::optional<double> LayerHost::tick(double now) {
    std::optional<double> due;
    step(*top, now, due);
    shownTime = now;
    return due;
}

void LayerHost::step(Layer& layer, double now, std::optional<double>& due) {
    for (const std::unique_ptr<Layer>& sublayer : layer.sublayers)
        step(*sublayer, now, due);
    if (layer.mask)
        step(*layer.mask, now, due);
    if (layer.animations.empty())
        return;
    std::optional<QRectF> part;
    if (layer.animations.size() == 1)
        part = layer.damage(layer.animations.front().animation, layer.shownAt, now);
    if (part)
        repaint(layer.toRoot(now).mapRect(*part));
    else
        repaint(layer, now);
    layer.shownAt = now;
    std::erase_if(layer.animations, [&](const Layer::Running& run) { return run.animation.isOver(now); });
    for (const Layer::Running& running : layer.animations) {
        const double next = layer.nextChange(running.animation, now, widget.devicePixelRatioF());
        due = due ? std::min(*due, next) : next;
    }
}

} // namespace marrowfin::chrome
