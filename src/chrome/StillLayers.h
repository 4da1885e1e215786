// A layer tree without animations, painted once and kept as a picture: what surrounds a plate is painted
// again with every change beneath it. Points, y up. A member of its widget. Main thread.
#pragma once

#include "chrome/ClearPicture.h"
#include "chrome/LayerHost.h"

namespace marrowfin::chrome {

class StillLayers {
public:
    explicit StillLayers(QWidget& widget) : host(widget) {}

    Layer& root() { return host.root(); }
    void setSize(const QSizeF& size) { host.setSize(size); }
    // After every change of a layer.
    void changed() { picture = QImage(); }
    // In the widget's paint event.
    void paint(QPainter& painter);

private:
    LayerHost host;
    QImage picture;
};

} // namespace marrowfin::chrome
