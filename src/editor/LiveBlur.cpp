#include "editor/LiveBlur.h"

#include "annotation/ImageCompositor.h"

#include <QBrush>
#include <QPainter>
#include <algorithm>

namespace marrowfin::editor {

using namespace annotation;
using namespace imaging;

void LiveBlur::prepare(const CanvasBackdrop& backdrop, const Image& base) {
    const QImage& shown = backdrop.scaledBase();
    if (madeFrom == shown.cacheKey())
        return;
    madeFrom = shown.cacheKey();
    const double sigma = shown.width() / std::max(base.size().width(), 1.0) * ImageCompositor::blurSigma;
    blurred = ImageCompositor::blurredImage(shown, sigma);
}

void LiveBlur::draw(QPainter& painter, const BlurAnnotation& box, const QTransform& toLayer,
                    const CanvasBackdrop& backdrop, const Image& base) {
    if (box.size.width() < 1.0 || box.size.height() < 1.0 || base.isNull())
        return;
    prepare(backdrop, base);
    if (blurred.isNull())
        return;
    const QRectF shown = toLayer.mapRect(box.box()).intersected(backdrop.imageRect());
    // A brush and not a clipped picture: its edges are smooth wherever the box's edges fall.
    QBrush window(blurred);
    window.setTransform(QTransform::fromTranslate(backdrop.imageRect().left(), backdrop.imageRect().top()));
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(shown, window);
    painter.restore();
}

} // namespace marrowfin::editor
