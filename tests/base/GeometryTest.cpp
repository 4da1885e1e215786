#include "base/Geometry.h"

#include <gtest/gtest.h>

using namespace marrowfin;

TEST(Geometry, containmentIsHalfOpen) {
    const QRectF rect(10, 20, 30, 40);
    EXPECT_TRUE(contains(rect, {10, 20}));
    EXPECT_TRUE(contains(rect, {39.999, 59.999}));
    EXPECT_FALSE(contains(rect, {40, 30}));
    EXPECT_FALSE(contains(rect, {15, 60}));
}

TEST(Geometry, integralRoundsOutwards) {
    EXPECT_EQ(integral({0.2, -0.2, 1.0, 1.0}), QRectF(0, -1, 2, 2));
    EXPECT_EQ(integral({1, 2, 3, 4}), QRectF(1, 2, 3, 4));
}
