#include "editor/CanvasPainter.h"

#include "annotation/SelectionChrome.h"
#include "editor/CropOverlay.h"

#include <algorithm>
#include <cmath>

namespace marrowfin::editor {

using namespace annotation;

namespace {

int areaOf(const QRegion& region) {
    int sum = 0;
    for (const QRect& part : region)
        sum += part.width() * part.height();
    return sum;
}

// Many small parts are composed one by one as long as that leaves out most of the box around them: the band
// of an outline, and not what is inside it.
bool isWorthParts(const QRegion& region) {
    constexpr int mostParts = 40;
    const QRect box = region.boundingRect();
    return region.rectCount() <= mostParts && areaOf(region) < box.width() * box.height() / 2;
}

qsizetype indexOf(const QList<AnyAnnotation>& annotations, const std::optional<QUuid>& id) {
    const auto found = std::find_if(annotations.begin(), annotations.end(),
                                    [&](const AnyAnnotation& one) { return one.id() == id; });
    return found - annotations.begin();
}

} // namespace

void CanvasPainter::paint(QPainter& painter, const QRegion& region, Scene scene) {
    const QTransform viewToDevice = painter.deviceTransform();
    const QTransform viewToLayer = viewToDevice * QTransform::fromTranslate(-std::floor(viewToDevice.dx()),
                                                                            -std::floor(viewToDevice.dy()));
    scene.backdrop.viewToLayer = viewToLayer;
    const auto beneath =
        backdrop.prepare(scene.backdrop) ? SettledInk::Beneath::Changed : SettledInk::Beneath::Same;
    const RecordPainter records{backdrop, blur, scene.backdrop.base,
                                scene.backdrop.fit.paintTransform(viewToLayer.m11()) * viewToLayer};
    // The selected record is the one that a gesture changes; what lies on it is painted on it.
    scene.annotations = inPaintOrder(scene.annotations);
    scene.annotations.removeIf([&](const AnyAnnotation& one) { return one.id() == scene.hidden; });
    const qsizetype still = indexOf(scene.annotations, scene.selected);
    QList<AnyAnnotation> moving = scene.annotations.mid(still);
    if (scene.inProgress)
        moving.append(*scene.inProgress);
    live = placeRecords(moving);
    settled.settle(scene.annotations.first(still), records, beneath);

    if (frame.size() != backdrop.layer().size())
        frame = QImage(backdrop.layer().size(), QImage::Format_RGB32);
    QPainter onFrame(&frame);
    painter.save();
    painter.setWorldTransform(viewToLayer.inverted(), true);
    const auto paintPart = [&](const QRect& viewPart) {
        const QRect part = viewToLayer.mapRect(QRectF(viewPart)).toAlignedRect() & frame.rect();
        compose(onFrame, scene, part, records);
        painter.drawImage(part.topLeft(), frame, part);
    };
    if (isWorthParts(region))
        std::for_each(region.begin(), region.end(), paintPart);
    else
        paintPart(region.boundingRect());
    painter.restore();
}

void CanvasPainter::compose(QPainter& onFrame, const Scene& scene, const QRect& part,
                            const RecordPainter& records) {
    settled.copy(records.withShadows(part), frame, onFrame, records);
    if (scene.backdrop.base.isNull())
        return;
    records.draw(onFrame, live, records.open(onFrame, part));
    paintOverlays(onFrame, scene);
}

void CanvasPainter::paintOverlays(QPainter& painter, const Scene& scene) const {
    const CanvasBackdrop::Key& shown = scene.backdrop;
    const qsizetype selected = indexOf(scene.annotations, scene.selected);
    if (selected < scene.annotations.size())
        drawSelectionChrome(scene.annotations[selected], shown.fit.scale, painter, shown.scheme);
    if (scene.crop)
        drawCropOverlay(painter, *scene.crop, shown.base.size(), shown.fit.scale);
}

} // namespace marrowfin::editor
