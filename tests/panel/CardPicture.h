// A card's content as a picture: alone, or over what a desktop may show behind it. Main thread.
#pragma once

#include "panel/CapturePanelContentView.h"

#include <QPainter>

namespace marrowfin::panel {

inline QImage cardPicture(CapturePanelContentView& view, double density, const QImage& behind = QImage()) {
    QImage image((QSizeF(view.size()) * density).toSize(), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(density);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    if (!behind.isNull())
        painter.drawImage(QRectF(QPointF(0, 0), QSizeF(view.size())), behind);
    view.render(&painter, QPoint(), QRegion(), QWidget::DrawChildren);
    return image;
}

} // namespace marrowfin::panel
