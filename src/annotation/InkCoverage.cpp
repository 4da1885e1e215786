#include "annotation/InkCoverage.h"

#include "base/Geometry.h"

#include <algorithm>
#include <cmath>

namespace marrowfin::annotation {

namespace {

// Device pixels. A stroke and its shadow are 10 or more; rows are worked on eight pixels at a time.
constexpr int tileWidth = 8;
constexpr int tileHeight = 4;
constexpr double slack = 0.5; // for the rounding of whoever rasterises

double largestScale(const QTransform& transform) {
    return std::max(std::hypot(transform.m11(), transform.m12()),
                    std::hypot(transform.m21(), transform.m22()));
}

QRectF areaOf(const InkSegment& segment) {
    return inset(rectBetween(segment.from, segment.to), -segment.reach, -segment.reach);
}

InkOutline inDevicePixels(const InkOutline& outline, const QTransform& toDevice) {
    const double scale = largestScale(toDevice);
    InkOutline mapped;
    mapped.reserve(outline.size());
    for (const InkSegment& segment : outline)
        mapped.push_back(
            {toDevice.map(segment.from), toDevice.map(segment.to), segment.reach * scale + slack});
    return mapped;
}

// The part of the segment whose own area can meet the box; false if none can.
bool clip(InkSegment& segment, const QRectF& box) {
    const QRectF grown = inset(box, -segment.reach, -segment.reach);
    const QPointF along = segment.to - segment.from;
    double first = 0;
    double last = 1;
    const auto narrow = [&](double start, double step, double low, double high) {
        if (step == 0)
            return low <= start && start <= high;
        const auto [enter, leave] = std::minmax({(low - start) / step, (high - start) / step});
        first = std::max(first, enter);
        last = std::min(last, leave);
        return first <= last;
    };
    if (!narrow(segment.from.x(), along.x(), minX(grown), maxX(grown)) ||
        !narrow(segment.from.y(), along.y(), minY(grown), maxY(grown)))
        return false;
    segment = {segment.from + first * along, segment.from + last * along, segment.reach};
    return true;
}

} // namespace

InkCoverage::InkCoverage(const InkOutline& outline, const QTransform& toDevice, const QMargins& margins,
                         const QRect& limits)
    : margins(margins) {
    const InkOutline segments = inDevicePixels(outline, toDevice);
    QRectF all;
    for (const InkSegment& segment : segments)
        all = all.isNull() ? areaOf(segment) : unionOf(all, areaOf(segment));
    const std::optional<QRectF> seen =
        intersection(integral(all.marginsAdded(QMarginsF(margins))), QRectF(limits));
    if (all.isNull() || !seen || isEmpty(*seen))
        return;
    box = seen->toRect();
    columns = (box.width() + tileWidth - 1) / tileWidth;
    rows = (box.height() + tileHeight - 1) / tileHeight;
    box.setSize({columns * tileWidth, rows * tileHeight});
    tiles.resize(static_cast<size_t>(columns) * static_cast<size_t>(rows));
    for (const InkSegment& segment : segments)
        mark(segment);
    collectRects();
}

// Piece by piece, so that a slanted segment marks a band and not its whole box.
void InkCoverage::mark(const InkSegment& whole) {
    InkSegment segment = whole;
    if (!clip(segment, QRectF(box).marginsAdded({double(margins.right()), double(margins.bottom()),
                                                 double(margins.left()), double(margins.top())})))
        return;
    const QPointF along = segment.to - segment.from;
    const double slant = std::min(std::abs(along.x()), std::abs(along.y()));
    const int pieces = static_cast<int>(slant / tileHeight) + 1;
    for (int i = 0; i < pieces; ++i)
        markBox(areaOf(
            {segment.from + along * i / pieces, segment.from + along * (i + 1) / pieces, segment.reach}));
}

void InkCoverage::markBox(const QRectF& ink) {
    const QRectF area = ink.marginsAdded(QMarginsF(margins));
    const auto tile = [](double pixel, int side, int count) {
        return std::clamp(static_cast<int>(std::floor(pixel / side)), 0, count - 1);
    };
    if (maxX(area) <= box.left() || minX(area) > box.right() || maxY(area) <= box.top() ||
        minY(area) > box.bottom())
        return;
    const int left = tile(minX(area) - box.left(), tileWidth, columns);
    const int right = tile(maxX(area) - box.left(), tileWidth, columns);
    const int bottom = tile(maxY(area) - box.top(), tileHeight, rows);
    for (int row = tile(minY(area) - box.top(), tileHeight, rows); row <= bottom; ++row) {
        const auto start = tiles.begin() + static_cast<std::ptrdiff_t>(row) * columns;
        std::fill(start + left, start + right + 1, quint8(1));
    }
}

// Runs of tiles, a run joined with the one above it if they span the same columns.
void InkCoverage::collectRects() {
    std::vector<size_t> open; // of the row above, as indices into covered
    for (int row = 0; row < rows; ++row) {
        const auto start = tiles.begin() + static_cast<std::ptrdiff_t>(row) * columns;
        const auto end = start + columns;
        std::vector<size_t> here;
        auto above = open.begin();
        for (auto from = std::find(start, end, 1); from != end;) {
            const auto to = std::find(from, end, 0);
            const QRect run(box.left() + static_cast<int>(from - start) * tileWidth,
                            box.top() + row * tileHeight, static_cast<int>(to - from) * tileWidth,
                            tileHeight);
            while (above != open.end() && covered[*above].left() < run.left())
                ++above;
            if (above != open.end() && covered[*above].left() == run.left() &&
                covered[*above].right() == run.right()) {
                covered[*above].setBottom(run.bottom());
                here.push_back(*above);
            } else {
                here.push_back(covered.size());
                covered.push_back(run);
            }
            from = std::find(to, end, 1);
        }
        open = std::move(here);
    }
}

} // namespace marrowfin::annotation
