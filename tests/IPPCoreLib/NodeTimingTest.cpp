// SPDX-License-Identifier: Apache-2.0
// NodeTiming: samples and averages.

#include "BusyThread.h"
#include "PosixCalls.h"

#include <libs/IPPCoreLib/NodeTiming.h>

#include <gtest/gtest.h>

#include <cstdint>

namespace {

constexpr double exact = 1e-6; // but for what seconds with a fraction lose

/// A millisecond before the 32-bit count of milliseconds becomes negative, in this century.
constexpr std::int64_t beforeTheWrap = (223LL << 32) + (1LL << 31) - 1; // ms

class NodeTimingTest : public testing::Test
{
protected:
    void takeSample(std::int64_t milliseconds)
    {
        timing.BeginTiming();
        PosixCalls::wallClock += milliseconds * 1'000;
        timing.EndTiming();
    }

    NodeTiming timing;

private:
    const PosixCalls::StandingClock clock{beforeTheWrap * 1'000};
};

TEST_F(NodeTimingTest, BeginsWithAnAverageOfZero)
{
    EXPECT_EQ(timing.AverageMilliseconds(1), 0.0);
}

TEST_F(NodeTimingTest, AnAverageOfNoSamplesIsThePreviousOne)
{
    EXPECT_EQ(timing.AverageMilliseconds(0), 0.0);
    EXPECT_EQ(timing.AverageMilliseconds(-1), 0.0);
}

TEST_F(NodeTimingTest, AveragesInMilliseconds)
{
    PosixCalls::wallClock += 1'000; // past the wrap
    takeSample(20);
    takeSample(25);
    EXPECT_NEAR(timing.AverageMilliseconds(2), 22.5, exact);
}

TEST_F(NodeTimingTest, FewerSamplesThanTheMinimumReturnThePreviousAverageAndGoOnGathering)
{
    PosixCalls::wallClock += 1'000;
    takeSample(10);
    EXPECT_EQ(timing.AverageMilliseconds(2), 0.0);
    takeSample(30);
    EXPECT_NEAR(timing.AverageMilliseconds(2), 20.0, exact) << "the first sample was kept";
    takeSample(50);
    EXPECT_NEAR(timing.AverageMilliseconds(2), 20.0, exact) << "gathering began anew";
}

TEST_F(NodeTimingTest, AnItemAcrossTheWrapOfTheClockSpoilsOneAverage)
{
    takeSample(1);
    EXPECT_NEAR(timing.AverageMilliseconds(1), 1.0 - 4'294'967'296.0, exact);
    takeSample(1);
    EXPECT_NEAR(timing.AverageMilliseconds(1), 1.0, exact);
}

TEST_F(NodeTimingTest, MayBeAskedWhileItMeasures)
{
    const BusyThread worker([this] { takeSample(0); });
    worker.meanwhile([this] { timing.AverageMilliseconds(1); });
}

} // namespace
