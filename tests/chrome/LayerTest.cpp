// What a tree of layers looks like.
#include "chrome/LayersFixture.h"

namespace marrowfin::chrome {

TEST_F(Layers, YPointsUpAndContentsStandUpright) {
    QImage twoTone = solid(20, 20, Qt::red);
    QPainter(&twoTone).fillRect(0, 10, 20, 10, Qt::blue); // the lower half as one sees it
    Layer& layer = root.add();
    layer.setFrame({10, 5, 20, 20});
    layer.setContents(twoTone);
    const QImage seen = picture();
    // Its lower edge is 5 above the bottom: rows 55 to 74 of 80.
    EXPECT_EQ(seen.pixelColor(15, 56), QColor(Qt::red));
    EXPECT_EQ(seen.pixelColor(15, 73), QColor(Qt::blue));
    EXPECT_EQ(seen.pixelColor(15, 54).alpha(), 0);
    EXPECT_EQ(seen.pixelColor(15, 75).alpha(), 0);
    EXPECT_EQ(seen.pixelColor(9, 60).alpha(), 0);
    EXPECT_EQ(seen.pixelColor(30, 60).alpha(), 0);
}

TEST_F(Layers, ATransformTurnsAboutTheAnchorPoint) {
    Layer& layer = root.add();
    layer.setFrame({20, 20, 40, 40});
    layer.setAnchorPoint({0.5, 1}); // the middle of the top edge
    layer.setValue(Property::BackgroundColor, QColor(Qt::red));
    layer.setValue(Property::Transform, QTransform::fromScale(0.5, 0.5));
    EXPECT_EQ(layer.frame(), QRectF(20, 20, 40, 40));
    EXPECT_EQ(layer.toRoot(0).mapRect(layer.bounds()), QRectF(30, 40, 20, 20));
    const QImage seen = picture();
    EXPECT_EQ(seen.pixelColor(40, 21), QColor(Qt::red)); // the top edge stayed: 60 above the bottom
    EXPECT_EQ(seen.pixelColor(40, 41).alpha(), 0);
}

TEST_F(Layers, OpacityIsThatOfTheGroup) {
    Layer& group = root.add();
    group.setFrame({0, 0, 100, 80});
    addBox(group, {0, 0, 60, 80}, Qt::red);
    addBox(group, {40, 0, 60, 80}, Qt::blue);
    group.setValue(Property::Opacity, 0.5);
    const QColor overlap = picture().pixelColor(50, 40); // red doesn't shine through blue
    EXPECT_NEAR(overlap.alpha(), 128, 1);
    EXPECT_EQ(overlap.red(), 0);
    EXPECT_EQ(overlap.blue(), 255);
}

TEST_F(Layers, ARoundedClipCutsSublayersAndTheBorderStaysOnTop) {
    Layer& mount = root.add();
    mount.setFrame({10, 10, 60, 60});
    mount.setCornerRadius(20);
    mount.setMasksToBounds(true);
    mount.setBorder({1, Qt::white});
    addBox(mount, {-20, -20, 100, 100}, Qt::red);
    const QImage seen = picture();
    EXPECT_EQ(seen.pixelColor(40, 40), QColor(Qt::red));
    EXPECT_EQ(seen.pixelColor(11, 11).alpha(), 0);         // the corner
    EXPECT_EQ(seen.pixelColor(5, 40).alpha(), 0);          // beyond the edge
    EXPECT_EQ(seen.pixelColor(10, 40), QColor(Qt::white)); // the border
}

TEST_F(Layers, AnEvenOddMaskCutsItsInnerPathOut) {
    Layer& layer = addBox(root, {0, 0, 100, 80}, Qt::red);
    ShapeLayer& mask = layer.makeMask<ShapeLayer>();
    mask.setFrame(layer.bounds());
    QPainterPath path;
    path.setFillRule(Qt::OddEvenFill);
    path.addRect(-10, -10, 120, 100);
    path.addRect(20, 20, 30, 30);
    mask.setPath(path);
    const QImage seen = picture();
    EXPECT_EQ(seen.pixelColor(35, 45).alpha(), 0); // 35 above the bottom
    EXPECT_EQ(seen.pixelColor(35, 70), QColor(Qt::red));
    EXPECT_EQ(seen.pixelColor(60, 45), QColor(Qt::red));
}

TEST_F(Layers, InTheHoleOfItsMaskALayerPaintsNothingAndElsewhereTheSame) {
    Layer& layer = addBox(root, {5, 5, 90, 70}, QColor(200, 40, 60, 180));
    addShadow(layer, {0, 0, 90, 70}, 1, 3);
    ShapeLayer& mask = layer.makeMask<ShapeLayer>();
    mask.setFrame(layer.bounds());
    QPainterPath path;
    path.setFillRule(Qt::OddEvenFill);
    path.addRect(layer.bounds());
    path.addEllipse(QRectF(20, 10, 50, 50));
    mask.setPath(path);
    for (const double density : {1.0, 1.3, 3.0}) {
        const QImage whole = picture(density);
        layer.setMaskHole({30, 20, 30, 30});
        EXPECT_TRUE(picture(density) == whole) << density;
        layer.setMaskHole({});
    }
    layer.setMaskHole({0, 0, 40, 70});
    EXPECT_EQ(picture().pixelColor(8, 40).alpha(), 0);
    EXPECT_GT(picture().pixelColor(90, 40).alpha(), 150);
}

TEST_F(Layers, AShadowIsLeftOutWhereItIsHidden) {
    Layer& layer = addShadow(root, {20, 20, 60, 40}, 1, 4, {0, -4});
    const QImage whole = picture(2);
    Shadow shadow = layer.shadow();
    shadow.hidden = {5, 5, 50, 30};
    layer.setShadow(shadow);
    const QImage seen = picture(2);
    EXPECT_EQ(qAlpha(seen.pixel(100, 80)), 0);
    EXPECT_GT(qAlpha(whole.pixel(100, 80)), 240);
    for (int y = 0; y < seen.height(); ++y)
        for (int x = 0; x < seen.width(); ++x)
            if (!QRect(50, 50, 100, 60).contains(x, y)) {
                ASSERT_NEAR(qAlpha(seen.pixel(x, y)), qAlpha(whole.pixel(x, y)), 1) << x << ' ' << y;
            }
}

TEST_F(Layers, AShadowFallsByItsOffsetAndIsAGaussianOfItsRadius) {
    addShadow(root, {30, 20, 40, 40}, 1, 4, {0, -6});
    const QImage seen = picture();
    // The edge of a blurred half-plane is at half its strength; one sigma out it has 15.9 percent.
    const int below = 80 - (20 - 6); // the row of the moved lower edge
    EXPECT_NEAR(qAlpha(seen.pixel(50, below)) / 255.0, 0.5 - 0.05, 0.03);
    EXPECT_NEAR(qAlpha(seen.pixel(50, below + 4)) / 255.0, 0.5 * std::erfc(4.5 / 4 / std::sqrt(2)), 0.02);
    EXPECT_EQ(qAlpha(seen.pixel(50, below + 13)), 0);
    EXPECT_GT(qAlpha(seen.pixel(50, below - 20)), 250);
}

TEST_F(Layers, AWideShadowIsTheSameGaussianAsANarrowOne) {
    LayerWidget wide{QSize(400, 400)};
    addShadow(wide.host.root(), {150, 150, 100, 100}, 1, 20);
    QImage image(400, 400, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    wide.host.paint(painter, wide.rect());
    painter.end();
    const auto covered = [](double from, double to) { // of a unit Gaussian, between two edges
        return 0.5 * (std::erf(to / std::sqrt(2)) - std::erf(from / std::sqrt(2)));
    };
    for (int x = 100; x < 300; x += 7) {
        const double across = covered((150 - x - 0.5) / 20, (250 - x - 0.5) / 20);
        const double along = covered(-50.0 / 20, 50.0 / 20);
        EXPECT_NEAR(qAlpha(image.pixel(x, 200)) / 255.0, across * along, 0.012) << x;
    }
}

TEST_F(Layers, AShadowIsComputedAgainOnlyWhenItsPathOrRadiusChanges) {
    Layer& layer = addShadow(root, {30, 20, 40, 40}, 0.5, 3);
    picture();
    layer.setValue(Property::ShadowOpacity, 0.8);
    layer.setFrame({10, 10, 40, 40});
    picture();
    EXPECT_EQ(layer.shadowMask().computations(), 1);
    layer.setValue(Property::ShadowRadius, 7.0);
    picture();
    EXPECT_EQ(layer.shadowMask().computations(), 2);
}

TEST_F(Layers, AGradientRunsBetweenItsPoints) {
    GradientLayer& layer = root.add<GradientLayer>();
    layer.setFrame({0, 0, 100, 80});
    layer.setPoints({0.5, 1}, {0.5, 0.3});
    layer.setColors(QColor(255, 255, 255, 200), QColor(255, 255, 255, 0));
    const QImage seen = picture();
    EXPECT_NEAR(seen.pixelColor(50, 0).alpha(), 200, 4); // the top
    EXPECT_NEAR(seen.pixelColor(50, 28).alpha(), 100, 4);
    EXPECT_EQ(seen.pixelColor(50, 57).alpha(), 0); // gone at 30 percent of the height
}

TEST_F(Layers, AStrokeEndsPartOfTheWay) {
    ShapeLayer& line = addLine();
    line.setValue(Property::StrokeEnd, 0.5);
    const QImage seen = picture();
    EXPECT_GT(seen.pixelColor(49, 69).alpha(), 200);
    EXPECT_EQ(seen.pixelColor(53, 69).alpha(), 0);
    line.setValue(Property::StrokeEnd, 0.0);
    EXPECT_EQ(picture().pixelColor(10, 69).alpha(), 0);
}

TEST_F(Layers, SmallContentsAreAveragedNotSampled) {
    QImage stripes(64, 64, QImage::Format_ARGB32_Premultiplied);
    stripes.fill(Qt::white);
    for (int x = 0; x < 64; x += 4) {
        QPainter(&stripes).fillRect(x, 0, 1, 64, Qt::black);
    }
    Layer& layer = root.add();
    layer.setFrame({0, 0, 8, 8});
    layer.setContents(stripes);
    const QImage seen = picture();
    for (int x = 0; x < 8; ++x)
        EXPECT_NEAR(seen.pixelColor(x, 75).red(), 191, 6);
}

} // namespace marrowfin::chrome
