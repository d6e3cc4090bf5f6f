// SPDX-License-Identifier: Apache-2.0
// Tests of when frames are due.

#include <simulator/TickSchedule.h>

#include <gtest/gtest.h>

using simulator::TickSchedule;

namespace {

constexpr std::int64_t millisecond = 1000000;

} // namespace

TEST(TickSchedule, ErrorsDoNotAddUp)
{
    const TickSchedule schedule(1000, 60.0);
    EXPECT_EQ(schedule.due(0), 1000);
    EXPECT_EQ(schedule.due(1), 1000 + 16666667);
    EXPECT_EQ(schedule.due(60), 1000 + 1000 * millisecond);
    EXPECT_EQ(schedule.due(60 * 3600 * 24), 1000 + 86400LL * 1000 * millisecond) << "after a day";
}

TEST(TickSchedule, ATimelyReceiverMissesNothing)
{
    const TickSchedule schedule(0, 100.0);
    EXPECT_EQ(schedule.next(0, 3 * millisecond), 1);
    EXPECT_EQ(schedule.next(7, 79 * millisecond), 8);
}

TEST(TickSchedule, BeingLateByLessThanAFrameMissesNothing)
{
    const TickSchedule schedule(0, 100.0);
    EXPECT_EQ(schedule.next(0, 19 * millisecond), 1);
}

TEST(TickSchedule, TicksThatAreOverAreMissedNotMadeUpFor)
{
    const TickSchedule schedule(0, 100.0);
    EXPECT_EQ(schedule.next(0, 20 * millisecond), 2);
    EXPECT_EQ(schedule.next(0, 55 * millisecond), 6);
    EXPECT_EQ(schedule.next(6, 1000 * millisecond + 1), 101);
}

TEST(TickSchedule, TheNextTickIsStillToComeAfterAMiss)
{
    const TickSchedule schedule(12345, 250.0);
    for (std::int64_t now = 12345 + 8 * millisecond; now < 12345 + 80 * millisecond; now += 99991) {
        const std::int64_t tick = schedule.next(0, now);
        EXPECT_GE(schedule.due(tick), now);
        EXPECT_LT(schedule.due(tick - 1), now);
    }
}
