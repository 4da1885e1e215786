#include "chrome/SlabShadowView.h"

#include "chrome/ShapeLayer.h"

#include <QPainter>

namespace marrowfin::chrome {

namespace {
constexpr double ambientRadius = 10;
constexpr double contactRadius = 3;
constexpr QPointF ambientOffset(0, -3);
constexpr QPointF contactOffset(0, -1);
// How far outside the plate the mask lets the shadow be seen.
constexpr double maskMargin = 60;
// Beyond this there is nothing of the shadow.
const int reach = static_cast<int>(ShadowMask::reach(ambientRadius) - ambientOffset.y()) + 1;

Shadow shadowOf(const QPainterPath& outline, double radius, const QPointF& offset) {
    Shadow shadow;
    shadow.radius = radius;
    shadow.offset = offset;
    shadow.path = outline;
    return shadow;
}
} // namespace

SlabShadowView::SlabShadowView(QWidget* parent)
    : ChromePassthroughView(parent), layers(*this), plate(layers.root().add()), ambient(plate.add()),
      contact(plate.add()) {
    setDark(true);
}

void SlabShadowView::updateShadow(const QSize& size, double radius) {
    resize(size + 2 * QSize(reach, reach));
    layers.setSize(this->size());
    plate.setFrame(QRectF(QPointF(reach, reach), QSizeF(size)));
    const QPainterPath outline = roundedRect(plate.bounds(), radius);
    for (Layer* layer : {&ambient, &contact})
        layer->setFrame(plate.bounds());
    ambient.setShadow(shadowOf(outline, ambientRadius, ambientOffset));
    contact.setShadow(shadowOf(outline, contactRadius, contactOffset));
    maskInside(plate, outline, maskMargin);
    setDark(dark);
}

void SlabShadowView::setDark(bool value) {
    dark = value;
    ambient.setValue(Property::ShadowOpacity, dark ? 0.34 : 0.22);
    contact.setValue(Property::ShadowOpacity, dark ? 0.24 : 0.14);
    layers.changed();
}

void SlabShadowView::surround(const QRect& around) {
    move(around.topLeft() - QPoint(reach, reach));
}

void SlabShadowView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    layers.paint(painter);
}

} // namespace marrowfin::chrome
