// What a card is made of: a translucent plate with a breath of the capture's colour, a hairline, and light
// along its top edge. Points, the card's space (y up). Main thread.
#pragma once

#include "chrome/GradientLayer.h"
#include "chrome/ShapeLayer.h"

#include <optional>

namespace marrowfin::panel {

enum class BackdropKind {
    liquidGlass, // the desktop bends light behind the card itself
    vibrancy,    // a plain translucent plate with a hairline
};
// "liquid-glass", "vibrancy".
QString rawValue(BackdropKind kind);
// No desktop that we know refracts what is behind a window.
BackdropKind backdropOfThisDesktop();

constexpr double cardCornerRadius = 18;

class CardSurface {
public:
    // In front of what the parent has so far.
    CardSurface(chrome::Layer& parent, const QRectF& card, BackdropKind kind,
                const std::optional<QColor>& tint);

    void setDark(bool dark);
    // Opaque to its square corners, for desktops that cut the card out by its outline.
    void setOpaque(bool opaque);

    QColor plateColor() const;

private:
    void buildRim(chrome::Layer& parent, const QRectF& card);
    void apply();

    BackdropKind kind;
    chrome::Layer& plate;
    chrome::Layer* tintLayer = nullptr;
    chrome::ShapeLayer* perimeterLine = nullptr;
    chrome::GradientLayer* rimGradient = nullptr;
    bool dark = false;
    bool opaque = false;
};

} // namespace marrowfin::panel
