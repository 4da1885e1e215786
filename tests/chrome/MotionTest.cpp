// Springs, timing functions and animated values against independent computations.
#include "chrome/Animation.h"
#include "chrome/Paths.h"

#include <cmath>
#include <gtest/gtest.h>

namespace marrowfin::chrome {

namespace {
// The oscillator's equation integrated step by step (Runge-Kutta), as a check on the closed form.
double integrated(const Spring& spring, double seconds) {
    const int steps = std::max(1, static_cast<int>(seconds * 2000));
    const double h = seconds / steps;
    double x = 1;
    double v = 0;
    const auto acceleration = [&](double at, double speed) {
        return (-spring.stiffness * at - spring.damping * speed) / spring.mass;
    };
    for (int i = 0; i < steps; ++i) {
        const double k1x = v, k1v = acceleration(x, v);
        const double k2x = v + h / 2 * k1v, k2v = acceleration(x + h / 2 * k1x, v + h / 2 * k1v);
        const double k3x = v + h / 2 * k2v, k3v = acceleration(x + h / 2 * k2x, v + h / 2 * k2v);
        const double k4x = v + h * k3v, k4v = acceleration(x + h * k3x, v + h * k3v);
        x += h / 6 * (k1x + 2 * k2x + 2 * k3x + k4x);
        v += h / 6 * (k1v + 2 * k2v + 2 * k3v + k4v);
    }
    return 1 - x;
}
} // namespace

class SpringOf : public testing::TestWithParam<Spring> {};
INSTANTIATE_TEST_SUITE_P(Springs, SpringOf,
                         testing::Values(Spring{1, 340, 26}, Spring{1, 380, 28}, Spring{1, 420, 26},
                                         Spring{2, 50, 20},  // critically damped
                                         Spring{1, 40, 30},  // overdamped
                                         Spring{3, 90, 4})); // swings long

TEST_P(SpringOf, FollowsTheOscillator) {
    for (int frame = 0; frame <= 90; ++frame)
        EXPECT_NEAR(GetParam().progress(frame / 60.0), integrated(GetParam(), frame / 60.0), 1e-6);
}

TEST_P(SpringOf, HasSettledAfterItsDuration) {
    const double duration = GetParam().settlingDuration();
    for (double t = duration * 1.02; t < duration * 3; t += duration / 50)
        EXPECT_LT(std::fabs(1 - GetParam().progress(t)), 0.008);
}

TEST(Springs, SettleByTheirEnvelope) {
    EXPECT_NEAR((Spring{1, 340, 26}).settlingDuration(), std::log(1000) * 2 / 26, 1e-12);
    EXPECT_NEAR((Spring{2, 420, 26}).settlingDuration(), std::log(1000) * 4 / 26, 1e-12);
    // Overdamped 40/30: rates 1.41 and 28.6; the slow one decides.
    EXPECT_NEAR((Spring{1, 40, 30}).settlingDuration(), std::log(1000) / (15 - std::sqrt(185)), 1e-9);
}

TEST(Springs, AVeryStiffOverdampedOneStaysFinite) {
    const double late = Spring{1, 1, 5000}.progress(60);
    EXPECT_TRUE(std::isfinite(late));
    EXPECT_NEAR(late, 1 - std::exp(-60 / 5000.0), 1e-6);
}

TEST(Timing, EndsAreExactAndTheCurvesAreTheirCubics) {
    for (const TimingFunction timing : {TimingFunction::linear(), TimingFunction::easeIn(),
                                        TimingFunction::easeOut(), TimingFunction::easeInEaseOut()}) {
        EXPECT_EQ(timing.progress(-1), 0);
        EXPECT_EQ(timing.progress(0), 0);
        EXPECT_EQ(timing.progress(1), 1);
        EXPECT_EQ(timing.progress(7), 1);
        EXPECT_EQ(timing.progress(std::nan("")), 0);
    }
    EXPECT_EQ(TimingFunction::linear().progress(0.3), 0.3);
    // At parameter t: x = 3(1-t)²t·x1 + 3(1-t)t²·x2 + t³, and y likewise.
    for (double t = 0.1; t < 1; t += 0.2) {
        const double s = 1 - t;
        const double x = 3 * s * s * t * 0.42 + 3 * s * t * t * 0.58 + t * t * t;
        EXPECT_NEAR(TimingFunction::easeInEaseOut().progress(x), 3 * s * t * t + t * t * t, 1e-9);
        const double in = 3 * s * s * t * 0.42 + 3 * s * t * t + t * t * t;
        EXPECT_NEAR(TimingFunction::easeIn().progress(in), 3 * s * t * t + t * t * t, 1e-9);
    }
}

TEST(Animations, HaveNoSayBeforeTheyBeginUnlessTheyFillBackwards) {
    Animation fade = Animation::basic(Property::Opacity, 0.2, 1.0, 2, TimingFunction::linear());
    fade.beginTime = 10;
    EXPECT_FALSE(fade.valueAt(9.9));
    fade.fillMode = FillMode::Backwards;
    EXPECT_EQ(std::get<double>(*fade.valueAt(9.9)), 0.2);
    EXPECT_NEAR(std::get<double>(*fade.valueAt(11)), 0.6, 1e-12);
    EXPECT_FALSE(fade.valueAt(12));
}

TEST(Animations, AColourOutOfNothingKeepsItsHue) {
    const Value half = mix(Value(QColor(Qt::transparent)), Value(QColor(200, 100, 0, 100)), 0.5);
    const QColor color = std::get<QColor>(half);
    EXPECT_NEAR(color.alpha(), 50, 1);
    EXPECT_NEAR(color.red(), 200, 1);
    EXPECT_NEAR(color.green(), 100, 1);
}

TEST(Paths, AContinuousCornerMeetsTheCircleInItsMiddleAndLeavesTheEdgeEarlier) {
    const QRectF rect(0, 0, 200, 100);
    const QPainterPath circular = roundedRect(rect, 20);
    const QPainterPath continuous = roundedRect(rect, 20, CornerCurve::Continuous);
    const double middle = 20 * (1 - std::sqrt(0.5));
    EXPECT_TRUE(continuous.contains(QPointF(middle + 0.1, middle + 0.1)));
    EXPECT_FALSE(continuous.contains(QPointF(middle - 0.1, middle - 0.1)));
    EXPECT_TRUE(circular.contains(QPointF(22, 0.05)));
    EXPECT_FALSE(continuous.contains(QPointF(21, 0.05)));
}

TEST(Paths, APillIsTheSameOnEitherCurve) {
    EXPECT_EQ(roundedRect({0, 0, 100, 34}, 17, CornerCurve::Continuous), roundedRect({0, 0, 100, 34}, 17));
    EXPECT_EQ(roundedRect({0, 0, 100, 34}, 99), roundedRect({0, 0, 100, 34}, 17));
}

} // namespace marrowfin::chrome
