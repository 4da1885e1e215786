// Widgets that come and go: alpha and displacement of a whole subtree, and nothing left over at rest.
#include "base/Shared.h"
#include "chrome/Place.h"
#include "chrome/Rise.h"
#include "platform/fake/FakeDesktop.h"

#include <QLabel>
#include <QPainter>
#include <cmath>
#include <gtest/gtest.h>

namespace marrowfin::chrome {

namespace {
class Plate : public QWidget {
public:
    using QWidget::QWidget;

protected:
    void paintEvent(QPaintEvent*) override { QPainter(this).fillRect(rect(), Qt::red); }
};

class Poses : public testing::Test {
protected:
    Poses() : plate(&window) {
        AnimationClock::shared().hold();
        window.resize(100, 80);
        place(plate, {20, 10, 40, 20});
    }
    ~Poses() override { SharedObjects::destroyAll(); }
    QImage picture() { return window.grab().toImage(); }
    void pass(double seconds) { AnimationClock::shared().advance(seconds); }

    fake::FakeDesktop desktop;
    QWidget window;
    Plate plate;
};
} // namespace

TEST_F(Poses, AFrameIsPlacedFromTheBottomLeft) {
    EXPECT_EQ(plate.geometry(), QRect(20, 50, 40, 20));
    EXPECT_EQ(placed(plate), QRectF(20, 10, 40, 20));
}

TEST_F(Poses, APoseMovesAndFadesTheWholeSubtree) {
    QLabel inside(&plate);
    inside.setGeometry(0, 0, 5, 5);
    inside.setAutoFillBackground(true);
    QPalette blue;
    blue.setColor(QPalette::Window, Qt::blue);
    inside.setPalette(blue);
    PoseEffect& effect = *new PoseEffect(plate, 10);
    window.setStyleSheet(QString());
    const QColor background = picture().pixelColor(5, 5);
    effect.setPose({{0, 7}, 0.5});
    const QImage seen = picture();
    EXPECT_EQ(seen.pixelColor(40, 42), picture().pixelColor(40, 42));
    EXPECT_NEAR(seen.pixelColor(40, 45).red(), (255 + background.red()) / 2, 2); // 7 up
    EXPECT_NEAR(seen.pixelColor(22, 45).blue(), (255 + background.blue()) / 2, 2);
    EXPECT_EQ(seen.pixelColor(40, 66), background);
    effect.setPose({{0, 7}, 0});
    EXPECT_EQ(picture().pixelColor(40, 45), background);
}

TEST_F(Poses, AtRestThereIsNoEffect) {
    PoseEffect& effect = *new PoseEffect(plate, 10);
    EXPECT_FALSE(effect.isEnabled());
    effect.setPose({{0, 3}, 1});
    EXPECT_TRUE(effect.isEnabled());
    effect.setPose({});
    EXPECT_FALSE(effect.isEnabled());
    EXPECT_EQ(picture().pixelColor(40, 60), QColor(Qt::red));
}

TEST_F(Poses, ARiseComesUpOnItsSpringAndRests) {
    Rise rise(plate, 7, -7);
    EXPECT_EQ(rise.alpha(), 0);
    EXPECT_EQ(rise.offset(), -7);
    rise.setShown(true, Motion::Full);
    for (int frame = 1; frame <= 30; ++frame) {
        pass(1 / 60.0);
        const double t = frame / 60.0;
        const double w = std::sqrt(420.0 - 13 * 13);
        const double x = std::exp(-13 * t) * (std::cos(w * t) + 13 / w * std::sin(w * t));
        EXPECT_NEAR(rise.offset(), -7 * x, 1e-6);
    }
    EXPECT_EQ(rise.alpha(), 1);
    pass(1);
    EXPECT_EQ(rise.offset(), 0);
    EXPECT_FALSE(plate.graphicsEffect()->isEnabled());
    EXPECT_FALSE(AnimationClock::shared().isRunning());
}

TEST_F(Poses, HidingSinksAndFadesAndThenPaintsNothing) {
    Rise rise(plate, 7, -7);
    rise.setShown(true, Motion::Full);
    pass(2);
    rise.setShown(false, Motion::Full);
    pass(0.1);
    EXPECT_LT(rise.offset(), -1);
    EXPECT_GT(rise.offset(), -7);
    EXPECT_LT(rise.alpha(), 0.5);
    pass(0.1);
    EXPECT_EQ(rise.alpha(), 0);
    EXPECT_EQ(rise.offset(), -7);
    EXPECT_FALSE(AnimationClock::shared().isRunning());
}

TEST_F(Poses, AReversalGoesOnFromWhereTheViewStands) {
    Rise rise(plate, 7, -7);
    rise.setShown(true, Motion::Full);
    pass(0.06);
    const double offset = rise.offset();
    const double alpha = rise.alpha();
    ASSERT_LT(offset, -1);
    rise.setShown(false, Motion::Full);
    EXPECT_EQ(rise.offset(), offset);
    EXPECT_EQ(rise.alpha(), alpha);
    pass(0.03);
    const double sinking = rise.offset();
    rise.setShown(true, Motion::Full);
    EXPECT_EQ(rise.offset(), sinking);
}

TEST_F(Poses, WithReducedMotionOnlyTheAlphaMoves) {
    Rise rise(plate, 6, 0);
    rise.setShown(true, Motion::Reduced);
    EXPECT_EQ(rise.offset(), 0);
    pass(0.08);
    EXPECT_EQ(rise.offset(), 0);
    EXPECT_GT(rise.alpha(), 0.2);
    EXPECT_LT(rise.alpha(), 0.8);
    pass(0.1);
    EXPECT_EQ(rise.alpha(), 1);
}

} // namespace marrowfin::chrome
