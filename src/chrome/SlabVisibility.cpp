#include "chrome/SlabVisibility.h"

#include "chrome/EditorSlabView.h"

namespace marrowfin::chrome {

namespace {
constexpr double distance = 6;
// A little longer than the fade.
constexpr double hideAfterSeconds = 0.15;

SlabVisibility* existing(const QWidget& view) {
    return view.findChild<SlabVisibility*>(QString(), Qt::FindDirectChildrenOnly);
}
} // namespace

void setSlabVisible(QWidget& view, bool visible) {
    SlabVisibility::of(view).setVisible(visible);
}

bool isSlabVisible(const QWidget& view) {
    if (const SlabVisibility* visibility = existing(view))
        return visibility->rise().isShown();
    return !(view.isHidden() && view.testAttribute(Qt::WA_WState_ExplicitShowHide));
}

void startSlabHidden(QWidget& view) {
    SlabVisibility::of(view).startHidden();
}

SlabVisibility& SlabVisibility::of(QWidget& view) {
    SlabVisibility* found = existing(view);
    return found ? *found : *new SlabVisibility(view);
}

SlabVisibility::SlabVisibility(QWidget& of)
    : QObject(&of), view(of), motion(of, distance, 0, Rise::Start::Shown) {
    if (auto* slab = qobject_cast<EditorSlabView*>(&of); slab && slab->slabShadow())
        motion.takeAlong(*slab->slabShadow());
}

void SlabVisibility::setVisible(bool visible) {
    motion.setShown(visible, currentMotion());
    if (visible) {
        hiding.stop();
        view.setVisible(true);
        return;
    }
    hiding.start(hideAfterSeconds, [this] {
        if (motion.alpha() == 0)
            view.setVisible(false);
    });
}

void SlabVisibility::startHidden() {
    hiding.stop();
    motion.hideNow();
    view.setVisible(false);
}

} // namespace marrowfin::chrome
