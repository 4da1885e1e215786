#include "chrome/ButtonTitle.h"

#include <QFontMetricsF>
#include <QPainter>
#include <cmath>

namespace marrowfin::chrome {

double titleWidth(const QAbstractButton& button) {
    return QFontMetricsF(button.font()).horizontalAdvance(button.text());
}

QSize titleSize(const QAbstractButton& button) {
    return {static_cast<int>(std::ceil(titleWidth(button))),
            static_cast<int>(std::ceil(QFontMetricsF(button.font()).height()))};
}

void paintTitle(QPainter& painter, const QAbstractButton& button, const QRectF& room, const QColor& color) {
    const QFontMetricsF metrics(button.font());
    const double density = painter.deviceTransform().m11();
    // On a whole pixel, so that feet of letters are sharp.
    const double baseline = std::round((room.center().y() + metrics.capHeight() / 2) * density) / density;
    painter.setFont(button.font());
    painter.setPen(color);
    painter.drawText(QPointF(room.center().x() - titleWidth(button) / 2, baseline), button.text());
}

} // namespace marrowfin::chrome
