// Shows and hides the editor's slabs, and the text panel's: up on a spring and fading in, sinking and fading
// out, hidden a moment after. Points. Main thread.
#pragma once

#include "chrome/Delay.h"
#include "chrome/Rise.h"

#include <QObject>

namespace marrowfin::chrome {

// A slab's shadow comes and goes with it.
void setSlabVisible(QWidget& view, bool visible);
// What was asked for last. A view on its way out isn't hidden yet: ask this, and not QWidget::isHidden.
bool isSlabVisible(const QWidget& view);
// Alpha 0 and hidden at once: how a slab starts that setSlabVisible will show later.
void startSlabHidden(QWidget& view);

// The motion of one view, from the first time that it is asked for. Owned by the view.
class SlabVisibility : public QObject {
    Q_OBJECT
public:
    static SlabVisibility& of(QWidget& view);

    void setVisible(bool visible);
    void startHidden();
    const Rise& rise() const { return motion; }

private:
    explicit SlabVisibility(QWidget& view);

    QWidget& view;
    Rise motion;
    Delay hiding;
};

} // namespace marrowfin::chrome
