// SPDX-License-Identifier: Apache-2.0
// NodeTiming: samples and averages.

#include <libs/IPPCoreLib/NodeTiming.h>

#include <gtest/gtest.h>

#include <thread>

namespace {

void takeSample(NodeTiming& timing, int milliseconds)
{
    timing.BeginTiming();
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
    timing.EndTiming();
}

TEST(NodeTiming, BeginsWithAnAverageOfZero)
{
    NodeTiming timing;
    EXPECT_EQ(timing.AverageMilliseconds(1), 0.0);
}

TEST(NodeTiming, AnAverageOfNoSamplesIsThePreviousOne)
{
    NodeTiming timing;
    EXPECT_EQ(timing.AverageMilliseconds(0), 0.0);
    EXPECT_EQ(timing.AverageMilliseconds(-1), 0.0);
}

TEST(NodeTiming, AveragesInMilliseconds)
{
    NodeTiming timing;
    takeSample(timing, 20);
    takeSample(timing, 20);
    const double average = timing.AverageMilliseconds(2);
    EXPECT_GE(average, 19.0);
    EXPECT_LT(average, 5'000.0);
}

TEST(NodeTiming, FewerSamplesThanTheMinimumReturnThePreviousAverageAndGoOnGathering)
{
    NodeTiming timing;
    takeSample(timing, 10);
    EXPECT_EQ(timing.AverageMilliseconds(2), 0.0);
    takeSample(timing, 10);
    const double average = timing.AverageMilliseconds(2);
    EXPECT_GT(average, 0.0) << "the first sample was kept";
    EXPECT_EQ(timing.AverageMilliseconds(1), average) << "gathering began anew";
}

} // namespace
