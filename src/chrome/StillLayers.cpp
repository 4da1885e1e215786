#include "chrome/StillLayers.h"

#include <QPainter>

namespace marrowfin::chrome {

void StillLayers::paint(QPainter& painter) {
    const double density = painter.deviceTransform().m11();
    if (picture.isNull() || picture.devicePixelRatio() != density) {
        const QRectF bounds = host.root().bounds();
        picture = clearPicture(bounds.size(), density);
        QPainter once(&picture);
        host.paint(once, bounds.toAlignedRect());
    }
    painter.drawImage(QPointF(0, 0), picture);
}

} // namespace marrowfin::chrome
