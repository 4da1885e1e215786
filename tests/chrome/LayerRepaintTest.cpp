// How layers move, what a tree of them paints again, and when it asks to be woken.
#include "chrome/LayersFixture.h"

namespace marrowfin::chrome {

TEST_F(Layers, AnAnimationMovesWhatIsPresentedAndLeavesTheValue) {
    Layer& layer = root.add();
    layer.addAnimation(QStringLiteral("fade"),
                       Animation::basic(Property::Opacity, 0.0, 0.8, 1, TimingFunction::linear()));
    EXPECT_EQ(layer.opacity(), 1);
    pass(0.5);
    EXPECT_NEAR(std::get<double>(layer.presented(Property::Opacity)), 0.4, 1e-6);
    ASSERT_NE(layer.animation(QStringLiteral("fade")), nullptr);
    pass(0.6);
    EXPECT_EQ(std::get<double>(layer.presented(Property::Opacity)), 1);
    EXPECT_EQ(layer.animation(QStringLiteral("fade")), nullptr);
    EXPECT_FALSE(AnimationClock::shared().isRunning()); // nothing moves, nothing wakes
}

TEST_F(Layers, ASpringOnALayerFollowsTheOscillator) {
    Layer& layer = root.add();
    const Spring spring{1, 380, 28};
    layer.addAnimation(
        QStringLiteral("spring"),
        Animation::spring(Property::Transform, QTransform::fromScale(0.94, 0.94), QTransform(), spring));
    for (int frame = 1; frame <= 20; ++frame) {
        AnimationClock::shared().advance(1 / 60.0);
        const double t = frame / 60.0;
        const double w = std::sqrt(380.0 - 14 * 14);
        const double x = std::exp(-14 * t) * (std::cos(w * t) + 14 / w * std::sin(w * t));
        EXPECT_NEAR(std::get<QTransform>(layer.presented(Property::Transform)).m11(), 1 - 0.06 * x, 1e-6);
    }
}

TEST_F(Layers, AReversalStartsWhereTheLayerStands) {
    Layer& layer = root.add();
    const QString key = QStringLiteral("move");
    layer.setValue(Property::Opacity, 1.0);
    layer.addAnimation(key, Animation::spring(Property::Opacity, 0.0, 1.0, {1, 420, 26}));
    pass(0.05);
    const Value standing = layer.presented(Property::Opacity);
    layer.setValue(Property::Opacity, 0.0);
    layer.addAnimation(key,
                       Animation::basic(Property::Opacity, standing, 0.0, 0.14, TimingFunction::easeIn()));
    EXPECT_EQ(std::get<double>(layer.presented(Property::Opacity)), std::get<double>(standing));
    AnimationClock::shared().advance(0.001);
    EXPECT_NEAR(std::get<double>(layer.presented(Property::Opacity)), std::get<double>(standing), 0.001);
}

TEST_F(Layers, OnlyWhatMovedIsPaintedAgain) {
    addBox(root, {60, 40, 30, 30}, Qt::blue);
    Layer& moving = addBox(root, {10, 10, 10, 10}, Qt::red);
    settle();
    moving.setFrame({30, 10, 10, 10});
    QCoreApplication::processEvents();
    EXPECT_TRUE(widget.painted.contains(QPoint(15, 65)));
    EXPECT_TRUE(widget.painted.contains(QPoint(35, 65)));
    EXPECT_FALSE(widget.painted.intersects(QRect(60, 10, 30, 30)));
    EXPECT_FALSE(widget.painted.intersects(QRect(0, 0, 100, 55)));
}

TEST_F(Layers, ALayerThatItsParentMovedIsCleanedUpWhereItReallyWas) {
    Layer& parent = root.add();
    parent.setFrame({0, 0, 20, 20});
    Layer& child = addBox(parent, {0, 0, 5, 5}, Qt::red);
    settle();
    parent.setFrame({60, 0, 20, 20});
    settle();
    child.setFrame({10, 10, 5, 5});
    QCoreApplication::processEvents();
    EXPECT_TRUE(widget.painted.contains(QRect(60, 75, 5, 5)));
    EXPECT_TRUE(widget.painted.contains(QRect(70, 65, 5, 5)));
    EXPECT_FALSE(widget.painted.contains(QPoint(2, 77)));
}

TEST_F(Layers, ASlowLineWakesOncePerPixelAndPaintsOnlyItsEnd) {
    ShapeLayer& line = addLine();
    drain(line, 40);
    pass(0.1);
    settle();
    for (int step = 0; step < 200; ++step)
        pass(0.05); // ten seconds: a quarter of 80 pixels
    EXPECT_GE(widget.paints, 19);
    EXPECT_LE(widget.paints, 21);
    const QRect touched = widget.painted.boundingRect();
    EXPECT_GE(touched.left(), 64); // from x = 70 to 90, with the round end
    EXPECT_GE(touched.top(), 64);
    EXPECT_LE(touched.height(), 10);
}

TEST_F(Layers, TheEndOfASlowLineLeavesNoTrail) {
    ShapeLayer& line = addLine();
    Layer& other = root.add();
    other.setFrame({10, 5, 60, 10}); // over a part of the line
    widget.show();
    QImage screen(widget.size(), QImage::Format_ARGB32_Premultiplied);
    screen.fill(Qt::transparent);
    drain(line, 3);
    for (int step = 0; step < 40; ++step) {
        widget.painted = QRegion();
        if (step % 3 == 1)
            other.setValue(Property::BackgroundColor, QColor(0, 0, step, 10));
        pass(0.045);
        // What a screen keeps: only the painted region is replaced.
        QPainter painter(&screen);
        painter.setClipRegion(widget.painted);
        painter.setCompositionMode(QPainter::CompositionMode_Clear);
        painter.fillRect(screen.rect(), Qt::transparent);
        painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
        widget.host.paint(painter, widget.painted.boundingRect());
    }
    const int end = 10 + static_cast<int>(80 * (1 - 40 * 0.045 / 3));
    for (int x = end + 5; x < 95; ++x)
        EXPECT_EQ(qRed(screen.pixel(x, 69)), 0) << x;
    EXPECT_GT(qRed(screen.pixel(end - 5, 69)), 200);
}

} // namespace marrowfin::chrome
