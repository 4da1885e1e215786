#include "editor/SettledInk.h"

#include "base/Geometry.h"
#include "editor/CanvasDamage.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

namespace marrowfin::editor {

using namespace annotation;

namespace {

constexpr double inkShadowReach = 6.0; // image points
// A region in more pieces than this costs more to keep than to compose again.
constexpr int mostPieces = 200;

CanvasFit fitOfLayer(const QTransform& imageToLayer) {
    return {QRectF(imageToLayer.dx(), imageToLayer.dy(), 0, 0), imageToLayer.m11()};
}

} // namespace

void copyPixels(const QImage& from, QImage& to, const QRect& part) {
    for (int y = part.top(); y <= part.bottom(); ++y)
        std::copy_n(reinterpret_cast<const QRgb*>(from.constScanLine(y)) + part.left(), part.width(),
                    reinterpret_cast<QRgb*>(to.scanLine(y)) + part.left());
}

std::vector<PlacedRecord> placeRecords(const QList<AnyAnnotation>& annotations) {
    std::vector<PlacedRecord> result;
    result.reserve(static_cast<size_t>(annotations.size()));
    for (const AnyAnnotation& annotation : annotations)
        result.push_back({annotation, inkBounds(annotation)});
    return result;
}

void RecordPainter::draw(QPainter& painter, const AnyAnnotation& annotation) const {
    const auto* box = annotation.as<BlurAnnotation>();
    if (!box) {
        annotation.draw(painter);
        return;
    }
    painter.save();
    painter.resetTransform();
    blur.draw(painter, *box, imageToLayer, backdrop, base);
    painter.restore();
}

void RecordPainter::draw(QPainter& painter, const std::vector<PlacedRecord>& records,
                         const QRect& part) const {
    const QRectF shown = imageToLayer.inverted().mapRect(QRectF(part));
    for (const PlacedRecord& record : records)
        if (intersection(record.bounds, shown))
            draw(painter, record.annotation);
}

QRect RecordPainter::withShadows(const QRect& part) const {
    const int more = static_cast<int>(std::ceil(inkShadowReach * imageToLayer.m11())) + 1;
    return part.adjusted(-more, -more, more, more) & backdrop.layer().rect();
}

QRect RecordPainter::open(QPainter& painter, const QRect& part) const {
    const QRect wider = withShadows(part);
    painter.resetTransform();
    painter.setClipRect(wider);
    painter.setTransform(imageToLayer);
    return wider;
}

void SettledInk::settle(const QList<AnyAnnotation>& annotations, const RecordPainter& with, Beneath beneath) {
    if (beneath == Beneath::Changed || pixels.size() != with.backdrop.layer().size()) {
        if (pixels.size() != with.backdrop.layer().size())
            pixels = QImage(with.backdrop.layer().size(), QImage::Format_RGB32);
        composed = {};
    } else {
        composed -= inkDamage(records, annotations, fitOfLayer(with.imageToLayer));
    }
    if (composed.rectCount() > mostPieces)
        composed = {};
    if (records == annotations)
        return;
    records = annotations;
    placedRecords = placeRecords(annotations);
}

void SettledInk::copy(const QRect& part, QImage& frame, QPainter& onFrame, const RecordPainter& with) {
    if (const QRegion missing = QRegion(part) - composed; !missing.isEmpty())
        compose(missing.boundingRect(), frame, onFrame, with);
    copyPixels(pixels, frame, part);
}

void SettledInk::compose(const QRect& part, QImage& frame, QPainter& onFrame, const RecordPainter& with) {
    const QRect wider = with.withShadows(part);
    copyPixels(with.backdrop.layer(), frame, wider);
    if (!with.base.isNull()) {
        with.open(onFrame, part);
        with.draw(onFrame, placedRecords, wider);
    }
    copyPixels(frame, pixels, part);
    composed += part;
}

} // namespace marrowfin::editor
