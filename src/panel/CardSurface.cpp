#include "panel/CardSurface.h"

#include "base/SystemColors.h"

namespace marrowfin {

using chrome::Property;

namespace {
constexpr float plateAlpha = 0.92F;

QColor white(double alpha) {
    return QColor::fromRgbF(1, 1, 1, static_cast<float>(alpha));
}
QColor black(double alpha) {
    return QColor::fromRgbF(0, 0, 0, static_cast<float>(alpha));
}
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
        QColor color = *tint;
        color.setAlphaF(kind == BackdropKind::liquidGlass ? 0.16F : 0.1F);
        tintLayer = &parent.add();
        tintLayer->setFrame(card);
        tintLayer->setValue(Property::BackgroundColor, color);
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
    QColor color = systemColor(SystemColor::windowBackground, dark ? ColorScheme::Dark : ColorScheme::Light);
    color.setAlphaF(opaque ? 1.0F : plateAlpha);
    return color;
}

void CardSurface::apply() {
    plate.setValue(Property::BackgroundColor, plateColor());
    plate.setCornerRadius(opaque ? 0 : cardCornerRadius);
    if (tintLayer)
        tintLayer->setCornerRadius(opaque ? 0 : cardCornerRadius, chrome::CornerCurve::Continuous);
    if (perimeterLine)
        perimeterLine->setStrokeColor(dark ? white(0.14) : black(0.1));
    const bool glass = kind == BackdropKind::liquidGlass;
    const double light = dark ? (glass ? 0.3 : 0.5) : (glass ? 0.15 : 0.3);
    rimGradient->setColors(white(light), white(0));
}

} // namespace marrowfin
