// The shadow of a floating plate, a wide and a tight part, only outside the plate's outline so that a
// translucent plate isn't darkened by it. A sibling right below the plate, larger by the shadow's reach; it
// never takes the mouse. Points. Owned by its plate. Main thread.
#pragma once

#include "base/SystemColors.h"
#include "chrome/ChromePassthroughView.h"
#include "chrome/StillLayers.h"

namespace marrowfin::chrome {

class SlabShadowView : public ChromePassthroughView {
    Q_OBJECT
public:
    explicit SlabShadowView(QWidget* parent = nullptr);

    // Its outline: a plate of this size and corner radius.
    void updateShadow(const QSize& plate, double radius);
    void setDark(bool dark);
    bool isDark() const { return dark; }
    // Puts the view around a plate that stands here in the same parent.
    void surround(const QRect& plate);

    const Layer& ambientLayer() const { return ambient; }
    const Layer& contactLayer() const { return contact; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    StillLayers layers;
    Layer& plate; // where the plate is in this view
    Layer& ambient;
    Layer& contact;
    bool dark = true;
};

} // namespace marrowfin::chrome
