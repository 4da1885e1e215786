#include "panel/CardSurface.h"

#include "base/ColorAlpha.h"
#include "base/Geometry.h"
#include "base/SystemColors.h"

namespace marrowfin::panel {

using chrome::Property;

namespace {
constexpr double plateAlpha = 0.92;
// Farther inside there is nothing of the ring, in the corners neither.
constexpr double ringReach = 8;
} // namespace

QString rawValue(BackdropKind kind) {
    return kind == BackdropKind::liquidGlass ? QStringLiteral("liquid-glass") : QStringLiteral("vibrancy");
}

BackdropKind backdropOfThisDesktop() {
    return BackdropKind::vibrancy;
}

CardSurface::CardSurface(chrome::Layer& parent, const QRectF& card, BackdropKind backdrop,
                         const std::optional<QColor>& tint)
    : kind(backdrop), plate(parent.add()) {
    plate.setFrame(card);
    if (tint) {
        tintLayer = &parent.add();
        tintLayer->setFrame(card);
        tintLayer->setValue(Property::BackgroundColor,
                            withAlpha(*tint, kind == BackdropKind::liquidGlass ? 0.16 : 0.1));
    }
    buildRim(parent, card);
    apply();
}

void CardSurface::buildRim(chrome::Layer& parent, const QRectF& card) {
    const QRectF bounds(QPointF(0, 0), card.size());
    const QPainterPath ring =
        chrome::roundedRect(bounds.adjusted(0.5, 0.5, -0.5, -0.5), cardCornerRadius - 0.5);
    if (kind == BackdropKind::vibrancy) {
        perimeterLine = &parent.add<chrome::ShapeLayer>();
        perimeterLine->setFrame(card);
        perimeterLine->setPath(ring);
        perimeterLine->setFillColor(std::nullopt);
        perimeterLine->setLine(1);
    }
    rimGradient = &parent.add<chrome::GradientLayer>();
    rimGradient->setFrame(card);
    rimGradient->setPoints({0.5, 1.0}, {0.5, 0.3});
    auto& mask = rimGradient->makeMask<chrome::ShapeLayer>();
    mask.setFrame(bounds);
    mask.setPath(ring);
    mask.setFillColor(std::nullopt);
    mask.setStrokeColor(Qt::white);
    mask.setLine(1);
    rimGradient->setMaskHole(inset(bounds, ringReach, ringReach));
}

void CardSurface::setDark(bool value) {
    dark = value;
    apply();
}

void CardSurface::setOpaque(bool value) {
    opaque = value;
    apply();
}

QColor CardSurface::plateColor() const {
    const ColorScheme scheme = dark ? ColorScheme::Dark : ColorScheme::Light;
    return withAlpha(systemColor(SystemColor::windowBackground, scheme), opaque ? 1.0 : plateAlpha);
}

void CardSurface::apply() {
    plate.setValue(Property::BackgroundColor, plateColor());
    plate.setCornerRadius(opaque ? 0 : cardCornerRadius);
    if (tintLayer)
        tintLayer->setCornerRadius(opaque ? 0 : cardCornerRadius, chrome::CornerCurve::Continuous);
    if (perimeterLine)
        perimeterLine->setStrokeColor(dark ? withAlpha(Qt::white, 0.14) : withAlpha(Qt::black, 0.1));
    const bool glass = kind == BackdropKind::liquidGlass;
    const double light = dark ? (glass ? 0.3 : 0.5) : (glass ? 0.15 : 0.3);
    rimGradient->setColors(withAlpha(Qt::white, light), withAlpha(Qt::white, 0));
}

} // namespace marrowfin::panel
