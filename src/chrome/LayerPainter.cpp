#include "chrome/LayerPainter.h"

#include "chrome/Strips.h"

#include <QPainter>

namespace marrowfin::chrome {

void LayerPainter::paint(QPainter& painter, const Layer& layer, double now, double density,
                         const QRectF& deviceClip) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    paint(painter, layer, Moment{now, density, deviceClip});
    painter.restore();
}

void LayerPainter::paint(QPainter& painter, const Layer& layer, const Moment& moment) {
    const double opacity = layer.presentedNumber(Property::Opacity, moment.now);
    if (opacity <= 0)
        return;
    painter.save();
    painter.setTransform(layer.toSuperlayer(moment.now), true);
    const QRect device = onDevice(painter, layer.extent(moment.now), moment.deviceClip);
    if (!device.isEmpty())
        paintComposed(painter, layer, device, opacity, moment);
    painter.restore();
}

void LayerPainter::paintComposed(QPainter& painter, const Layer& layer, const QRect& device, double opacity,
                                 const Moment& moment) {
    if (layer.mask) {
        const QRect hole = insideOnDevice(painter, layer.maskHole);
        for (const QRect& part : strips(device, hole, Edges::Whole))
            paintGroup(painter, layer, part, opacity, moment);
    } else if (opacity >= 1 || isOneStroke(layer)) {
        painter.setOpacity(painter.opacity() * opacity);
        paintPlain(painter, layer, moment);
    } else {
        paintGroup(painter, layer, device, opacity, moment);
    }
}

void LayerPainter::paintGroup(QPainter& painter, const Layer& layer, const QRect& device, double opacity,
                              const Moment& moment) {
    const Moment aside = moment.aside(device);
    QImage group = paintedAside(painter, device, [&](QPainter& inner) { paintPlain(inner, layer, aside); });
    if (layer.mask)
        keepOnly(group, painter, device, [&](QPainter& inner) { paint(inner, *layer.mask, aside); });
    painter.save();
    painter.setOpacity(painter.opacity() * opacity);
    drawOnDevice(painter, device.topLeft(), group);
    painter.restore();
}

// Such a layer needs no picture of its own to be translucent.
bool LayerPainter::isOneStroke(const Layer& layer) {
    const bool hasBackground = layer.background.alpha() > 0;
    return layer.sublayers.empty() && layer.edge.width <= 0 && layer.cast.path.isEmpty() && !layer.clips &&
           !(hasBackground && !layer.picture.isNull());
}

void LayerPainter::paintPlain(QPainter& painter, const Layer& layer, const Moment& moment) {
    paintShadow(painter, layer, moment);
    if (layer.clips)
        paintClipped(painter, layer, moment);
    else
        paintInside(painter, layer, moment);
    if (layer.edge.width <= 0 || layer.edge.color.alpha() == 0)
        return;
    const double half = layer.edge.width / 2;
    const QPainterPath line = roundedRect(layer.bounds().adjusted(half, half, -half, -half),
                                          layer.radius - half, layer.cornerCurve);
    strokePath(painter, line, QPen(layer.edge.color, layer.edge.width),
               onDevice(painter, layer.bounds(), moment.deviceClip));
}

void LayerPainter::paintClipped(QPainter& painter, const Layer& layer, const Moment& moment) {
    const QRect device = onDevice(painter, layer.bounds(), moment.deviceClip);
    if (device.isEmpty())
        return;
    const Moment aside = moment.aside(device);
    QImage content =
        paintedAside(painter, device, [&](QPainter& inner) { paintInside(inner, layer, aside); });
    keepOnly(content, painter, device, [&](QPainter& inner) {
        inner.fillPath(roundedRect(layer.bounds(), layer.radius, layer.cornerCurve), Qt::black);
    });
    drawOnDevice(painter, device.topLeft(), content);
}

void LayerPainter::paintInside(QPainter& painter, const Layer& layer, const Moment& moment) {
    const QColor background = std::get<QColor>(layer.presentedAt(Property::BackgroundColor, moment.now));
    if (background.alpha() > 0)
        fillPath(painter, roundedRect(layer.bounds(), layer.radius, layer.cornerCurve), background,
                 onDevice(painter, layer.bounds(), moment.deviceClip));
    layer.picture.paint(painter, layer.bounds(), moment.deviceClip);
    layer.paintOwn(painter, moment);
    for (const std::unique_ptr<Layer>& sublayer : layer.sublayers)
        paint(painter, *sublayer, moment);
}

void LayerPainter::paintShadow(QPainter& painter, const Layer& layer, const Moment& moment) {
    QColor color = layer.cast.color;
    color.setAlphaF(color.alphaF() *
                    static_cast<float>(layer.presentedNumber(Property::ShadowOpacity, moment.now)));
    layer.castMask.paint(painter, layer.cast.path, layer.presentedNumber(Property::ShadowRadius, moment.now),
                         layer.cast.offset, color, moment.density, moment.deviceClip, layer.cast.hidden);
}

} // namespace marrowfin::chrome
