// The alpha of a shadow from the alpha of its ink: a small Gaussian, offset by fractions of a pixel, in whole
// numbers and thereby the same on every processor.
#pragma once

#include <QImage>
#include <QPointF>
#include <QRect>
#include <vector>

namespace marrowfin {

// Puts the shadow under the ink of a premultiplied layer. The rectangles, in the layer's pixels, hold all ink
// and its shadow's reach; no two touch from left and right. Black at this alpha.
void addShadowUnderneath(QImage& layer, const std::vector<QRect>& rects, double sigma, const QPointF& offset,
                         double alpha);
// How far such a shadow can be from its ink, in pixels.
double shadowReach(double sigma, const QPointF& offset);

} // namespace marrowfin
