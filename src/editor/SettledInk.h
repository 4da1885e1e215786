// The ink that the gesture going on doesn't touch, with what lies beneath it, kept as pixels: a drag pays for
// the one record it changes and not for the fifty around it. Composed only where it is asked for. Layer
// pixels. Owned by the canvas painter. Main thread.
#pragma once

#include "annotation/AnyAnnotation.h"
#include "editor/CanvasBackdrop.h"
#include "editor/LiveBlur.h"

#include <QRegion>
#include <vector>

class QPainter;

namespace marrowfin::editor {

// A record and everything it can paint, in image points: finding that out means laying out a text, so it is
// done once and not for each part of a frame.
struct PlacedRecord {
    annotation::AnyAnnotation annotation;
    QRectF bounds;
};
std::vector<PlacedRecord> placeRecords(const QList<annotation::AnyAnnotation>& annotations);

// Paints records on a layer.
struct RecordPainter {
    const CanvasBackdrop& backdrop;
    LiveBlur& blur;
    const imaging::Image& base;
    QTransform imageToLayer;

    // The painter's user space is image points.
    void draw(QPainter& painter, const annotation::AnyAnnotation& annotation) const;
    // Those of the records that show in this part of the layer.
    void draw(QPainter& painter, const std::vector<PlacedRecord>& records, const QRect& part) const;
    // Lets the painter paint in the part and as far around it as a shadow reaches, because a shadow is made
    // from the ink beside it; returns that.
    QRect open(QPainter& painter, const QRect& part) const;
    QRect withShadows(const QRect& part) const;
};

class SettledInk {
public:
    enum class Beneath { Same, Changed };

    // These records stand still, in this order.
    void settle(const QList<annotation::AnyAnnotation>& annotations, const RecordPainter& with,
                Beneath beneath);
    // Puts the part onto the frame, an image of the layer's size on which the painter paints. What is around
    // the part there is spoilt.
    void copy(const QRect& part, QImage& frame, QPainter& onFrame, const RecordPainter& with);

private:
    void compose(const QRect& part, QImage& frame, QPainter& onFrame, const RecordPainter& with);

    QList<annotation::AnyAnnotation> records;
    std::vector<PlacedRecord> placedRecords; // the same
    QImage pixels;
    QRegion composed;
};

// Copies the part's pixels; both images are of the same size.
void copyPixels(const QImage& from, QImage& to, const QRect& part);

} // namespace marrowfin::editor
