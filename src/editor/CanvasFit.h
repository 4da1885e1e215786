// How the base image stands in the canvas: fitted, centred, never magnified. View points and image points,
// both y down. Pure.
#pragma once

#include <QMarginsF>
#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <QTransform>

namespace marrowfin::editor {

// The view without the space that the floating chrome takes; where that leaves almost nothing, a small square
// in the middle of the view, so that the image is never gone.
QRectF availableRect(const QSizeF& view, const QMarginsF& insets);
// View points to an image point; 1 without an image, and at most 1.
double displayScale(const QSizeF& available, const QSizeF& image);

struct CanvasFit {
    QRectF imageRect; // view points; the whole view without an image
    double scale = 1.0;

    static CanvasFit of(const QSizeF& view, const QMarginsF& insets, const QSizeF& image);

    QPointF toImage(const QPointF& viewPoint) const { return (viewPoint - imageRect.topLeft()) / scale; }
    QPointF toView(const QPointF& imagePoint) const { return imageRect.topLeft() + imagePoint * scale; }
    QRectF toView(const QRectF& imageBox) const {
        return {toView(imageBox.topLeft()), imageBox.size() * scale};
    }
    // What paints use: the image's corner on a whole device pixel, so that pixels shown one to one stay sharp
    // and ink lies on them as it will in the output.
    QTransform paintTransform(double density) const;

    friend bool operator==(const CanvasFit&, const CanvasFit&) = default;
};

} // namespace marrowfin::editor
