// Which part of the canvas a change of the ink, of the selection or of the crop shows in: no more than that
// is painted again. View points, y down. Pure.
#pragma once

#include "annotation/AnyAnnotation.h"
#include "editor/CanvasFit.h"

#include <QRegion>
#include <optional>

namespace marrowfin::editor {

// Everything that the record can paint, its shadow included, in image points.
QRectF inkBounds(const annotation::AnyAnnotation& annotation);

// Where one value of a record looks different from another; either may be missing.
QRegion inkDamage(const annotation::AnyAnnotation* before, const annotation::AnyAnnotation* after,
                  const CanvasFit& fit);
// Where the records of two lists look different.
QRegion inkDamage(const QList<annotation::AnyAnnotation>& before,
                  const QList<annotation::AnyAnnotation>& after, const CanvasFit& fit);
// The dashed frame and the handles around a selected record.
QRegion selectionDamage(const annotation::AnyAnnotation* selected, const CanvasFit& fit);
// Where the overlay of one crop looks different from that of another on this image.
QRegion cropDamage(const std::optional<QRectF>& before, const std::optional<QRectF>& after,
                   const QSizeF& image, const CanvasFit& fit);

} // namespace marrowfin::editor
