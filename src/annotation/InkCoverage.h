// Which tiles of a record's device box have ink or its shadow: a hollow box or a long stroke leaves most of
// its box empty, and what is empty costs nothing. Device pixels.
#pragma once

#include <QMargins>
#include <QPointF>
#include <QRect>
#include <QTransform>
#include <vector>

namespace marrowfin::annotation {

// A record's ink, roughly and generously: thick segments in the painter's space. A dot is a segment of no
// length.
struct InkSegment {
    QPointF from;
    QPointF to;
    double reach; // half the stroke's width, or the radius of an area
};
using InkOutline = std::vector<InkSegment>;

class InkCoverage {
public:
    // The part of the outline, grown by the margins, that lies within the limits.
    InkCoverage(const InkOutline& outline, const QTransform& toDevice, const QMargins& margins,
                const QRect& limits);

    // Holds all tiles; empty when there is no ink.
    const QRect& bounds() const { return box; }
    // The covered tiles as disjoint rectangles within bounds(), multiples of eight wide. No two touch from
    // left and right.
    const std::vector<QRect>& rects() const { return covered; }

private:
    void mark(const InkSegment& segment);
    void markBox(const QRectF& ink);
    void collectRects();

    QMargins margins;
    QRect box;
    int columns = 0;
    int rows = 0;
    std::vector<quint8> tiles; // 1 where covered
    std::vector<QRect> covered;
};

} // namespace marrowfin::annotation
