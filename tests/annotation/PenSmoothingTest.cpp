// From a shaky hand to a calm curve.
#include "annotation/PenSmoothing.h"
#include "annotation/HitTesting.h"
#include "base/Geometry.h"

#include <QPolygonF>
#include <cmath>
#include <gtest/gtest.h>
#include <numbers>
#include <random>

using namespace marrowfin;
using namespace annotation;

namespace {

// Along a wave, each point shaken by up to two points.
QList<QPointF> shaky(int count, unsigned seed = 1) {
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> shake(-2, 2);
    QList<QPointF> points;
    for (int i = 0; i < count; ++i)
        points.append({20 + i * 3.0 + shake(random), 100 + 40 * std::sin(i / 12.0) + shake(random)});
    return points;
}

double totalTurning(const QList<QPointF>& points) {
    double sum = 0;
    for (qsizetype i = 2; i < points.size(); ++i) {
        const QPointF a = points[i - 1] - points[i - 2];
        const QPointF b = points[i] - points[i - 1];
        sum += std::abs(std::atan2(a.x() * b.y() - a.y() * b.x(), QPointF::dotProduct(a, b)));
    }
    return sum;
}

double distanceToPolyline(const QPointF& point, const QList<QPointF>& line) {
    double nearest = 1e9;
    for (qsizetype i = 1; i < line.size(); ++i)
        nearest = std::min(nearest, distanceToSegment(point, line[i - 1], line[i]));
    return nearest;
}

QList<QPointF> asDrawn(const QPainterPath& path) {
    return path.toSubpathPolygons().value(0);
}

} // namespace

TEST(PenSmoothing, calmsAShakyHandAndStaysWithIt) {
    for (unsigned seed = 1; seed <= 20; ++seed) {
        const QList<QPointF> raw = shaky(80, seed);
        const QList<QPointF> drawn = asDrawn(smoothedPath(raw));
        EXPECT_LT(totalTurning(drawn), 0.35 * totalTurning(raw)) << "seed " << seed;
        for (const QPointF& point : drawn)
            EXPECT_LT(distanceToPolyline(point, raw), 4.5) << "seed " << seed;
        EXPECT_LE(distance(drawn.first(), raw.first()), 0.5);
        EXPECT_LE(distance(drawn.last(), raw.last()), 0.5);
    }
}

TEST(PenSmoothing, resamplesAtEqualStepsAndKeepsTheLastPoint) {
    const QList<QPointF> even = resampled({{0, 0}, {3, 0}, {3, 4}}, 2);
    EXPECT_EQ(even, (QList<QPointF>{{0, 0}, {2, 0}, {3, 1}, {3, 3}, {3, 4}}));
    EXPECT_EQ(resampled({{0, 0}, {4, 0}}, 2), (QList<QPointF>{{0, 0}, {2, 0}, {4, 0}}));
    EXPECT_EQ(resampled({{0, 0}, {0, 0}, {0, 0}}, 2), (QList<QPointF>{{0, 0}}));
    EXPECT_EQ(resampled({{0, 0}, {1, 0}, {1, 0}, {2.5, 0}}, 2), (QList<QPointF>{{0, 0}, {2, 0}, {2.5, 0}}));
}

TEST(PenSmoothing, leavesFewPointsAsTheyAre) {
    EXPECT_EQ(smoothedPoints({{1, 1}, {50, 3}}), (QList<QPointF>{{1, 1}, {50, 3}}));
    EXPECT_EQ(smoothedPoints({{0, 0}, {3, 0}, {5, 0}}), (QList<QPointF>{{0, 0}, {2, 0}, {4, 0}, {5, 0}}));
}

TEST(PenSmoothing, averagesTwiceOverAtMostSevenPoints) {
    QList<QPointF> line;
    for (int i = 0; i <= 40; ++i)
        line.append({2.0 * i, 0});
    const QList<QPointF> smooth = smoothedPoints(line);
    ASSERT_EQ(smooth.size(), 41);
    EXPECT_EQ(smooth.first(), line.first());
    EXPECT_EQ(smooth.last(), line.last());
    EXPECT_EQ(smooth[20], line[20]); // the middle of a straight line doesn't move
    // Point 1 is the mean of points 0 to 4, twice: first pass gives 4, 5, 6, 8 ... at 1, 2, 3, 4.
    EXPECT_NEAR(smooth[1].x(), (0 + 4 + 5 + 6 + 8) / 5.0, 1e-12);
}

TEST(PenSmoothing, theCurveIsOfCubicsAlone) {
    const QPainterPath two = smoothedPath({{0, 0}, {30, 60}});
    ASSERT_EQ(two.elementCount(), 4);
    EXPECT_EQ(two.elementAt(0).type, QPainterPath::MoveToElement);
    EXPECT_EQ(two.elementAt(1).type, QPainterPath::CurveToElement);
    EXPECT_EQ(QPointF(two.elementAt(1)), QPointF(5, 10)); // on the chord
    EXPECT_EQ(QPointF(two.elementAt(2)), QPointF(25, 50));
    EXPECT_EQ(QPointF(two.elementAt(3)), QPointF(30, 60));

    const QPainterPath many = smoothedPath(shaky(40));
    for (int i = 1; i < many.elementCount(); ++i)
        EXPECT_NE(many.elementAt(i).type, QPainterPath::LineToElement);
    EXPECT_TRUE(smoothedPath({{5, 5}}).isEmpty());
    EXPECT_TRUE(smoothedPath({}).isEmpty());
}

TEST(PenSmoothing, theSplinePassesThroughItsPoints) {
    const QList<QPointF> points{{0, 0}, {10, 0}, {10, 10}, {20, 30}};
    const QPainterPath path = curveThrough(points);
    ASSERT_EQ(path.elementCount(), 10);
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(QPointF(path.elementAt(3 * i + 3)), points[i + 1]);
    EXPECT_EQ(QPointF(path.elementAt(4)), points[1] + (points[2] - points[0]) / 6);
    EXPECT_EQ(QPointF(path.elementAt(5)), points[2] - (points[3] - points[1]) / 6);
}

TEST(PenSmoothing, pointsThatNoHandGivesEndSomewhere) {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    const double notANumber = std::nan("");
    EXPECT_EQ(smoothedPoints({{0, 0}, {infinity, 0}, {5, 5}}).size(), 3);
    EXPECT_EQ(smoothedPoints({{0, 0}, {notANumber, 0}, {5, 5}}).size(), 3);
    EXPECT_EQ(smoothedPoints({{0, 0}, {1e12, 0}, {-1e12, 5}}).size(), 3);
}
