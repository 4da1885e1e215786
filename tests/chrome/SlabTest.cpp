// The plate that the editor's controls float on: where its parts stand, and what it lets through.
#include "base/Shared.h"
#include "chrome/EditorSlabView.h"
#include "chrome/Place.h"
#include "platform/fake/FakeDesktop.h"

#include <gtest/gtest.h>

namespace marrowfin::chrome {

namespace {
class Slabs : public testing::Test {
protected:
    Slabs() {
        window.resize(300, 200);
        canvas.setGeometry(window.rect());
        slab.setContentSize(100, 30, 1, 2, 3, 4);
        place(slab, {40, 50, 106, 34});
        window.show();
    }
    ~Slabs() override { SharedObjects::destroyAll(); }

    fake::FakeDesktop desktop;
    QWidget window;
    QWidget canvas{&window};
    EditorSlabView slab{SlabGround::Window, 12, &window};
};
} // namespace

TEST_F(Slabs, TheContentStandsWithinItsInsets) {
    EXPECT_EQ(placed(slab), QRectF(40, 50, 106, 34));
    EXPECT_EQ(placed(*slab.content()), QRectF(2, 3, 100, 30));
}

TEST_F(Slabs, ThePointerOverTheShadowReachesWhatLiesBelow) {
    EXPECT_EQ(window.childAt(slab.geometry().bottomLeft() + QPoint(20, 6)), &canvas);
    EXPECT_TRUE(slab.slabShadow()->geometry().contains(slab.geometry().bottomLeft() + QPoint(20, 6)));
}

} // namespace marrowfin::chrome
