#include "scrolling/ImageRegistration.h"

#include "scrolling/OffsetEvidence.h"
#include "scrolling/ProfileCorrelation.h"
#include "scrolling/StillRows.h"

#include <algorithm>
#include <cstdlib>

namespace marrowfin::scrolling {

namespace {

constexpr size_t candidates = 12;
// Below these something plays, and nothing moved: a caret, a spinner. Rows, part of the area, part of all
// edges.
constexpr int mostRowsThatPlay = 24;
constexpr double mostAreaThatPlays = 0.02;
constexpr double leastPartMoved = 0.08;
// Of the rows; less says too little.
constexpr double leastPartShared = 0.15;
// An area that is blank but for little may scroll all the same, if nothing speaks against it.
constexpr double littleArea = 0.15;

struct Changes {
    int rows = 0;      // of the box around everything that changed
    double box = 0;    // part of the bitmap
    double cells = 0;  // part of the bitmap
    double weight = 0; // of the edges
    double edges = 0;  // part of all edges, by weight
};

Changes changesIn(const CellComparison& cells) {
    QRect box;
    size_t changedCells = 0;
    double changedEdges = 0;
    double allEdges = 0;
    for (int strip = 0; strip < cells.strips(); ++strip)
        for (int row = 0; row < cells.rows(); ++row) {
            const size_t at = cells.at(strip, row);
            const auto weight = static_cast<double>(cells.newerWeight[at]);
            allEdges += weight;
            if (!cells.changed[at])
                continue;
            box |= QRect(strip, row, 1, 1);
            ++changedCells;
            changedEdges += weight;
        }
    const auto all = static_cast<double>(cells.changed.size());
    return {box.height(), static_cast<double>(box.width()) * box.height() / all,
            static_cast<double>(changedCells) / all, changedEdges,
            allEdges > 0 ? changedEdges / allEdges : 0};
}

bool onlyPlays(const Changes& changes, int rows) {
    return changes.rows < std::clamp(rows / 4, 8, mostRowsThatPlay) || changes.box < mostAreaThatPlays;
}

// An offset judged by itself and beside the next best one.
class Conviction {
public:
    Conviction(const OffsetEvidence& best, const OffsetEvidence& next, const Changes& changes, int rows)
        : best(best), next(next), changes(changes),
          shared(1 - static_cast<double>(std::abs(best.offset)) / rows) {}

    bool holds() const {
        if (shared < leastPartShared || best.moved < leastPartMoved * (best.moved + best.stayed))
            return false;
        if (changes.cells < littleArea)
            return best.ratio() >= 0.8 && best.movedCells >= 8 && best.movedRows >= 8;
        return agrees() || standsOut();
    }

private:
    // Little that both bitmaps show has to agree well, and to be as rich as the rest: two lines of one text
    // may begin alike.
    bool agrees() const {
        const bool half = shared >= 0.5;
        return best.ratio() >= (half ? 0.5 : 0.8) && best.movedCells >= 8 && best.movedRows >= 2 &&
               (half || best.moved >= 0.1 * shared * changes.weight);
    }
    // A film plays in most of the page, a header lies over much of what both show: what moved along is unlike
    // chance.
    bool standsOut() const {
        return best.ratio() >= (shared >= 0.5 ? 0.15 : 0.3) && best.movedCells >= 24 &&
               best.movedRows >= 12 && best.moved >= 3 * next.moved;
    }

    const OffsetEvidence& best;
    const OffsetEvidence& next;
    const Changes& changes;
    double shared; // the part of the rows that both bitmaps show
};

// Equal rows: another offset explains as much of what it covers.
bool isRivalled(const OffsetEvidence& best, const std::vector<OffsetEvidence>& all) {
    return std::any_of(all.begin(), all.end(), [&](const OffsetEvidence& other) {
        return other.offset != best.offset && other.ratio() >= best.ratio() - 0.1 &&
               other.moved >= 0.25 * best.moved;
    });
}

enum class Verdict { Moved, Rivalled, Unconvincing };

struct Judgement {
    Verdict verdict = Verdict::Unconvincing;
    int offset = 0;
};

Judgement judge(const CellComparison& cells, const Changes& changes) {
    std::vector<OffsetEvidence> all;
    for (const int offset : cells.bestOffsets(candidates))
        all.push_back(evidenceFor(offset, cells));
    if (all.empty())
        return {};
    std::sort(all.begin(), all.end(),
              [](const OffsetEvidence& a, const OffsetEvidence& b) { return a.worth() > b.worth(); });
    const OffsetEvidence next = all.size() > 1 ? all[1] : OffsetEvidence();
    if (!Conviction(all[0], next, changes, cells.rows()).holds())
        return {};
    return {isRivalled(all[0], all) ? Verdict::Rivalled : Verdict::Moved, all[0].offset};
}

std::optional<Movement> movementOf(const QImage& older, const QImage& newer, const CellComparison& cells) {
    const Changes changes = changesIn(cells);
    if (onlyPlays(changes, cells.rows()))
        return Movement();
    const Judgement judgement = judge(cells, changes);
    if (judgement.verdict == Verdict::Moved) {
        const StillRows still = stillRows(judgement.offset, cells);
        return Movement{judgement.offset, still.top, still.bottom};
    }
    if (judgement.verdict == Verdict::Rivalled)
        return std::nullopt;
    // What plays in a page that stands is no movement, whatever it shows.
    constexpr double mostEdgesThatPlay = 0.12;
    if (changes.edges < mostEdgesThatPlay)
        return Movement();
    const std::optional<int> offset = correlatedOffset(older, newer, cells);
    if (!offset)
        return std::nullopt;
    const StillRows still = equalRows(cells);
    return *offset == 0 ? Movement() : Movement{*offset, still.top, still.bottom};
}

// Of this width, with the colours in the lower 24 of 32 bits; null when memory runs out.
QImage comparable(const QImage& bitmap, int width) {
    QImage pixels = bitmap;
    if (pixels.format() != QImage::Format_ARGB32_Premultiplied && pixels.format() != QImage::Format_ARGB32)
        pixels.convertTo(QImage::Format_RGB32);
    return pixels.width() == width
               ? pixels
               : pixels.scaled(width, pixels.height(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

} // namespace

Result<std::optional<Movement>> ImageRegistration::movement(const QImage& older, const QImage& newer) {
    if (older.isNull() || newer.isNull())
        return std::nullopt;
    const QImage before = comparable(older, older.width());
    const QImage now = comparable(newer, older.width());
    if (before.isNull() || now.isNull())
        return failure(QStringLiteral("There isn't enough memory to compare two frames."));
    const int rows = std::min(before.height(), now.height());
    const RowHashes olderHashes(before, rows);
    const RowHashes newerHashes(now, rows);
    return movementOf(before, now, CellComparison(olderHashes, newerHashes));
}

} // namespace marrowfin::scrolling
