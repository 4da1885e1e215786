// Paints a layer and all in it with a QPainter whose axes are the superlayer's (y up). Layers that are
// translucent or masked as a whole are painted aside first. Main thread.
#pragma once

#include "chrome/Layer.h"

class QPainter;

namespace marrowfin::chrome {

class LayerPainter {
public:
    // deviceClip: nothing outside is wanted, in pixels of the painter's device. Density: device pixels per
    // point.
    static void paint(QPainter& painter, const Layer& layer, double now, double density,
                      const QRectF& deviceClip);

private:
    using Moment = Layer::Moment;
    static void paint(QPainter& painter, const Layer& layer, const Moment& moment);
    static void paintComposed(QPainter& painter, const Layer& layer, const QRect& device, double opacity,
                              const Moment& moment);
    static void paintGroup(QPainter& painter, const Layer& layer, const QRect& device, double opacity,
                           const Moment& moment);
    static void paintClipped(QPainter& painter, const Layer& layer, const Moment& moment);
    static void paintPlain(QPainter& painter, const Layer& layer, const Moment& moment);
    static void paintInside(QPainter& painter, const Layer& layer, const Moment& moment);
    static void paintShadow(QPainter& painter, const Layer& layer, const Moment& moment);
    static bool isOneStroke(const Layer& layer);
};

} // namespace marrowfin::chrome
