// The card's own shadow, a wide and a tight part, only outside its outline so that the translucent plate
// stays free of it. Points, the card's space. Main thread.
#pragma once

#include "chrome/Layer.h"

namespace marrowfin::panel {

class SoftShadow {
public:
    enum class Change { AtOnce, Animated };

    // In front of what the parent has so far.
    SoftShadow(chrome::Layer& parent, const QRectF& card, const QPainterPath& outline);

    void setDark(bool dark);
    void setLifted(bool lifted);
    // Brings the layers to what dark and lifted ask for.
    void update(Change change);

    const chrome::Layer& ambientLayer() const { return ambient; }
    const chrome::Layer& contactLayer() const { return contact; }
    // Hidden where nothing blends the card with what is behind it.
    void setVisible(bool visible);

private:
    void set(chrome::Layer& layer, chrome::Property property, double value, const QString& key,
             Change change);

    chrome::Layer& view;
    chrome::Layer& ambient;
    chrome::Layer& contact;
    bool dark = true;
    bool lifted = false;
};

} // namespace marrowfin::panel
