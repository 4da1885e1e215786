#include "chrome/PoseEffect.h"

#include "chrome/Strips.h"

#include <QPainter>
#include <QWidget>

namespace marrowfin::chrome {

PoseEffect::PoseEffect(QWidget& widget, double farthest) : reach(farthest) {
    setEnabled(false);
    widget.setGraphicsEffect(this);
}

void PoseEffect::setPose(const Pose& pose) {
    if (pose == current)
        return;
    current = pose;
    setEnabled(current != Pose());
    update();
}

QRectF PoseEffect::boundingRectFor(const QRectF& rect) const {
    return rect.adjusted(-reach, -reach, reach, reach);
}

void PoseEffect::draw(QPainter* painter) {
    if (current.opacity <= 0)
        return;
    QPoint origin;
    const QPixmap source = sourcePixmap(Qt::LogicalCoordinates, &origin, NoPad);
    painter->save();
    painter->setRenderHint(QPainter::SmoothPixmapTransform);
    painter->setOpacity(painter->opacity() * current.opacity);
    const QPointF place = QPointF(origin) + QPointF(current.offset.x(), -current.offset.y());
    const QRectF all(place, source.deviceIndependentSize());
    const QRect device = painter->deviceTransform().mapRect(all).toAlignedRect();
    paintInStrips(*painter, device, {}, Edges::Whole, [&] { painter->drawPixmap(place, source); });
    painter->restore();
}

} // namespace marrowfin::chrome
