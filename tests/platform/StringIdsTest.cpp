#include "platform/StringIds.h"

#include <gtest/gtest.h>

using namespace marrowfin::platform;

TEST(StringIds, aNameKeepsItsNumberAndTwoNamesNeverShareOne) {
    StringIds ids;
    const std::uint32_t first = ids.idOf(QStringLiteral("{1a2b}"));
    const std::uint32_t second = ids.idOf(QStringLiteral("{1A2B}"));
    EXPECT_NE(first, 0u);
    EXPECT_NE(second, first);
    EXPECT_EQ(ids.idOf(QStringLiteral("{1a2b}")), first);
    EXPECT_EQ(ids.nameOf(first), QStringLiteral("{1a2b}"));
    EXPECT_EQ(ids.nameOf(second), QStringLiteral("{1A2B}"));
}

TEST(StringIds, zeroStandsForNone) {
    StringIds ids;
    EXPECT_EQ(ids.idOf(QString()), 0u);
    EXPECT_FALSE(ids.nameOf(0).has_value());
    EXPECT_FALSE(ids.nameOf(7).has_value());
}
