#include "editor/CanvasBackdrop.h"

#include "base/ColorAlpha.h"
#include "base/Geometry.h"
#include "editor/RectShadow.h"

#include <QPainter>

namespace marrowfin::editor {

namespace {

constexpr double shadowAlpha = 0.32;
constexpr double shadowBlur = 18.0;
constexpr double shadowDrop = 5.0;
constexpr double hairlineAlpha = 0.12;

// Each edge on the nearest pixel, so that the image has sharp edges and isn't smeared by half a pixel.
QRect pixelRect(const QRectF& rect) {
    const int left = roundedToInt(rect.left());
    const int top = roundedToInt(rect.top());
    return {left, top, std::max(roundedToInt(rect.right()) - left, 1),
            std::max(roundedToInt(rect.bottom()) - top, 1)};
}

} // namespace

bool CanvasBackdrop::prepare(const Key& key) {
    const bool sameKey = !pixels.isNull() && key == made;
    if (!sameKey) {
        made = key;
        const QTransform placed = key.fit.paintTransform(key.viewToLayer.m11()) * key.viewToLayer;
        target = pixelRect(placed.mapRect(QRectF(QPointF(0, 0), key.base.size())));
    }
    const QImage& copy = base.of(key.base, target.size());
    if (sameKey && copy.cacheKey() == scaled.cacheKey())
        return false;
    scaled = copy;
    paint();
    return true;
}

void CanvasBackdrop::paint() {
    const QSize size = made.viewToLayer.mapRect(QRectF(QPointF(0, 0), made.view)).toAlignedRect().size();
    if (pixels.size() != size)
        pixels = QImage(size, QImage::Format_RGB32);
    pixels.fill(systemColor(SystemColor::underPageBackground, made.scheme));
    if (scaled.isNull())
        return;
    const double density = made.viewToLayer.m11();
    paintRectShadow(pixels, target, {shadowDrop * density, shadowBlur / 2 * density, shadowAlpha});
    QPainter painter(&pixels);
    painter.drawImage(target.topLeft(), scaled);
    painter.setPen(QPen(withAlpha(systemColor(SystemColor::label, made.scheme), hairlineAlpha), density,
                        Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
    painter.drawRect(inset(target, -density / 2, -density / 2));
}

} // namespace marrowfin::editor
