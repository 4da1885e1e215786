#include "editor/CanvasPainter.h"

#include "annotation/SelectionChrome.h"
#include "base/Geometry.h"
#include "editor/CanvasDamage.h"
#include "editor/CropOverlay.h"

#include <algorithm>
#include <cmath>

namespace marrowfin {

namespace {

// Beyond this many, a region is painted as a whole: each part costs a walk over the ink.
constexpr int mostParts = 8;
// A shadow is made from the ink around it, so a part is composed with that much more around it. Image points.
constexpr double shadowReach = 6.0;

const AnyAnnotation* find(const QList<AnyAnnotation>& annotations, const std::optional<QUuid>& id) {
    if (id)
        for (const AnyAnnotation& one : annotations)
            if (one.id() == *id)
                return &one;
    return nullptr;
}

} // namespace

void CanvasPainter::paint(QPainter& painter, const QRegion& region, Scene scene) {
    const QTransform viewToDevice = painter.deviceTransform();
    const QTransform viewToLayer = viewToDevice * QTransform::fromTranslate(-std::floor(viewToDevice.dx()),
                                                                            -std::floor(viewToDevice.dy()));
    scene.backdrop.viewToLayer = viewToLayer;
    backdrop.prepare(scene.backdrop);
    imageToLayer = scene.backdrop.fit.paintTransform(viewToLayer.m11()) * viewToLayer;
    scene.annotations = inPaintOrder(scene.annotations);
    if (frame.size() != backdrop.layer().size())
        frame = QImage(backdrop.layer().size(), QImage::Format_RGB32);
    QPainter onFrame(&frame);
    painter.save();
    painter.setWorldTransform(viewToLayer.inverted(), true);
    const auto paintPart = [&](const QRect& viewPart) {
        const QRect part = viewToLayer.mapRect(QRectF(viewPart)).toAlignedRect() & frame.rect();
        compose(onFrame, scene, part);
        painter.drawImage(part.topLeft(), frame, part);
    };
    if (region.rectCount() > mostParts)
        paintPart(region.boundingRect());
    else
        std::for_each(region.begin(), region.end(), paintPart);
    painter.restore();
}

void CanvasPainter::compose(QPainter& onFrame, const Scene& scene, const QRect& part) {
    const int more = static_cast<int>(std::ceil(shadowReach * imageToLayer.m11())) + 1;
    const QRect wider = part.adjusted(-more, -more, more, more) & frame.rect();
    copyBackdrop(wider);
    if (scene.backdrop.base.isNull())
        return;
    onFrame.resetTransform();
    onFrame.setClipRect(wider);
    onFrame.setTransform(imageToLayer);
    paintInk(onFrame, scene, imageToLayer.inverted().mapRect(QRectF(wider)));
}

void CanvasPainter::copyBackdrop(const QRect& part) {
    const QImage& from = backdrop.layer();
    for (int y = part.top(); y <= part.bottom(); ++y)
        std::copy_n(reinterpret_cast<const QRgb*>(from.constScanLine(y)) + part.left(), part.width(),
                    reinterpret_cast<QRgb*>(frame.scanLine(y)) + part.left());
}

void CanvasPainter::paintInk(QPainter& painter, const Scene& scene, const QRectF& part) {
    const auto drawIfSeen = [&](const AnyAnnotation& annotation) {
        if (intersection(inkBounds(annotation), part))
            drawAnnotation(painter, scene, annotation);
    };
    for (const AnyAnnotation& annotation : scene.annotations)
        if (annotation.id() != scene.hidden)
            drawIfSeen(annotation);
    if (scene.inProgress)
        drawIfSeen(*scene.inProgress);
    const double scale = scene.backdrop.fit.scale;
    if (const AnyAnnotation* selected = find(scene.annotations, scene.selected))
        drawSelectionChrome(*selected, scale, painter, scene.backdrop.scheme);
    if (scene.crop)
        drawCropOverlay(painter, *scene.crop, scene.backdrop.base.size(), scale);
}

void CanvasPainter::drawAnnotation(QPainter& painter, const Scene& scene, const AnyAnnotation& annotation) {
    const auto* box = annotation.as<BlurAnnotation>();
    if (!box) {
        annotation.draw(painter);
        return;
    }
    painter.save();
    painter.resetTransform();
    blur.draw(painter, *box, imageToLayer, backdrop, scene.backdrop.base);
    painter.restore();
}

} // namespace marrowfin
