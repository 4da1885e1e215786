#include "annotation/TextAnnotation.h"

#include "annotation/HitTesting.h"
#include "annotation/TextLayout.h"

namespace marrowfin::annotation {

QRectF TextAnnotation::boundingRect() const {
    return TextLayout(text, fontSize).rect().translated(position);
}

bool TextAnnotation::hitTest(const QPointF& point, double tolerance) const {
    // Most texts are decided by their height alone, which needs no layout.
    const LineMetrics metrics = textLineMetrics(fontSize);
    const double top = position.y() - metrics.baseline;
    const double height = metrics.height * textLineCount(text);
    if (!(point.x() >= position.x() - tolerance && point.y() >= top - tolerance &&
          point.y() < top + height + tolerance))
        return false;
    return hitsArea(boundingRect(), point, tolerance);
}

void TextAnnotation::draw(QPainter& painter) const {
    TextLayout(text, fontSize).draw(painter, position, strokeColor);
}

} // namespace marrowfin::annotation
