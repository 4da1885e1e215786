#include "annotation/NumberAnnotation.h"

#include "annotation/InkShadow.h"
#include "base/Geometry.h"
#include "base/SystemFonts.h"

#include <QPainterPath>

namespace marrowfin::annotation {

namespace {

// Centred by its ink: what is seen stands in the middle, whatever room the face leaves around it.
QPainterPath digitsPath(qint64 number, const QPointF& center, double radius) {
    const ExactFont font = exactMonospacedSystemFont(radius * 1.2, QFont::Bold);
    QPainterPath path;
    path.addText(0, 0, font.font, QString::number(number));
    path.setFillRule(Qt::WindingFill);
    const QPointF middle = path.boundingRect().center();
    QTransform place;
    place.translate(center.x(), center.y());
    place.scale(font.scale, font.scale);
    place.translate(-middle.x(), -middle.y());
    return place.map(path);
}

} // namespace

QRectF NumberAnnotation::boundingRect() const {
    return {center.x() - radius, center.y() - radius, 2 * radius, 2 * radius};
}

bool NumberAnnotation::hitTest(const QPointF& point, double tolerance) const {
    return distance(point, center) < tolerance + radius;
}

void NumberAnnotation::draw(QPainter& painter) const {
    if (!(radius > 0))
        return;
    const QPainterPath digits = digitsPath(number, center, radius);
    const QRectF digitsBox = digits.boundingRect();
    const QPointF aside(digitsBox.width() / 2, 0);
    const InkOutline outline{{center, center, radius},
                             {center - aside, center + aside, digitsBox.height() / 2}}; // may leave the disc
    paintWithInkShadow(painter, outline, [&](QPainter& ink) {
        ink.setPen(Qt::NoPen);
        ink.setBrush(strokeColor);
        ink.drawEllipse(center, radius, radius);
        ink.fillPath(digits, Qt::white);
    });
}

} // namespace marrowfin::annotation
