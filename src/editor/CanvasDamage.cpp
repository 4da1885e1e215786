#include "editor/CanvasDamage.h"

#include "base/Geometry.h"
#include "editor/CropOverlay.h"

#include <QSet>
#include <algorithm>

namespace marrowfin::editor {

using namespace annotation;

namespace {

constexpr double inkShadowReach = 6.0; // image points, beyond the stroke
constexpr double selectionReach = 6.0; // view points: half a handle and its outline

// Whole points around it, and one more for what antialiasing spreads.
QRect around(const QRectF& rect) {
    if (!isFinite(rect))
        return {};
    constexpr double farthest = 1e5; // beyond any screen, and within a region's numbers
    const QRectF reachable(-farthest, -farthest, 2 * farthest, 2 * farthest);
    const auto common = intersection(rect, reachable);
    return common ? common->toAlignedRect().adjusted(-1, -1, 1, 1) : QRect();
}

QRegion ring(const QRectF& rect, double reach) {
    const QRectF inner = inset(rect, reach, reach);
    const QRegion outer(around(inset(rect, -reach, -reach)));
    return isEmpty(inner) ? outer : outer - QRegion(around(inner).adjusted(3, 3, -3, -3));
}

// Where a filled box was or is, but not both.
QRegion difference(const QRectF& before, const QRectF& after) {
    const auto shrunk = [](const QRectF& rect) { return QRegion(around(rect).adjusted(3, 3, -3, -3)); };
    return (QRegion(around(before)) + around(after)) - (shrunk(before) & shrunk(after));
}

double reachBeyondBounds(const AnyAnnotation& annotation) {
    // Letters lean out of their line and accents rise above it; a stroke's corners are pointed.
    if (const auto* text = annotation.as<TextAnnotation>())
        return std::max(text->fontSize, 1.0);
    return annotation.strokeWidth() + inkShadowReach + 1;
}

// What of the stroke an appended point can change: smoothing looks a few points back.
constexpr double smoothingReach = 24.0;

// The points from this one on, and so many before it.
QRectF tailBounds(const QList<QPointF>& points, qsizetype from) {
    QRectF bounds(points.last(), QSizeF(0, 0));
    double walked = 0;
    for (qsizetype i = points.size() - 2; i >= 0 && walked <= smoothingReach; --i) {
        bounds = unionOf(bounds, QRectF(points[i], QSizeF(0, 0)));
        if (i < from)
            walked += distance(points[i], points[i + 1]);
    }
    return bounds;
}

bool continues(const FreehandAnnotation& before, const FreehandAnnotation& after) {
    return before.points.size() <= after.points.size() && !before.points.isEmpty() &&
           before.strokeColor == after.strokeColor && before.strokeWidth == after.strokeWidth &&
           std::equal(before.points.begin(), before.points.end(), after.points.begin());
}

QRegion strokeDamage(const FreehandAnnotation& before, const FreehandAnnotation& after,
                     const CanvasFit& fit) {
    const double reach = after.strokeWidth + inkShadowReach + 1;
    const QRectF tail = tailBounds(after.points, before.points.size());
    return around(fit.toView(inset(tail, -reach, -reach)));
}

template <class Record>
bool bothAre(const AnyAnnotation& before, const AnyAnnotation& after) {
    return before.as<Record>() && after.as<Record>();
}

QRegion changeDamage(const AnyAnnotation& before, const AnyAnnotation& after, const CanvasFit& fit) {
    if (bothAre<FreehandAnnotation>(before, after) &&
        continues(*before.as<FreehandAnnotation>(), *after.as<FreehandAnnotation>()))
        return strokeDamage(*before.as<FreehandAnnotation>(), *after.as<FreehandAnnotation>(), fit);
    if (bothAre<BlurAnnotation>(before, after) || bothAre<HighlightAnnotation>(before, after))
        return difference(fit.toView(before.boundingRect()), fit.toView(after.boundingRect()));
    return inkDamage(&before, nullptr, fit) + inkDamage(nullptr, &after, fit);
}

} // namespace

QRectF inkBounds(const AnyAnnotation& annotation) {
    const double reach = reachBeyondBounds(annotation);
    return inset(annotation.boundingRect(), -reach, -reach);
}

QRegion inkDamage(const AnyAnnotation* before, const AnyAnnotation* after, const CanvasFit& fit) {
    if (before && after)
        return *before == *after ? QRegion() : changeDamage(*before, *after, fit);
    const AnyAnnotation* one = before ? before : after;
    if (!one)
        return {};
    if (one->as<RectangleAnnotation>()) // nothing changes inside an outline
        return ring(fit.toView(one->boundingRect()), reachBeyondBounds(*one) * fit.scale);
    return around(fit.toView(inkBounds(*one)));
}

QRegion inkDamage(const QList<AnyAnnotation>& before, const QList<AnyAnnotation>& after,
                  const CanvasFit& fit) {
    if (before.constData() == after.constData())
        return {};
    // The order of those that are in both lists is the same.
    QSet<QUuid> remaining;
    for (const AnyAnnotation& one : after)
        remaining.insert(one.id());
    QRegion damage;
    qsizetype next = 0;
    for (const AnyAnnotation& old : before) {
        if (!remaining.contains(old.id())) {
            damage += inkDamage(&old, nullptr, fit);
            continue;
        }
        while (next < after.size() && after[next].id() != old.id())
            damage += inkDamage(nullptr, &after[next++], fit);
        if (next < after.size())
            damage += inkDamage(&old, &after[next++], fit);
        else
            damage += inkDamage(&old, nullptr, fit);
    }
    while (next < after.size())
        damage += inkDamage(nullptr, &after[next++], fit);
    return damage;
}

QRegion selectionDamage(const AnyAnnotation* selected, const CanvasFit& fit) {
    return selected ? ring(fit.toView(selected->boundingRect()), selectionReach) : QRegion();
}

QRegion cropDamage(const std::optional<QRectF>& before, const std::optional<QRectF>& after,
                   const QSizeF& image, const CanvasFit& fit) {
    if (before == after)
        return {};
    QRegion damage;
    // The thirds run all through the rectangle.
    for (const auto& one : {before, after})
        if (one)
            damage += around(inset(fit.toView(*one), -cropOverlayReach, -cropOverlayReach));
    if (!before || !after)
        damage += around(fit.toView(QRectF(QPointF(0, 0), image)));
    return damage;
}

} // namespace marrowfin::editor
