// SPDX-License-Identifier: Apache-2.0
// The worker behind the camera node, without its thread.

#include "PictureFrames.h"

#include <PictureMailbox.h>
#include <StereoViewNode.h>

#include <camera/StereoFrame.h>

#include <gtest/gtest.h>

#include <chrono>

namespace {

class StereoViewNodeTime : public testing::Test
{
protected:
    StereoViewNodeTime() { frame.record = pictures.record.asLibraryRecord(); }

    /// Milliseconds that processing `count` frames takes, measured from outside.
    double process(int count)
    {
        const auto begin = std::chrono::steady_clock::now();
        for (int i = 0; i < count; ++i)
            node.Process(&frame);
        return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - begin).count();
    }

    PictureFrame pictures{752, 480, 40, 200};
    StereoFrame frame{};
    PictureMailbox mailbox;
    StereoViewNode node{mailbox, true};
};

TEST_F(StereoViewNodeTime, IsZeroBeforeTheFirstFrame)
{
    EXPECT_EQ(node.TakeAverageMilliseconds(), 0.0);
}

TEST_F(StereoViewNodeTime, CountsFractionsOfAMillisecond)
{
    for (int i = 0; i < 5; ++i) {
        const double outside = process(1);
        const double inside = node.TakeAverageMilliseconds();
        EXPECT_GT(inside, 0.0);
        EXPECT_LE(inside, outside);
    }
}

TEST_F(StereoViewNodeTime, IsTheAverageSinceTheLastLook)
{
    process(100);
    node.TakeAverageMilliseconds();
    const double outside = process(10);
    const double inside = node.TakeAverageMilliseconds();
    EXPECT_GT(inside, 0.0);
    EXPECT_LE(inside * 10.0, outside);
    EXPECT_EQ(node.TakeAverageMilliseconds(), inside) << "no frame since then";
}

} // namespace
