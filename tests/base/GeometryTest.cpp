#include "base/Geometry.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <vector>

using namespace marrowfin;

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

// Any rectangles, sides of either sign, on a grid that doubles hold exactly.
std::vector<QRectF> anyRects(int count) {
    std::mt19937 random(3);
    const auto number = [&random] { return (static_cast<int>(random() % 401) - 200) / 4.0; };
    std::vector<QRectF> rects;
    for (int i = 0; i < count; ++i)
        rects.emplace_back(number(), number(), number(), number());
    return rects;
}

} // namespace

TEST(Geometry, containmentIsHalfOpen) {
    const QRectF rect(10, 20, 30, 40);
    EXPECT_TRUE(contains(rect, {10, 20}));
    EXPECT_TRUE(contains(rect, {39.999, 59.999}));
    EXPECT_FALSE(contains(rect, {40, 30}));
    EXPECT_FALSE(contains(rect, {15, 60}));
    EXPECT_FALSE(contains(rect, {9.999, 30}));
    EXPECT_FALSE(contains(rect, {notANumber, 30}));
}

TEST(Geometry, anEmptyRectangleContainsNothing) {
    EXPECT_FALSE(contains({10, 20, 0, 40}, {10, 30}));
    EXPECT_FALSE(contains({}, {0, 0}));
}

TEST(Geometry, negativeSidesMeanTheSameArea) {
    const QRectF inverted(40, 60, -30, -40);
    EXPECT_EQ(standardized(inverted), QRectF(10, 20, 30, 40));
    EXPECT_TRUE(contains(inverted, {10, 20}));
    EXPECT_FALSE(contains(inverted, {40, 60}));
    EXPECT_EQ(inset(inverted, 1, 2), QRectF(11, 22, 28, 36));
    EXPECT_EQ(offset(inverted, 1, 2), QRectF(11, 22, 30, 40));
    EXPECT_EQ(unionOf(inverted, {0, 0, 1, 1}), QRectF(0, 0, 40, 60));
    EXPECT_EQ(integral({2.5, 2.5, -1, -1}), QRectF(1, 1, 2, 2));
}

TEST(Geometry, everyAnswerIsThatOfTheStandardisedRectangle) {
    for (const QRectF& rect : anyRects(300)) {
        const QRectF same = standardized(rect);
        EXPECT_GE(same.width(), 0);
        EXPECT_GE(same.height(), 0);
        EXPECT_EQ(minX(rect), minX(same));
        EXPECT_EQ(maxX(rect), maxX(same));
        EXPECT_EQ(minY(rect), minY(same));
        EXPECT_EQ(maxY(rect), maxY(same));
        EXPECT_EQ(center(rect), center(same));
        EXPECT_EQ(integral(rect), integral(same));
        EXPECT_EQ(isEmpty(rect), isEmpty(same));
    }
}

TEST(Geometry, edgesAndMiddles) {
    const QRectF rect(10, 20, 30, 40);
    EXPECT_EQ(minX(rect), 10);
    EXPECT_EQ(midX(rect), 25);
    EXPECT_EQ(maxX(rect), 40);
    EXPECT_EQ(minY(rect), 20);
    EXPECT_EQ(midY(rect), 40);
    EXPECT_EQ(maxY(rect), 60);
    EXPECT_EQ(center(rect), QPointF(25, 40));
}

TEST(Geometry, emptyIsASideOfZero) {
    EXPECT_TRUE(isEmpty({}));
    EXPECT_TRUE(isEmpty({1, 1, 0, 5}));
    EXPECT_TRUE(isEmpty({1, 1, 5, 0}));
    EXPECT_FALSE(isEmpty({1, 1, -5, 5}));
}

TEST(Geometry, aRectangleHoldsAnotherWithSharedEdges) {
    EXPECT_TRUE(containsRect({0, 0, 10, 10}, {0, 0, 10, 10}));
    EXPECT_TRUE(containsRect({0, 0, 10, 10}, {10, 10, -10, -10}));
    EXPECT_FALSE(containsRect({0, 0, 10, 10}, {0, 0, 10, 10.5}));
    EXPECT_FALSE(containsRect({0, 0, 10, 10}, {-0.5, 0, 5, 5}));
}

