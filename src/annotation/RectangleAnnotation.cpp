#include "annotation/RectangleAnnotation.h"

#include "annotation/HitTesting.h"
#include "annotation/InkPen.h"
#include "annotation/InkShadow.h"
#include "base/Geometry.h"

namespace marrowfin::annotation {

bool RectangleAnnotation::hitTest(const QPointF& point, double tolerance) const {
    return hitsOutline(box(), point, tolerance);
}

void RectangleAnnotation::draw(QPainter& painter) const {
    const QRectF outline = standardized(box());
    if (outline.isNull())
        return; // a press without a drag leaves no mark
    const double reach = strokeWidth / 2;
    const InkOutline sides{{outline.topLeft(), outline.topRight(), reach},
                           {outline.topRight(), outline.bottomRight(), reach},
                           {outline.bottomRight(), outline.bottomLeft(), reach},
                           {outline.bottomLeft(), outline.topLeft(), reach}};
    paintWithInkShadow(painter, sides, [&](QPainter& ink) {
        ink.setPen(inkPen(*this, Qt::FlatCap, Qt::MiterJoin));
        ink.drawRect(outline);
    });
}

} // namespace marrowfin::annotation
