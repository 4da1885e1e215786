#include "chrome/SymbolPicture.h"

#include <QPainter>
#include <cmath>

namespace marrowfin::chrome {

namespace {
// A symbol's drawing leaves air around itself in its square; this brings its ink to the size of type.
constexpr double air = 1.25;
} // namespace

SymbolPicture::SymbolPicture(const QString& name, double pointSize, SymbolWeight strokes)
    : symbol(name), square(pointSize * air), weight(strokes) {}

void SymbolPicture::paintCentered(QPainter& painter, const QPointF& center, const QColor& color) {
    const double density = painter.deviceTransform().m11();
    if (image.isNull() || image.devicePixelRatio() != density || tint != color) {
        image = symbolImage(symbol, square, color, density, weight);
        tint = color;
    }
    const QSizeF size = image.deviceIndependentSize();
    // On whole pixels, so that the drawing isn't smeared.
    const auto whole = [density](double value) { return std::round(value * density) / density; };
    painter.drawImage(QPointF(whole(center.x() - size.width() / 2), whole(center.y() - size.height() / 2)),
                      image);
}

} // namespace marrowfin::chrome
