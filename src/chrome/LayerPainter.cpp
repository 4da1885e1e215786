#include "chrome/LayerPainter.h"

#include <QPainter>

namespace marrowfin::chrome {

namespace {
// A picture of the device's part of this rectangle, painted with the same axes as on the device.
template <class Draw>
QImage painted(const QPainter& like, const QRect& deviceRect, Draw draw) {
    QImage image(deviceRect.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHints(like.renderHints());
    painter.setWorldTransform(like.deviceTransform() *
                              QTransform::fromTranslate(-deviceRect.x(), -deviceRect.y()));
    draw(painter);
    return image;
}

// Pixel for pixel, whatever the painter's axes.
void drawOnDevice(QPainter& painter, const QPoint& at, const QImage& image) {
    painter.save();
    const QTransform view = painter.worldTransform().inverted() * painter.deviceTransform();
    painter.setWorldTransform(view.inverted());
    painter.setRenderHint(QPainter::SmoothPixmapTransform, false);
    painter.drawImage(at, image);
    painter.restore();
}

void keepOnly(QImage& image, const QImage& mask) {
    QPainter painter(&image);
    painter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
    painter.drawImage(0, 0, mask);
}
} // namespace

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
    const QRectF extent = painter.deviceTransform().mapRect(layer.extent(moment.now));
    const QRect device = extent.intersected(moment.deviceClip).toAlignedRect();
    if (device.isEmpty()) {
        painter.restore();
        return;
    }
    if (!layer.mask && (opacity >= 1 || isOneStroke(layer))) {
        painter.setOpacity(painter.opacity() * opacity);
        paintPlain(painter, layer, moment);
        painter.restore();
        return;
    }
    const Moment aside{moment.now, moment.density, QRectF(QPointF(0, 0), device.size())};
    QImage group = painted(painter, device, [&](QPainter& inner) { paintPlain(inner, layer, aside); });
    if (layer.mask)
        keepOnly(group, painted(painter, device, [&](QPainter& inner) { paint(inner, *layer.mask, aside); }));
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
    if (layer.clips) {
        const QRectF inside = painter.deviceTransform().mapRect(layer.bounds());
        const QRect device = inside.intersected(moment.deviceClip).toAlignedRect();
        if (device.isEmpty())
            return;
        const Moment aside{moment.now, moment.density, QRectF(QPointF(0, 0), device.size())};
        QImage content = painted(painter, device, [&](QPainter& inner) { paintInside(inner, layer, aside); });
        keepOnly(content, painted(painter, device, [&](QPainter& inner) {
                     inner.fillPath(roundedRect(layer.bounds(), layer.radius, layer.cornerCurve), Qt::black);
                 }));
        drawOnDevice(painter, device.topLeft(), content);
    } else {
        paintInside(painter, layer, moment);
    }
    if (layer.edge.width > 0 && layer.edge.color.alpha() > 0) {
        const double half = layer.edge.width / 2;
        painter.strokePath(roundedRect(layer.bounds().adjusted(half, half, -half, -half), layer.radius - half,
                                       layer.cornerCurve),
                           QPen(layer.edge.color, layer.edge.width));
    }
}

void LayerPainter::paintInside(QPainter& painter, const Layer& layer, const Moment& moment) {
    const QColor background = std::get<QColor>(layer.presentedAt(Property::BackgroundColor, moment.now));
    if (background.alpha() > 0)
        painter.fillPath(roundedRect(layer.bounds(), layer.radius, layer.cornerCurve), background);
    layer.picture.paint(painter, layer.bounds());
    layer.paintOwn(painter, moment.now);
    for (const std::unique_ptr<Layer>& sublayer : layer.sublayers)
        paint(painter, *sublayer, moment);
}

void LayerPainter::paintShadow(QPainter& painter, const Layer& layer, const Moment& moment) {
    QColor color = layer.cast.color;
    color.setAlphaF(color.alphaF() *
                    static_cast<float>(layer.presentedNumber(Property::ShadowOpacity, moment.now)));
    layer.castMask.paint(painter, layer.cast.path, layer.presentedNumber(Property::ShadowRadius, moment.now),
                         layer.cast.offset, color, moment.density);
}

} // namespace marrowfin::chrome
