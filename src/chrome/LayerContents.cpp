#include "chrome/LayerContents.h"

#include "chrome/Strips.h"

#include <QPainter>
#include <cmath>

namespace marrowfin::chrome {

void LayerContents::set(const QImage& image) {
    levels.clear();
    if (!image.isNull())
        levels.push_back(image);
}

void LayerContents::paint(QPainter& painter, const QRectF& rect, const QRectF& deviceClip) {
    if (levels.empty() || rect.isEmpty())
        return;
    const QTransform device = painter.deviceTransform();
    double scale = std::hypot(device.m11(), device.m12()) * rect.width() / levels.front().width();
    std::size_t level = 0;
    for (; scale < 0.5 + 1e-6 && levels[level].width() > 1 && levels[level].height() > 1; scale *= 2) {
        if (++level == levels.size())
            levels.push_back(levels.back().scaled((levels.back().size() + QSize(1, 1)) / 2,
                                                  Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    }
    painter.save();
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.translate(rect.left(), rect.bottom());
    painter.scale(1, -1);
    const QRectF upright(QPointF(0, 0), rect.size());
    paintInStrips(painter, onDevice(painter, upright, deviceClip), {}, Edges::Blended,
                  [&] { painter.drawImage(upright, levels[level]); });
    painter.restore();
}

} // namespace marrowfin::chrome
