#include "chrome/GradientLayer.h"

#include "chrome/Strips.h"

#include <QLinearGradient>
#include <QPainter>

namespace marrowfin::chrome {

void GradientLayer::setColors(const QColor& start, const QColor& end) {
    first = start;
    last = end;
    changed();
}

void GradientLayer::setPoints(const QPointF& start, const QPointF& end) {
    from = start;
    to = end;
    changed();
}

void GradientLayer::paintOwn(QPainter& painter, const Moment& moment) const {
    const auto inBounds = [this](const QPointF& unit) {
        return QPointF(unit.x() * bounds().width(), unit.y() * bounds().height());
    };
    QLinearGradient gradient(inBounds(from), inBounds(to));
    gradient.setColorAt(0, first);
    gradient.setColorAt(1, last);
    paintInStrips(painter, onDevice(painter, bounds(), moment.deviceClip), {}, Edges::Blended,
                  [&] { painter.fillRect(bounds(), gradient); });
}

} // namespace marrowfin::chrome
