#include "panel/SoftShadow.h"

#include "base/Geometry.h"
#include "chrome/ShapeLayer.h"

namespace marrowfin::panel {

using chrome::Property;

namespace {
constexpr double changeSeconds = 0.25;
// How far outside the card the mask lets the shadow be seen.
constexpr double maskMargin = 120;
// Farther inside the outline it leaves nothing, in the corners neither.
constexpr double outlineReach = 8;

chrome::Shadow shadowOf(const QPainterPath& outline, double radius, const QPointF& offset) {
    chrome::Shadow shadow;
    shadow.radius = radius;
    shadow.offset = offset;
    shadow.path = outline;
    return shadow;
}
} // namespace

SoftShadow::SoftShadow(chrome::Layer& parent, const QRectF& card, const QPainterPath& outline)
    : view(parent.add()), ambient(view.add()), contact(view.add()) {
    view.setFrame(card);
    for (chrome::Layer* layer : {&ambient, &contact})
        layer->setFrame(view.bounds());
    ambient.setShadow(shadowOf(outline, 16, {0, -5}));
    contact.setShadow(shadowOf(outline, 5, {0, -1.5}));
    chrome::maskInside(view, outline, maskMargin);
    view.setMaskHole(inset(outline.boundingRect(), outlineReach, outlineReach));
    update(Change::AtOnce);
}

void SoftShadow::setDark(bool value) {
    dark = value;
}

void SoftShadow::setLifted(bool value) {
    lifted = value;
}

void SoftShadow::setVisible(bool visible) {
    view.setValue(Property::Opacity, visible ? 1.0 : 0.0);
}

void SoftShadow::update(Change change) {
    const double ambientOpacity = (dark ? 0.38 : 0.3) + (lifted ? 0.08 : 0);
    set(ambient, Property::ShadowOpacity, ambientOpacity, QStringLiteral("shadowOpacity"), change);
    set(ambient, Property::ShadowRadius, lifted ? 20 : 16, QStringLiteral("shadowRadius"), change);
    set(contact, Property::ShadowOpacity, dark ? 0.28 : 0.2, QStringLiteral("shadowOpacity"), change);
}

void SoftShadow::set(chrome::Layer& layer, Property property, double value, const QString& key,
                     Change change) {
    const chrome::Value before = layer.presented(property);
    if (change == Change::AtOnce)
        layer.removeAnimation(key);
    else if (before != chrome::Value(value))
        layer.addAnimation(key, chrome::Animation::basic(property, before, value, changeSeconds,
                                                         chrome::TimingFunction::easeOut()));
    layer.setValue(property, value);
}

} // namespace marrowfin::panel