TEST(Geometry, touchingIsNotApart) {
    EXPECT_EQ(intersection({0, 0, 10, 10}, {5, 6, 10, 10}), QRectF(5, 6, 5, 4));
    EXPECT_EQ(intersection({0, 0, 10, 10}, {10, 0, 5, 10}), QRectF(10, 0, 0, 10));
    EXPECT_EQ(intersection({0, 0, 10, 10}, {10.25, 0, 5, 10}), std::nullopt);
    EXPECT_EQ(intersection({0, 0, 10, 10}, {notANumber, 0, 5, 10}), std::nullopt);
}

TEST(Geometry, intersectionAndUnionBelongTogether) {
    const std::vector<QRectF> rects = anyRects(60);
    for (const QRectF& a : rects)
        for (const QRectF& b : rects) {
            const QRectF whole = unionOf(a, b);
            EXPECT_TRUE(containsRect(whole, a) && containsRect(whole, b));
            const std::optional<QRectF> common = intersection(a, b);
            EXPECT_EQ(common, intersection(b, a));
            if (common) {
                EXPECT_TRUE(containsRect(a, *common) && containsRect(b, *common));
            }
        }
}

TEST(Geometry, insetToNothingIsTheNullRectangle) {
    EXPECT_EQ(inset({0, 0, 10, 10}, 2, 3), QRectF(2, 3, 6, 4));
    EXPECT_EQ(inset({0, 0, 10, 10}, -2, -3), QRectF(-2, -3, 14, 16));
    EXPECT_EQ(inset({0, 0, 10, 10}, 5, 1), QRectF(5, 1, 0, 8));
    EXPECT_EQ(inset({4, 4, 10, 10}, 5.5, 1), QRectF());
}

TEST(Geometry, integralRoundsOutwards) {
    EXPECT_EQ(integral({0.2, -0.2, 1.0, 1.0}), QRectF(0, -1, 2, 2));
    EXPECT_EQ(integral({1, 2, 3, 4}), QRectF(1, 2, 3, 4));
    for (const QRectF& rect : anyRects(200)) {
        const QRectF whole = integral(rect);
        EXPECT_TRUE(containsRect(whole, rect));
        EXPECT_LT(whole.width() - standardized(rect).width(), 2);
        EXPECT_EQ(whole.x(), std::floor(whole.x()));
        EXPECT_EQ(whole.width(), std::floor(whole.width()));
    }
}

TEST(Geometry, cornersInAnyOrder) {
    for (const QPointF& a : {QPointF(1, 2), QPointF(1, 8), QPointF(5, 2), QPointF(5, 8)})
        EXPECT_EQ(rectBetween(a, QPointF(6 - a.x(), 10 - a.y())), QRectF(1, 2, 4, 6));
    EXPECT_EQ(distance({1, 2}, {4, 6}), 5);
}

TEST(Geometry, roundsHalvesAwayFromZero) {
    EXPECT_EQ(rounded(0.5), 1);
    EXPECT_EQ(rounded(-0.5), -1);
    EXPECT_EQ(rounded(2.5), 3);
    EXPECT_EQ(roundedToInt(2.5), 3);
    EXPECT_EQ(roundedToInt(-2.5), -3);
    EXPECT_EQ(roundedToInt(0.49999999999999994), 0);
}

TEST(Geometry, integersSaturate) {
    EXPECT_EQ(roundedToInt(1e20), std::numeric_limits<int>::max());
    EXPECT_EQ(roundedToInt(-infinity), std::numeric_limits<int>::min());
    EXPECT_EQ(roundedToInt(notANumber), 0);
}

TEST(Geometry, finiteness) {
    EXPECT_TRUE(isFinite(QRectF(1, 2, -3, 4)));
    EXPECT_TRUE(isFinite(QPointF(1, 2)));
    EXPECT_FALSE(isFinite(QPointF(1, infinity)));
    EXPECT_FALSE(isFinite(QRectF(notANumber, 2, 3, 4)));
    EXPECT_FALSE(isFinite(QRectF(1, 2, infinity, 4)));
    EXPECT_FALSE(isFinite(QRectF(1, 2, 3, -infinity)));
}
