// The blurred outline behind a shadow. Computed when path, radius or density changes, and kept. Points in the
// path's own space; the mask itself is y-down pixels. Main thread.
#pragma once

#include <QColor>
#include <QImage>
#include <QPainterPath>

class QPainter;

namespace marrowfin::chrome {

class ShadowMask {
public:
    // How far a shadow of this radius reaches beyond its path: beyond it nothing is seen.
    static double reach(double radius) { return 3 * radius; }

    // Fills the shadow of the path with this colour, moved by the offset. The painter's axes may point any
    // way; the radius (a Gaussian's sigma) is in the path's units, density is device pixels per unit. Nothing
    // is wanted outside of the clip, in pixels of the device, nor within what is hidden.
    void paint(QPainter& painter, const QPainterPath& path, double radius, const QPointF& offset,
               const QColor& color, double density, const QRectF& deviceClip, const QRectF& hidden);

    // Tests and measures: how often a mask was computed.
    int computations() const { return computed; }

private:
    void compute(const QPainterPath& path, double radius, double density);
    void colorMask(const QColor& color);

    QPainterPath cachedPath;
    double cachedRadius = -1;
    double cachedDensity = 0;
    QImage mask;   // Alpha8
    QRectF area;   // of the mask, in the path's units
    QImage tinted; // the mask in the colour used last
    QColor tint;
    int computed = 0;
};

// A true Gaussian of this sigma, in pixels, over an 8-bit alpha image; outside it is transparent.
QImage blurredAlpha(const QImage& alpha, double sigma);

} // namespace marrowfin::chrome
