// SPDX-License-Identifier: Apache-2.0
// SafeThread: the stored callable and the executing flag.

#include "PosixCalls.h"

#include <libs/IPPCoreLib/SafeThread.h>
#include <tests/support/WaitFor.h>

#include <gtest/gtest.h>

namespace {

TEST(SafeThread, StartsWithoutCallableAndNotExecuting)
{
    SafeThread thread(false);
    EXPECT_FALSE(thread.executing);
    EXPECT_FALSE(thread.callable);
    EXPECT_STREQ(thread.name, "");
}

TEST(SafeThread, ExecutesWhileTheCallableRuns)
{
    SafeThread thread(false);
    std::atomic<bool> during{false};
    thread.callable = [&] { during = thread.executing.load(); };
    thread.start();
    thread.waitfor();
    EXPECT_TRUE(during);
    EXPECT_FALSE(thread.executing);
}

TEST(SafeThread, RunsWithoutACallable)
{
    SafeThread thread(false);
    thread.start();
    thread.waitfor();
    EXPECT_FALSE(thread.executing);
}

TEST(SafeThread, DestructionJoinsAnExecutingThread)
{
    std::atomic<bool> begun{false};
    std::atomic<bool> leave{false};
    std::atomic<bool> ended{false};
    const int joined = PosixCalls::threadJoin.calls;
    {
        SafeThread thread(false);
        thread.callable = [&] {
            begun = true;
            waitFor([&] { return leave.load(); });
            ended = true;
        };
        thread.start();
        ASSERT_TRUE(waitFor([&] { return begun.load(); }));
        leave = true;
    }
    EXPECT_TRUE(ended);
    EXPECT_EQ(PosixCalls::threadJoin.calls - joined, 1);
}

TEST(SafeThread, DestructionRightAfterStartNeverLeavesAThreadOnADeadObject)
{
    constexpr int count = 500;
    const int joined = PosixCalls::threadJoin.calls;
    std::atomic<int> runs{0};
    for (int i = 0; i < count; ++i) {
        SafeThread thread(false);
        thread.callable = [&] { ++runs; };
        thread.start();
    }
    EXPECT_EQ(runs, count);
    EXPECT_EQ(PosixCalls::threadJoin.calls - joined, count);
}

TEST(SafeThread, HasRoomForTheWorkersName)
{
    EXPECT_GE(sizeof(SafeThread::name), sizeof("ImageProcessingThread"));
}

} // namespace
