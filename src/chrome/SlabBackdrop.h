// What a translucent plate shows of the widget beneath it: a wide blur on a coarse grid, under the plate's
// colour. Only cells near a change are computed again. The grid is fixed to the widget beneath, so that a
// cell has the same value however the changes came. Points of the widget beneath, y down. Owned by the plate.
// Main thread.
#pragma once

#include <QImage>
#include <QRect>
#include <array>
#include <functional>
#include <vector>

class QPainter;
class QWidget;

namespace marrowfin::chrome {

class SlabBackdrop {
public:
    static constexpr int cell = 4;       // points
    static constexpr double sigma = 12;  // points
    static constexpr int reachCells = 9; // beyond three sigmas nothing is seen
    static constexpr int reach = reachCells * cell;

    // Paints this part of the widget beneath, opaque, in a space of its points.
    using Paint = std::function<void(QPainter&, const QRect& part)>;
    explicit SlabBackdrop(Paint paintBeneath) : paint(std::move(paintBeneath)) {}

    // The widget beneath has changed there.
    void invalidate(const QRect& part) { stale |= part; }
    // Brings the picture up to date for a plate that stands here over the widget.
    void prepare(const QRect& plate, const QWidget& widget);

    // One opaque pixel a cell. Null when the plate is nowhere near the widget.
    QImage picture() const;
    // Of the picture.
    QRect area() const;

    // Tests and measures: cells blurred so far.
    qint64 computedCells() const { return computed; }

private:
    using Cell = std::array<float, 4>; // red, green, blue, nothing
    struct Grid {
        QRect cells;
        std::vector<Cell> values;
        void reset(const QRect& rect);
        Cell& at(int x, int y);
        const Cell& at(int x, int y) const;
    };
    // Cells of the blurred picture that these cells have a say in.
    QRect touchedBy(const QRect& part) const;
    void average(const QRect& part);
    QImage painted(const QRect& pixels);
    static Cell meanOf(const QImage& image, const QRect& pixels);
    void blurRows(const QRect& part);
    void blurColumns(const QRect& part);

    Paint paint;
    double density = 1; // pixels per point
    QPointF shift;      // of the widget against whole pixels
    QRect plateShown;
    QSize widgetShown;
    QRect stale;
    Grid means; // of the widget's pixels, as far as the blur reaches around the plate
    Grid rows;  // blurred along the rows
    Grid done;  // and along the columns
    qint64 computed = 0;
};

} // namespace marrowfin::chrome
