// Puts a layer tree into a widget: the one flip between the layers' y-up points and the widget's y-down ones,
// which part of the widget to paint again, and when. At rest it asks for nothing. A member of the widget.
// Main thread.
#pragma once

#include "chrome/AnimationClock.h"
#include "chrome/Layer.h"

#include <QRect>

class QPainter;
class QWidget;

namespace marrowfin::chrome {

class LayerHost : private AnimationClock::Client {
public:
    explicit LayerHost(QWidget& widget);
    ~LayerHost() override;
    LayerHost(const LayerHost&) = delete;
    LayerHost& operator=(const LayerHost&) = delete;

    Layer& root() { return *top; }
    // The widget's size; its layers' origin is its bottom left corner.
    void setSize(const QSizeF& size);
    // In the widget's paint event.
    void paint(QPainter& painter, const QRect& dirty);

    // Between the two spaces.
    QRectF toWidget(const QRectF& layerRect) const;
    QPointF toLayer(const QPointF& widgetPoint) const;

private:
    friend class Layer;
    void layerChanged(Layer& layer);
    void repaint(const QRectF& layerRect);
    // Repaints the layer where it was and where it is now; its sublayers come with it.
    void repaint(Layer& layer, double now);
    void rememberShown(Layer& layer, double now, const QTransform& toRoot);
    std::optional<double> tick(double now) override;
    // Steps the layer and those in it; adds the earliest next change to due.
    void step(Layer& layer, double now, std::optional<double>& due);

    QWidget& widget;
    std::unique_ptr<Layer> top;
    double shownTime = 0; // of what was asked to be painted last
};

} // namespace marrowfin::chrome
