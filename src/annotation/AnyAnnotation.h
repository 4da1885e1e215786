// Any one of the nine records, with everything they all answer. Image points, y down; `scale` is the canvas
// scale, the view points to an image point. A value: copies are independent.
#pragma once

#include "annotation/AnnotationProtocol.h"
#include "annotation/ArrowAnnotation.h"
#include "annotation/BlurAnnotation.h"
#include "annotation/EllipseAnnotation.h"
#include "annotation/FreehandAnnotation.h"
#include "annotation/HighlightAnnotation.h"
#include "annotation/LineAnnotation.h"
#include "annotation/NumberAnnotation.h"
#include "annotation/RectangleAnnotation.h"
#include "annotation/ResizeHandle.h"
#include "annotation/TextAnnotation.h"

#include <QList>
#include <variant>

namespace marrowfin::annotation {

class AnyAnnotation {
public:
    using Record = std::variant<RectangleAnnotation, EllipseAnnotation, ArrowAnnotation, LineAnnotation,
                                FreehandAnnotation, TextAnnotation, BlurAnnotation, HighlightAnnotation,
                                NumberAnnotation>;

    template <AnnotationProtocol R>
    AnyAnnotation(R record) : held(std::move(record)) {}

    const Record& record() const { return held; }
    // The record, if it is of this type; null otherwise.
    template <AnnotationProtocol R>
    const R* as() const {
        return std::get_if<R>(&held);
    }
    template <AnnotationProtocol R>
    R* as() {
        return std::get_if<R>(&held);
    }

    const QUuid& id() const { return ink().id; }
    qint64 zIndex() const { return ink().zIndex; }
    void setZIndex(qint64 zIndex) { ink().zIndex = zIndex; }
    const QColor& strokeColor() const { return ink().strokeColor; }
    double strokeWidth() const { return ink().strokeWidth; }

    QRectF boundingRect() const;
    void draw(QPainter& painter) const;
    bool hitTest(const QPointF& point, double tolerance) const;
    void translate(double dx, double dy);

    // Squares 8 view points wide at any scale; none for records that can't be resized.
    HandleRects handleRects(double scale) const;
    // With the handle's edges moved to the point; unchanged if the record can't be resized.
    AnyAnnotation resized(ResizeHandle handle, const QPointF& point) const;

    friend bool operator==(const AnyAnnotation&, const AnyAnnotation&) = default;

private:
    const Ink& ink() const;
    Ink& ink();
    // Null for the records that are no boxes.
    const BoxInk* boxInk() const;
    BoxInk* boxInk();

    Record held;
};

// A copy in the order of painting: by z index, equal ones as they stand.
QList<AnyAnnotation> inPaintOrder(QList<AnyAnnotation> annotations);

} // namespace marrowfin::annotation
