#include "annotation/ResizeHandle.h"

#include "base/Geometry.h"

namespace marrowfin::annotation {

namespace {

// Which edge of an axis the handle owns: the one at the minimum, the one at the maximum, or neither.
enum class Edge { Minimum, Neither, Maximum };
struct OwnedEdges {
    Edge x;
    Edge y;
};

OwnedEdges ownedEdges(ResizeHandle handle) {
    switch (handle) {
    case ResizeHandle::topLeft:
        return {Edge::Minimum, Edge::Minimum};
    case ResizeHandle::topRight:
        return {Edge::Maximum, Edge::Minimum};
    case ResizeHandle::bottomLeft:
        return {Edge::Minimum, Edge::Maximum};
    case ResizeHandle::bottomRight:
        return {Edge::Maximum, Edge::Maximum};
    case ResizeHandle::topCenter:
        return {Edge::Neither, Edge::Minimum};
    case ResizeHandle::bottomCenter:
        return {Edge::Neither, Edge::Maximum};
    case ResizeHandle::leftCenter:
        return {Edge::Minimum, Edge::Neither};
    case ResizeHandle::rightCenter:
        return {Edge::Maximum, Edge::Neither};
    }
    return {Edge::Neither, Edge::Neither};
}

double alongEdge(Edge edge, double minimum, double middle, double maximum) {
    switch (edge) {
    case Edge::Minimum:
        return minimum;
    case Edge::Maximum:
        return maximum;
    case Edge::Neither:
        break;
    }
    return middle;
}

struct Span {
    double start;
    double length;
};

Span moved(Edge edge, Span span, double to) {
    switch (edge) {
    case Edge::Minimum:
        return {to, span.start + span.length - to};
    case Edge::Maximum:
        return {span.start, to - span.start};
    case Edge::Neither:
        break;
    }
    return span;
}

} // namespace

QPointF handleAnchor(ResizeHandle handle, const QRectF& box) {
    const OwnedEdges edges = ownedEdges(handle);
    return {alongEdge(edges.x, minX(box), midX(box), maxX(box)),
            alongEdge(edges.y, minY(box), midY(box), maxY(box))};
}

HandleRects handleRects(const QRectF& box, double side) {
    HandleRects rects;
    for (const ResizeHandle handle : allResizeHandles) {
        const QPointF anchor = handleAnchor(handle, box);
        rects[handle] = {anchor.x() - side / 2, anchor.y() - side / 2, side, side};
    }
    return rects;
}

QRectF resizedRect(ResizeHandle handle, const QRectF& box, const QPointF& point) {
    const QRectF from = standardized(box);
    const OwnedEdges edges = ownedEdges(handle);
    const Span x = moved(edges.x, {from.x(), from.width()}, point.x());
    const Span y = moved(edges.y, {from.y(), from.height()}, point.y());
    return standardized({x.start, y.start, x.length, y.length});
}

} // namespace marrowfin::annotation
