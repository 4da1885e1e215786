// The plate that the editor's controls float on: where its parts stand, what it lets through, and its shadow,
// which goes wherever it goes.
#include "chrome/GradientLayer.h"
#include "chrome/ShapeLayer.h"
#include "chrome/SlabFixture.h"

namespace marrowfin::chrome {

class Slabs : public SlabFixture {
protected:
    Slabs() : slab(std::make_unique<EditorSlabView>(SlabGround::Window, 12, &window)) {
        slab->setContentSize(100, 30, 1, 2, 3, 4);
        place(*slab, {40, 50, 106, 34});
        window.show();
    }
    int grey(const QPoint& at) { return picture().pixelColor(at).lightness(); }

    std::unique_ptr<EditorSlabView> slab;
};

TEST_F(Slabs, TheContentStandsWithinItsInsets) {
    EXPECT_EQ(placed(*slab), QRectF(40, 50, 106, 34));
    EXPECT_EQ(placed(*slab->content()), QRectF(2, 3, 100, 30));
}

TEST_F(Slabs, TheRingAndTheRimRunHalfAPointInside) {
    EXPECT_EQ(slab->fallbackRing().path(), roundedRect({0.5, 0.5, 105, 33}, 11.5));
    EXPECT_EQ(slab->fallbackRing().frame(), QRectF(0, 0, 106, 34));
    EXPECT_EQ(slab->rim().frame(), QRectF(0, 0, 106, 34));
    EXPECT_FALSE(EditorSlabView::liquidGlass);
}

TEST_F(Slabs, ThePointerOverTheShadowReachesWhatLiesBelow) {
    const QPoint onShadow = slab->geometry().bottomLeft() + QPoint(20, 6);
    EXPECT_LT(grey(onShadow), 250);
    EXPECT_EQ(window.childAt(onShadow), &below);
}

TEST_F(Slabs, ThePointerOverTheRimReachesTheControlBelowIt) {
    slab->setContentSize(100, 30, 0, 0, 0, 0);
    QWidget control(slab->content());
    control.setGeometry(slab->content()->rect());
    control.show();
    const QPoint onRim(50, 0);
    EXPECT_NE(grey(slab->geometry().topLeft() + onRim), grey(slab->geometry().center()));
    EXPECT_EQ(window.childAt(slab->geometry().topLeft() + onRim), &control);
}

TEST_F(Slabs, TheShadowLiesOutsideThePlateOnly) {
    slab->hide();
    slab->slabShadow()->show();
    const QRect plate = slab->geometry();
    EXPECT_EQ(grey(plate.center()), 255);
    EXPECT_EQ(grey(plate.topLeft() + QPoint(20, 0)), 255);
    EXPECT_EQ(grey(plate.bottomLeft() + QPoint(20, 0)), 255);
    EXPECT_LT(grey(plate.bottomLeft() + QPoint(20, 2)), 230);
    EXPECT_LT(grey(plate.topLeft() + QPoint(20, -2)), 250);
    // It falls: more of it below than above, at the same distance.
    EXPECT_LT(grey(plate.bottomLeft() + QPoint(20, 5)), grey(plate.topLeft() + QPoint(20, -5)));
    // And it ends inside its view.
    const QRect all = slab->slabShadow()->geometry();
    EXPECT_EQ(grey({all.left() + 1, plate.center().y()}), 255);
    EXPECT_EQ(grey({plate.center().x(), all.bottom() - 1}), 255);
}

TEST_F(Slabs, TheShadowFollowsThePlate) {
    const QRect before = slab->slabShadow()->geometry();
    slab->move(slab->pos() + QPoint(30, 20));
    EXPECT_EQ(slab->slabShadow()->geometry(), before.translated(30, 20));
    slab->setContentSize(200, 30, 1, 2, 3, 4);
    EXPECT_EQ(slab->slabShadow()->geometry(), before.translated(30, 20).adjusted(0, 0, 100, 0));
    slab->hide();
    EXPECT_FALSE(slab->slabShadow()->isVisible());
    slab->show();
    EXPECT_TRUE(slab->slabShadow()->isVisible());
}

TEST_F(Slabs, TheShadowStaysRightBelowThePlate) {
    slab->raise();
    const auto order = [&](QWidget* widget) { return window.children().indexOf(widget); };
    EXPECT_EQ(order(slab->slabShadow()) + 1, order(slab.get()));
    slab->lower();
    below.lower();
    EXPECT_LT(order(&below), order(slab->slabShadow()));
    EXPECT_EQ(order(slab->slabShadow()) + 1, order(slab.get()));
}

TEST_F(Slabs, TheShadowGoesToAnotherParentAndAwayWithThePlate) {
    QWidget other;
    slab->setParent(&other);
    EXPECT_EQ(slab->slabShadow()->parentWidget(), &other);
    QPointer<SlabShadowView> shadow = slab->slabShadow();
    slab.reset();
    EXPECT_TRUE(shadow.isNull());
    auto* parent = new QWidget;
    auto* owned = new EditorSlabView(SlabGround::Window, 8, parent);
    shadow = owned->slabShadow();
    delete parent;
    EXPECT_TRUE(shadow.isNull());
}

TEST_F(Slabs, APlateMayBeMadeBeforeItsParent) {
    auto* orphan = new EditorSlabView(SlabGround::Desktop, 8);
    orphan->setContentSize(10, 10, 5, 5, 5, 5);
    orphan->setParent(&window);
    orphan->move(100, 200);
    orphan->show();
    EXPECT_EQ(orphan->slabShadow()->parentWidget(), &window);
    EXPECT_TRUE(orphan->slabShadow()->isVisible());
    EXPECT_EQ(orphan->slabShadow()->geometry().center(), orphan->geometry().center());
}

TEST_F(Slabs, RimRingAndShadowFollowTheAppearance) {
    const auto shadowOpacity = [](const Layer& layer) {
        return std::get<double>(layer.presented(Property::ShadowOpacity));
    };
    EXPECT_NEAR(slab->rim().startColor().alphaF(), 0.22, 0.003);
    EXPECT_EQ(slab->fallbackRing().strokeColor()->rgb(), qRgb(0, 0, 0));
    EXPECT_NEAR(slab->fallbackRing().strokeColor()->alphaF(), 0.10, 0.003);
    EXPECT_EQ(shadowOpacity(slab->slabShadow()->ambientLayer()), 0.22);
    EXPECT_EQ(shadowOpacity(slab->slabShadow()->contactLayer()), 0.14);
    const QImage light = picture();
    useScheme(ColorScheme::Dark);
    EXPECT_NEAR(slab->rim().startColor().alphaF(), 0.38, 0.003);
    EXPECT_EQ(slab->fallbackRing().strokeColor()->rgb(), qRgb(255, 255, 255));
    EXPECT_NEAR(slab->fallbackRing().strokeColor()->alphaF(), 0.14, 0.003);
    EXPECT_EQ(shadowOpacity(slab->slabShadow()->ambientLayer()), 0.34);
    EXPECT_EQ(shadowOpacity(slab->slabShadow()->contactLayer()), 0.24);
    const QImage dark = picture();
    const QPoint center = slab->geometry().center();
    EXPECT_GT(light.pixelColor(center).lightness(), 240);
    EXPECT_LT(dark.pixelColor(center).lightness(), 60);
    const QPoint onRing = slab->geometry().bottomLeft() + QPoint(50, 0);
    EXPECT_LT(light.pixelColor(onRing).lightness(), light.pixelColor(center).lightness() - 5);
    EXPECT_GT(dark.pixelColor(onRing).lightness(), dark.pixelColor(center).lightness() + 5);
    const QPoint onShadow = slab->geometry().bottomLeft() + QPoint(20, 4);
    EXPECT_LT(dark.pixelColor(onShadow).lightness(), light.pixelColor(onShadow).lightness());
}

TEST_F(Slabs, TheShadowIsComputedOnceForASize) {
    picture();
    const int computed = slab->slabShadow()->ambientLayer().shadowMask().computations();
    EXPECT_EQ(computed, 1);
    slab->move(slab->pos() + QPoint(5, 5));
    pointAt(*slab);
    picture();
    useScheme(ColorScheme::Dark);
    picture();
    EXPECT_EQ(slab->slabShadow()->ambientLayer().shadowMask().computations(), computed);
    slab->setContentSize(120, 30, 1, 2, 3, 4);
    picture();
    EXPECT_EQ(slab->slabShadow()->ambientLayer().shadowMask().computations(), computed + 1);
}

TEST(ClearPictures, ABrokenPixelCountsAsAWholeOne) {
    EXPECT_EQ(clearPicture({30, 21}, 1.25).size(), QSize(38, 27));
    EXPECT_EQ(clearPicture({30, 20}, 1.1).size(), QSize(33, 22));
    EXPECT_EQ(clearPicture({30, 20}, 2).pixelColor(59, 39).alpha(), 0);
}

TEST_F(Slabs, ThePlateIsTranslucent) {
    const QPoint center = slab->geometry().center();
    EXPECT_NEAR(grey(center), 246.7, 1); // 0.92 of 246, and the rest of the white beneath
    below.setPicture(plain(Qt::black));
    EXPECT_NEAR(grey(center), 226.3, 1);
}

} // namespace marrowfin::chrome
