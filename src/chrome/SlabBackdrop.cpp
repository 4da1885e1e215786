#include "chrome/SlabBackdrop.h"

#include "imaging/GaussianKernel.h"

#include <QPainter>
#include <QWidget>
#include <algorithm>
#include <cmath>

namespace marrowfin::chrome {

namespace {

constexpr int taps = 2 * SlabBackdrop::reachCells + 1;

const std::vector<float> kernel =
    imaging::gaussianKernel(SlabBackdrop::sigma / SlabBackdrop::cell, SlabBackdrop::reachCells);

// The cells that hold these points.
QRect cellsOf(const QRect& points) {
    const auto floored = [](int value) {
        return static_cast<int>(std::floor(value / static_cast<double>(SlabBackdrop::cell)));
    };
    return {QPoint(floored(points.left()), floored(points.top())),
            QPoint(floored(points.right()), floored(points.bottom()))};
}

QRect grown(const QRect& rect, int x, int y) {
    return rect.adjusted(-x, -y, x, y);
}

} // namespace

void SlabBackdrop::Grid::reset(const QRect& rect) {
    cells = rect;
    values.assign(static_cast<std::size_t>(rect.width()) * rect.height(), Cell{});
}

SlabBackdrop::Cell& SlabBackdrop::Grid::at(int x, int y) {
    return values[static_cast<std::size_t>(y - cells.top()) * cells.width() + (x - cells.left())];
}

const SlabBackdrop::Cell& SlabBackdrop::Grid::at(int x, int y) const {
    return values[static_cast<std::size_t>(y - cells.top()) * cells.width() + (x - cells.left())];
}

void SlabBackdrop::prepare(const QRect& plate, const QWidget& widget) {
    density = widget.devicePixelRatioF();
    // The widget's own pixels, where it doesn't begin on a whole one.
    const QPointF origin = QPointF(widget.mapTo(widget.window(), QPoint(0, 0))) * density;
    shift = origin - QPointF(std::floor(origin.x()), std::floor(origin.y()));
    if (plate != plateShown || widget.size() != widgetShown) {
        plateShown = plate;
        widgetShown = widget.size();
        // A cell more on each side: the picture is enlarged smoothly.
        const QRect seen = grown(cellsOf(plate), 1, 1);
        const QRect reached = grown(seen, reachCells, reachCells) & cellsOf(widget.rect());
        means.reset(reached);
        rows.reset({seen.left(), reached.top(), seen.width(), reached.height()});
        done.reset(seen);
        stale = widget.rect();
    }
    const QRect part = cellsOf(stale) & means.cells;
    stale = QRect();
    if (part.isEmpty())
        return;
    average(part);
    const QRect touched = touchedBy(part);
    blurRows(QRect(QPoint(touched.left(), part.top()), QPoint(touched.right(), part.bottom())));
    blurColumns(touched);
}

QRect SlabBackdrop::touchedBy(const QRect& part) const {
    QRect touched = grown(part, reachCells, reachCells);
    // Outside of the widget its edge is repeated, however far.
    const QRect& all = means.cells;
    if (part.left() == all.left())
        touched.setLeft(done.cells.left());
    if (part.top() == all.top())
        touched.setTop(done.cells.top());
    if (part.right() == all.right())
        touched.setRight(done.cells.right());
    if (part.bottom() == all.bottom())
        touched.setBottom(done.cells.bottom());
    return touched & done.cells;
}

QImage SlabBackdrop::picture() const {
    if (means.cells.isEmpty())
        return {};
    QImage image(done.cells.size(), QImage::Format_RGB32);
    for (int y = 0; y < image.height(); ++y) {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x) {
            const Cell& value = done.at(done.cells.left() + x, done.cells.top() + y);
            line[x] = qRgb(static_cast<int>(std::lround(value[0])), static_cast<int>(std::lround(value[1])),
                           static_cast<int>(std::lround(value[2])));
        }
    }
    return image;
}

QRect SlabBackdrop::area() const {
    return {done.cells.topLeft() * cell, done.cells.size() * cell};
}

QImage SlabBackdrop::painted(const QRect& pixels) {
    QImage image(pixels.size(), QImage::Format_RGB32);
    image.fill(Qt::black);
    QPainter painter(&image);
    painter.setTransform({density, 0, 0, density, shift.x() - pixels.x(), shift.y() - pixels.y()});
    paint(painter, painter.transform().inverted().mapRect(QRectF(image.rect())).toAlignedRect());
    return image;
}

void SlabBackdrop::average(const QRect& part) {
    const auto edge = [this](int index) { return static_cast<int>(std::lround(index * cell * density)); };
    const QSize size = (QSizeF(widgetShown) * density).toSize();
    const QRect all(QPoint(edge(part.left()), edge(part.top())),
                    QPoint(std::min(edge(part.right() + 1), size.width()) - 1,
                           std::min(edge(part.bottom() + 1), size.height()) - 1));
    const QImage image = painted(all);
    for (int y = part.top(); y <= part.bottom(); ++y)
        for (int x = part.left(); x <= part.right(); ++x) {
            const QRect pixels(QPoint(edge(x), edge(y)), QPoint(edge(x + 1) - 1, edge(y + 1) - 1));
            means.at(x, y) = meanOf(image, (pixels & all).translated(-all.topLeft()));
        }
}

SlabBackdrop::Cell SlabBackdrop::meanOf(const QImage& image, const QRect& pixels) {
    std::array<int, 3> sum{};
    for (int y = pixels.top(); y <= pixels.bottom(); ++y) {
        const auto* line = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        for (int x = pixels.left(); x <= pixels.right(); ++x) {
            sum[0] += qRed(line[x]);
            sum[1] += qGreen(line[x]);
            sum[2] += qBlue(line[x]);
        }
    }
    const float count = static_cast<float>(std::max(pixels.width() * pixels.height(), 1));
    return {static_cast<float>(sum[0]) / count, static_cast<float>(sum[1]) / count,
            static_cast<float>(sum[2]) / count, 0};
}

void SlabBackdrop::blurRows(const QRect& part) {
    const QRect& in = means.cells;
    for (int y = part.top(); y <= part.bottom(); ++y)
        for (int x = part.left(); x <= part.right(); ++x) {
            Cell sum{};
            for (int tap = 0; tap < taps; ++tap) {
                const Cell& value = means.at(std::clamp(x + tap - reachCells, in.left(), in.right()), y);
                for (std::size_t channel = 0; channel < sum.size(); ++channel)
                    sum[channel] += value[channel] * kernel[tap];
            }
            rows.at(x, y) = sum;
        }
}

void SlabBackdrop::blurColumns(const QRect& part) {
    const QRect& in = rows.cells;
    for (int y = part.top(); y <= part.bottom(); ++y)
        for (int x = part.left(); x <= part.right(); ++x) {
            Cell sum{};
            for (int tap = 0; tap < taps; ++tap) {
                const Cell& value = rows.at(x, std::clamp(y + tap - reachCells, in.top(), in.bottom()));
                for (std::size_t channel = 0; channel < sum.size(); ++channel)
                    sum[channel] += value[channel] * kernel[tap];
            }
            done.at(x, y) = sum;
        }
    computed += static_cast<qint64>(part.width()) * part.height();
}

} // namespace marrowfin::chrome
