// What a tree of layers looks like, what it paints again, and when it asks to be woken.
#include "base/Shared.h"
#include "chrome/AnimationClock.h"
#include "chrome/GradientLayer.h"
#include "chrome/LayerHost.h"
#include "chrome/ShapeLayer.h"

#include <QCoreApplication>
#include <QPaintEvent>
#include <QPainter>
#include <QWidget>
#include <gtest/gtest.h>

namespace marrowfin::chrome {

namespace {
class LayerWidget : public QWidget {
public:
    explicit LayerWidget(QSize size) : host(*this) {
        setAttribute(Qt::WA_TranslucentBackground);
        resize(size);
        host.setSize(size);
    }
    LayerHost host;
    QRegion painted;
    int paints = 0;

protected:
    void paintEvent(QPaintEvent* event) override {
        painted |= event->region();
        ++paints;
        QPainter painter(this);
        host.paint(painter, event->rect());
    }
};

class Layers : public testing::Test {
protected:
    Layers() { AnimationClock::shared().hold(); }
    ~Layers() override { SharedObjects::destroyAll(); }

    QImage picture(double density = 1) {
        QImage image((QSizeF(widget.size()) * density).toSize(), QImage::Format_ARGB32_Premultiplied);
        image.setDevicePixelRatio(density);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        widget.host.paint(painter, widget.rect());
        return image;
    }
    // Shows the widget and forgets what was painted so far.
    void settle() {
        widget.show();
        QCoreApplication::processEvents();
        widget.painted = QRegion();
        widget.paints = 0;
    }
    void pass(double seconds) {
        AnimationClock::shared().advance(seconds);
        QCoreApplication::processEvents();
    }
    static QImage solid(int width, int height, const QColor& color) {
        QImage image(width, height, QImage::Format_ARGB32_Premultiplied);
        image.fill(color);
        return image;
    }
    static Layer& addBox(Layer& to, const QRectF& frame, const QColor& color) {
        Layer& box = to.add();
        box.setFrame(frame);
        box.setValue(Property::BackgroundColor, color);
        return box;
    }
    // From 10 to 90 across, 10 above the bottom.
    ShapeLayer& addLine() {
        ShapeLayer& line = root.add<ShapeLayer>();
        line.setFrame({0, 0, 100, 80});
        QPainterPath path(QPointF(10, 10));
        path.lineTo(90, 10);
        line.setPath(path);
        line.setFillColor(std::nullopt);
        line.setStrokeColor(Qt::red);
        line.setLine(2, Qt::RoundCap);
        return line;
    }
    static void drain(ShapeLayer& line, double seconds) {
        line.setValue(Property::StrokeEnd, 0.0);
        line.addAnimation(QStringLiteral("drain"),
                          Animation::basic(Property::StrokeEnd, 1.0, 0.0, seconds, TimingFunction::linear()));
    }
    // A layer that is nothing but its shadow.
    static Layer& addShadow(Layer& to, const QRectF& frame, double opacity, double radius,
                            const QPointF& offset = {}) {
        Layer& layer = to.add();
        layer.setFrame(frame);
        Shadow shadow;
        shadow.opacity = opacity;
        shadow.radius = radius;
        shadow.offset = offset;
        shadow.path.addRect(layer.bounds());
        layer.setShadow(shadow);
        return layer;
    }

    LayerWidget widget{QSize(100, 80)};
    Layer& root = widget.host.root();
};
} // namespace

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
