// SPDX-License-Identifier: Apache-2.0
// pt::thread: starting, waiting, detaching, ending.

#include "PosixCalls.h"

#include <libs/IPPCoreLib/pt/exception.h>
#include <libs/IPPCoreLib/pt/fatal.h>
#include <libs/IPPCoreLib/pt/thread.h>
#include <tests/support/WaitFor.h>

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <memory>

namespace {

class CallingThread : public pt::thread
{
public:
    explicit CallingThread(std::function<void()> body, bool autofree = false)
        : pt::thread(autofree)
        , _body(std::move(body))
    {
    }

    std::function<void()> onFinish = [] {};
    std::function<void()> onDelete = [] {};

    ~CallingThread() override { onDelete(); }

protected:
    void run() override { _body(); }
    void finish() override { onFinish(); }

private:
    std::function<void()> _body;
};

TEST(PtThread, RunsItsBodyOnAnotherThread)
{
    pthread_t runner = pthread_self();
    CallingThread thread([&] { runner = pthread_self(); });
    thread.start();
    thread.waitfor();
    EXPECT_FALSE(pthread_equal(runner, pthread_self()));
}

TEST(PtThread, SecondStartCreatesNoThread)
{
    std::atomic<int> runs{0};
    CallingThread thread([&] { ++runs; });
    const int before = PosixCalls::threadCreate.calls;
    thread.start();
    thread.start();
    thread.waitfor();
    thread.start();
    EXPECT_EQ(PosixCalls::threadCreate.calls - before, 1);
    EXPECT_EQ(runs, 1);
}

TEST(PtThread, SecondWaitReturnsWithoutJoining)
{
    CallingThread thread([] {});
    thread.start();
    const int before = PosixCalls::threadJoin.calls;
    thread.waitfor();
    thread.waitfor();
    EXPECT_EQ(PosixCalls::threadJoin.calls - before, 1);
}

TEST(PtThread, WaitReturnsOnlyWhenTheBodyHasEnded)
{
    std::atomic<bool> release{false};
    std::atomic<bool> ended{false};
    CallingThread thread([&] {
        waitFor([&] { return release.load(); });
        ended = true;
    });
    thread.start();
    release = true;
    thread.waitfor();
    EXPECT_TRUE(ended);
}

TEST(PtThread, DestroyingAStartedThreadWithoutWaitingDetachesIt)
{
    // The object must outlive its body, and nobody may join: it is destroyed after finish(), in memory that stays, so
    // that the last instructions of the thread still find it.
    alignas(CallingThread) static unsigned char memory[sizeof(CallingThread)];
    std::atomic<bool> ended{false};
    auto* const thread = new (memory) CallingThread([] {});
    thread->onFinish = [&] { ended = true; };
    thread->start();
    ASSERT_TRUE(waitFor([&] { return ended.load(); }));
    const int detached = PosixCalls::threadDetach.calls;
    const int joined = PosixCalls::threadJoin.calls;
    thread->~CallingThread();
    EXPECT_EQ(PosixCalls::threadDetach.calls - detached, 1);
    EXPECT_EQ(PosixCalls::threadJoin.calls - joined, 0);
}

TEST(PtThread, DestroyingAThreadThatWasNeverStartedDetachesNothing)
{
    const int detached = PosixCalls::threadDetach.calls;
    {
        CallingThread thread([] {});
    }
    EXPECT_EQ(PosixCalls::threadDetach.calls - detached, 0);
}

TEST(PtThread, AutofreeThreadDeletesItselfAfterFinish)
{
    static std::atomic<int> order{0};
    static std::atomic<int> ranAt{0};
    static std::atomic<int> finishedAt{0};
    static std::atomic<int> deletedAt{0};
    order = ranAt = finishedAt = deletedAt = 0;
    auto* const thread = new CallingThread([] { ranAt = ++order; }, true);
    thread->onFinish = [] { finishedAt = ++order; };
    thread->onDelete = [] { deletedAt = ++order; };
    thread->start();
    ASSERT_TRUE(waitFor([] { return deletedAt != 0; }));
    EXPECT_EQ(ranAt, 1);
    EXPECT_EQ(finishedAt, 2);
    EXPECT_EQ(deletedAt, 3);
}

TEST(PtThread, AutofreeThreadsAreCreatedDetachedAndOthersAreNot)
{
    static std::atomic<bool> deleted{false};
    deleted = false;
    auto* const autofree = new CallingThread([] {}, true);
    autofree->onDelete = [] { deleted = true; };
    autofree->start();
    EXPECT_TRUE(PosixCalls::lastThreadIsDetached);
    ASSERT_TRUE(waitFor([] { return deleted.load(); }));

    CallingThread joinable([] {});
    joinable.start();
    EXPECT_FALSE(PosixCalls::lastThreadIsDetached);
    joinable.waitfor();
}

TEST(PtThread, ExceptionOutOfFinishIsDeletedAndForgotten)
{
    static std::atomic<int> deletedExceptions{0};
    deletedExceptions = 0;
    class CountedException : public pt::exception
    {
    public:
        ~CountedException() override { ++deletedExceptions; }
    };
    CallingThread thread([] {});
    thread.onFinish = [] { throw static_cast<pt::exception*>(new CountedException); };
    thread.start();
    thread.waitfor();
    EXPECT_EQ(deletedExceptions, 1);
}

TEST(PtThread, IsSignalledAtMostOnce)
{
    CallingThread thread([] {});
    const int before = PosixCalls::conditionSignal.calls;
    thread.signal();
    thread.signal();
    EXPECT_EQ(PosixCalls::conditionSignal.calls - before, 1);
}

TEST(PtThreadDeathTest, ExceptionOutOfRunEndsTheProcessAfterFinish)
{
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_DEATH(
        {
            CallingThread thread([] { throw new pt::exception; });
            thread.onFinish = [] { std::fputs("finish was called\n", stderr); };
            thread.start();
            thread.waitfor();
        },
        "finish was called");
}

TEST(PtThreadDeathTest, CreationFailurePrintsFiveDigitsAndExitsWith40)
{
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_EXIT(
        {
            CallingThread thread([] {});
            PosixCalls::threadCreate.fails = true;
            thread.start();
        },
        testing::ExitedWithCode(40), "^\nInternal \\[c0028\\]: pthread_create\\(\\) failed\n");
}

TEST(PtThreadDeathTest, WaitingForOneselfExitsWith47)
{
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_EXIT(
        {
            CallingThread* self = nullptr;
            CallingThread thread([&] { self->waitfor(); });
            self = &thread;
            thread.start();
            waitFor([] { return false; });
        },
        testing::ExitedWithCode(47), "Internal \\[c002f\\]: Can not waitfor\\(\\) on myself\n");
}

TEST(PtThreadDeathTest, WaitingForAnAutofreeThreadExitsWith48)
{
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_EXIT(
        {
            auto* const thread = new CallingThread([] { waitFor([] { return false; }); }, true);
            thread->start();
            thread->waitfor();
        },
        testing::ExitedWithCode(48), "Internal \\[c0030\\]: Can not waitfor\\(\\) on an autofree thread\n");
}

TEST(PtFatalDeathTest, AnotherHandlerIsCalledAndTheProcessStillExits)
{
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_EXIT(
        {
            pt::set_fatal_handler([](int code, const char* message) { std::fprintf(stderr, "%x %s", code, message); });
            pt::fatal(0x123, "said");
        },
        testing::ExitedWithCode(0x23), "^123 said$");
}

TEST(PtFatalDeathTest, WhatIsRegisteredForTheExitIsCalled)
{
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_EXIT(
        {
            pt::set_fatal_handler(nullptr);
            std::atexit([] { std::fputs("called", stderr); });
            pt::fatal(7, "unsaid");
        },
        testing::ExitedWithCode(7), "^called$");
}

TEST(PtFatalDeathTest, WithoutAHandlerNothingIsPrinted)
{
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_EXIT(
        {
            pt::set_fatal_handler(nullptr);
            pt::fatal(7, "unsaid");
        },
        testing::ExitedWithCode(7), "^$");
}

} // namespace
