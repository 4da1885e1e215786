// What every record of ink has in common: plain values in image points (origin top left, y down), owned by
// whoever holds the record. Records are copied freely and cache nothing. Main thread.
#pragma once

#include <QColor>
#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <QUuid>

namespace marrowfin::annotation {

struct Ink {
    QUuid id = QUuid::createUuid(); // kept through moves, resizes, text edits, crops, undo and redo
    qint64 zIndex = 0;              // paint order, given by the document; larger paints later
    QColor strokeColor;
    double strokeWidth = 3.0;

    friend bool operator==(const Ink&, const Ink&) = default;
};

// The ink of records that fill or outline a box: these alone have handles and can be resized.
struct BoxInk : Ink {
    QPointF origin;
    QSizeF size;

    QRectF box() const { return {origin, size}; }
    void setBox(const QRectF& box) {
        origin = box.topLeft();
        size = box.size();
    }
    QRectF boundingRect() const { return box(); }
    void translate(double dx, double dy) { origin += QPointF(dx, dy); }

    friend bool operator==(const BoxInk&, const BoxInk&) = default;
};

// The ink of records drawn from one point to another.
struct SegmentInk : Ink {
    QPointF startPoint;
    QPointF endPoint;

    void translate(double dx, double dy) {
        startPoint += QPointF(dx, dy);
        endPoint += QPointF(dx, dy);
    }

    friend bool operator==(const SegmentInk&, const SegmentInk&) = default;
};

} // namespace marrowfin::annotation
