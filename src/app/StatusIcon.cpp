#include "app/StatusIcon.h"

#include "base/Geometry.h"

#include <QPainter>
#include <QPainterPath>

namespace marrowfin::app {

namespace {
constexpr double side = 18.0; // points
constexpr double arm = 4.0;   // of a corner bracket
constexpr double dotDiameter = 2.5;

// y up, as the rest of the drawing.
QPainterPath brackets(const QRectF& b) {
    QPainterPath path;
    path.moveTo(minX(b), maxY(b) - arm);
    path.lineTo(minX(b), maxY(b));
    path.lineTo(minX(b) + arm, maxY(b));
    path.moveTo(maxX(b) - arm, maxY(b));
    path.lineTo(maxX(b), maxY(b));
    path.lineTo(maxX(b), maxY(b) - arm);
    path.moveTo(maxX(b), minY(b) + arm);
    path.lineTo(maxX(b), minY(b));
    path.lineTo(maxX(b) - arm, minY(b));
    path.moveTo(minX(b) + arm, minY(b));
    path.lineTo(minX(b), minY(b));
    path.lineTo(minX(b), minY(b) + arm);
    return path;
}
} // namespace

QImage statusIcon(int pixels, const QColor& color) {
    QImage image(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(0, pixels);
    painter.scale(pixels / side, -pixels / side);

    const QRectF r(0, 0, side, side);
    painter.setPen(QPen(color, 1.4, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
    painter.drawRoundedRect(inset(r, 1.5, 1.5), 3.0, 3.0);
    painter.setPen(QPen(color, 1.6, Qt::SolidLine, Qt::RoundCap, Qt::MiterJoin));
    painter.drawPath(brackets(inset(r, 4.0, 4.0)));
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawEllipse(center(r), dotDiameter / 2, dotDiameter / 2);
    return image;
}

} // namespace marrowfin::app
