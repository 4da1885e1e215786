#include "base/Clock.h"

#include <gtest/gtest.h>

using namespace marrowfin;

TEST(Clock, tellsTheTimeOfDayInUtc) {
    const QDateTime before = QDateTime::currentDateTimeUtc();
    const QDateTime now = Clock::now();
    EXPECT_EQ(now.timeSpec(), Qt::UTC);
    EXPECT_GE(now, before);
    EXPECT_LE(now, QDateTime::currentDateTimeUtc());
}

TEST(Clock, saysWhatATestWantsUntilReset) {
    const QDateTime then = QDateTime::fromSecsSinceEpoch(1700000000, Qt::UTC);
    Clock::setNow([then] { return then; });
    EXPECT_EQ(Clock::now(), then);
    Clock::reset();
    EXPECT_NE(Clock::now(), then);
}

TEST(Clock, theOtherClockNeverGoesBack) {
    double last = Clock::monotonicSeconds();
    for (int i = 0; i < 1000; ++i) {
        const double next = Clock::monotonicSeconds();
        EXPECT_GE(next, last);
        last = next;
    }
}
