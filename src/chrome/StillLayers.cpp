#include "chrome/StillLayers.h"

#include <QPainter>

namespace marrowfin::chrome {

void StillLayers::paint(QPainter& painter, const QRect& dirty) {
    const double density = painter.deviceTransform().m11();
    if (picture.isNull() || picture.devicePixelRatio() != density) {
        const QSizeF size = host.root().bounds().size();
        picture = QImage((size * density).toSize(), QImage::Format_ARGB32_Premultiplied);
        picture.setDevicePixelRatio(density);
        picture.fill(Qt::transparent);
        QPainter once(&picture);
        host.paint(once, QRectF(QPointF(0, 0), size).toAlignedRect());
    }
    const QRectF part(dirty);
    painter.drawImage(part, picture, QRectF(part.topLeft() * density, part.size() * density));
}

} // namespace marrowfin::chrome
