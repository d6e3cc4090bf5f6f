// SPDX-License-Identifier: Apache-2.0
// pt::timedsem, pt::trigger and the exchange of flags.

#include "PosixCalls.h"

#include <libs/IPPCoreLib/pt/deadline.h>
#include <libs/IPPCoreLib/pt/exchange_flag.h>
#include <libs/IPPCoreLib/pt/timedsem.h>
#include <libs/IPPCoreLib/pt/trigger.h>
#include <tests/support/WaitFor.h>

#include <gtest/gtest.h>

#include <cerrno>
#include <ctime>
#include <mutex>
#include <thread>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

std::chrono::milliseconds since(Clock::time_point start)
{
    return std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - start);
}

/// Posts in the moment in which a wait times out.
template<typename Primitive>
void expectThatALatePostIsLeftForTheNextWait(Primitive& primitive)
{
    {
        const PosixCalls::TimedWaitStandIn standIn([&](const timespec&) {
            primitive.post();
            return ETIMEDOUT;
        });
        EXPECT_FALSE(primitive.wait(10));
    }
    EXPECT_TRUE(primitive.wait(0));
}

/// Wakes a wait of 40 ms for nothing, when 30 ms of it are over.
template<typename Primitive>
void expectThatAWakeUpForNothingBeginsTheWaitAnew(Primitive& primitive)
{
    const PosixCalls::StandingClock clock{1'000'000};
    std::vector<timespec> deadlines;
    const PosixCalls::TimedWaitStandIn standIn([&](const timespec& deadline) {
        deadlines.push_back(deadline);
        PosixCalls::wallClock += 30'000;
        return deadlines.size() > 1 ? ETIMEDOUT : 0;
    });
    EXPECT_FALSE(primitive.wait(40));
    ASSERT_EQ(deadlines.size(), 2U);
    EXPECT_EQ(deadlines[0].tv_nsec, 40'000'000);
    EXPECT_EQ(deadlines[1].tv_nsec, 70'000'000);
}

TEST(TimedSem, WaitOfZeroWithoutACountFailsAtOnce)
{
    pt::timedsem semaphore(0);
    const int before = PosixCalls::timedWait.calls;
    EXPECT_FALSE(semaphore.wait(0));
    EXPECT_EQ(PosixCalls::timedWait.calls - before, 1) << "after one immediate timed wait";
}

TEST(TimedSem, TwoCountsServeTwoWaitsAndTheThirdTimesOut)
{
    pt::timedsem semaphore(2);
    EXPECT_TRUE(semaphore.wait(0));
    EXPECT_TRUE(semaphore.wait(1));
    EXPECT_FALSE(semaphore.wait(1));
}

TEST(TimedSem, WaitLastsAtLeastItsTimeOut)
{
    pt::timedsem semaphore(0);
    const auto start = Clock::now();
    EXPECT_FALSE(semaphore.wait(30));
    EXPECT_GE(since(start).count(), 29);
}

TEST(TimedSem, NegativeTimeOutWaitsForAPost)
{
    pt::timedsem semaphore(0);
    std::atomic<bool> taken{false};
    std::thread waiter([&] { taken = semaphore.wait(-1); });
    semaphore.post();
    waiter.join();
    EXPECT_TRUE(taken);
}

TEST(TimedSem, PostsAddUp)
{
    pt::timedsem semaphore(0);
    semaphore.post();
    semaphore.post();
    EXPECT_TRUE(semaphore.wait(0));
    EXPECT_TRUE(semaphore.wait(0));
    EXPECT_FALSE(semaphore.wait(0));
}

TEST(TimedSem, APostInTheMomentOfTheTimeOutIsLeftForTheNextWait)
{
    pt::timedsem semaphore(0);
    expectThatALatePostIsLeftForTheNextWait(semaphore);
}

TEST(TimedSem, AWakeUpWithoutACountBeginsTheWaitAnew)
{
    pt::timedsem semaphore(0);
    expectThatAWakeUpForNothingBeginsTheWaitAnew(semaphore);
}

TEST(TimedSemDeathTest, FailingMutexExitsWith41)
{
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_EXIT(
        {
            PosixCalls::mutexInit.fails = true;
            pt::timedsem semaphore(0);
        },
        testing::ExitedWithCode(41), "Internal \\[c0029\\]: Timed semaphore failed\n");
}

TEST(TimedSemDeathTest, FailingConditionExitsWith41)
{
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_EXIT(
        {
            PosixCalls::conditionInit.fails = true;
            pt::timedsem semaphore(0);
        },
        testing::ExitedWithCode(41), "Internal \\[c0029\\]: Timed semaphore failed\n");
}

TEST(Trigger, AutoResetLetsOneWaitThroughPerPost)
{
    pt::trigger trigger(true, false);
    trigger.post();
    EXPECT_TRUE(trigger.wait(1));
    EXPECT_FALSE(trigger.wait(1));
}

TEST(Trigger, PostsDoNotAddUp)
{
    pt::trigger trigger(true, false);
    trigger.post();
    trigger.post();
    EXPECT_TRUE(trigger.wait(0));
    EXPECT_FALSE(trigger.wait(0));
}

TEST(Trigger, ManualOneStaysSignalledOncePosted)
{
    pt::trigger trigger(false, false);
    EXPECT_FALSE(trigger.wait(0));
    trigger.post();
    for (int i = 0; i < 5; ++i)
        EXPECT_TRUE(trigger.wait(0));
    trigger.wait();
}

TEST(Trigger, InitialStateIsTheOneGiven)
{
    pt::trigger trigger(true, true);
    EXPECT_TRUE(trigger.wait(0));
    EXPECT_FALSE(trigger.wait(0));
}

TEST(Trigger, ManualOneWakesAllWaiters)
{
    pt::trigger trigger(false, false);
    std::atomic<int> woken{0};
    std::vector<std::thread> waiters;
    for (int i = 0; i < 4; ++i)
        waiters.emplace_back([&] { woken += trigger.wait(-1) ? 1 : 0; });
    trigger.post();
    for (std::thread& waiter : waiters)
        waiter.join();
    EXPECT_EQ(woken, 4);
}

TEST(Trigger, AutoResetWakesOneWaiterPerPost)
{
    pt::trigger trigger(true, false);
    std::atomic<int> woken{0};
    std::thread first([&] {
        trigger.wait();
        ++woken;
    });
    std::thread second([&] {
        trigger.wait();
        ++woken;
    });
    trigger.post();
    ASSERT_TRUE(waitFor([&] { return woken == 1; }));
    EXPECT_FALSE(waitFor([&] { return woken == 2; }, std::chrono::milliseconds(20)));
    trigger.post();
    first.join();
    second.join();
    EXPECT_EQ(woken, 2);
}

TEST(Trigger, AWokenWaiterFindsTheMutexFree)
{
    pt::trigger trigger(true, false);
    PosixCalls::mutexesHeldAtSignal = -1;
    trigger.post();
    EXPECT_EQ(PosixCalls::mutexesHeldAtSignal, 0);
}

TEST(Trigger, APostOfASignalledOneWakesNobody)
{
    pt::trigger trigger(true, true);
    const int before = PosixCalls::conditionSignal.calls;
    trigger.post();
    EXPECT_EQ(PosixCalls::conditionSignal.calls, before);
    EXPECT_TRUE(trigger.wait(0));
    EXPECT_FALSE(trigger.wait(0)) << "posts do not add up";
}

TEST(Trigger, APostOfASignalledOneTakesNoLock)
{
    pt::trigger trigger(true, true);
    const int before = PosixCalls::mutexLock.calls;
    trigger.post();
    EXPECT_EQ(PosixCalls::mutexLock.calls, before);
}

TEST(Trigger, NoPostIsLostWhileAWaiterClears)
{
    pt::trigger trigger(true, false);
    std::mutex mutex;
    int given = 0; // guarded by mutex
    std::atomic<int> seen{0};
    std::atomic<bool> lost{false};
    std::thread poster([&] {
        for (int burst = 0; burst < 20'000 && !lost; ++burst) {
            for (int i = 0; i < 2; ++i) { // the second one comes while the waiter clears the first one
                {
                    const std::lock_guard<std::mutex> guard(mutex);
                    ++given;
                }
                trigger.post();
            }
            while (seen != 2 * (burst + 1) && !lost)
                std::this_thread::yield();
        }
    });
    while (seen < 40'000 && !lost) {
        const bool woken = trigger.wait(20'000); // as long as any wait here, for the poster may be kept waiting
        const std::lock_guard<std::mutex> guard(mutex);
        lost = !woken && given != seen;
        seen = given;
    }
    poster.join();
    EXPECT_FALSE(lost);
}

TEST(Trigger, WaitLastsAtLeastItsTimeOut)
{
    pt::trigger trigger(true, false);
    const auto start = Clock::now();
    EXPECT_FALSE(trigger.wait(30));
    EXPECT_GE(since(start).count(), 29);
}

TEST(Trigger, APostInTheMomentOfTheTimeOutIsLeftForTheNextWait)
{
    pt::trigger trigger(true, false);
    expectThatALatePostIsLeftForTheNextWait(trigger);
}

TEST(Trigger, AWakeUpWithoutASignalBeginsTheWaitAnew)
{
    pt::trigger trigger(true, false);
    expectThatAWakeUpForNothingBeginsTheWaitAnew(trigger);
}

TEST(TriggerDeathTest, FailingMutexExitsWith41)
{
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_EXIT(
        {
            PosixCalls::mutexInit.fails = true;
            pt::trigger trigger(true, false);
        },
        testing::ExitedWithCode(41), "Internal \\[c0029\\]: Trigger failed\n");
}

TEST(TriggerDeathTest, FailingConditionExitsWith41)
{
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_EXIT(
        {
            PosixCalls::conditionInit.fails = true;
            pt::trigger trigger(true, false);
        },
        testing::ExitedWithCode(41), "Internal \\[c0029\\]: Trigger failed\n");
}

TEST(Deadline, SecondsAndNanosecondsAreAdded)
{
    const timespec deadline = pt::deadline_after(timeval{100, 250'000}, 1'500);
    EXPECT_EQ(deadline.tv_sec, 101);
    EXPECT_EQ(deadline.tv_nsec, 750'000'000);
}

TEST(Deadline, NanosecondsAreNotCarriedIntoTheSeconds)
{
    const timespec deadline = pt::deadline_after(timeval{100, 999'000}, 5);
    EXPECT_EQ(deadline.tv_sec, 100);
    EXPECT_EQ(deadline.tv_nsec, 1'004'000'000);
}

/// Comes back `before` the turn of the next second of the wall clock.
void sleepUntilBeforeTheTurnOfASecond(std::chrono::milliseconds before)
{
    timeval now{};
    gettimeofday(&now, nullptr);
    const auto left = std::chrono::microseconds(1'000'000 - now.tv_usec);
    std::this_thread::sleep_for(left > before ? left - before : left + std::chrono::seconds(1) - before);
}

TEST(Deadline, AWaitAcrossTheTurnOfASecondBeginsAnewAfterIt)
{
    pt::trigger trigger(true, false);
    timeval begin{};
    do { // again when this thread was kept waiting beyond the turn
        sleepUntilBeforeTheTurnOfASecond(std::chrono::milliseconds(20));
        gettimeofday(&begin, nullptr);
    } while (begin.tv_usec < 960'000);
    EXPECT_FALSE(trigger.wait(40));
    timeval end{};
    gettimeofday(&end, nullptr);
    const long sinceTheTurn = (end.tv_sec - begin.tv_sec - 1) * 1000L + end.tv_usec / 1000;
    EXPECT_GE(sinceTheTurn, 40);
}

/// A waiter for which the turn of the second never comes: the clock stands just before it, an hour ahead.
class WaiterWithRejectedDeadlines : public testing::Test
{
protected:
    /// Returns when the waiter's deadline was rejected, and it rests.
    WaiterWithRejectedDeadlines()
        : waiter([this] { woken = trigger.wait(5); })
    {
        EXPECT_TRUE(waitFor([this] { return timedWaits() >= 2; }));
    }

    ~WaiterWithRejectedDeadlines() override
    {
        trigger.post();
        waiter.join();
    }

    int timedWaits() const { return PosixCalls::timedWait.calls - timedWaitsBefore; }

    pt::trigger trigger{true, false};
    std::atomic<bool> woken{false};

private:
    const int timedWaitsBefore = PosixCalls::timedWait.calls;
    const PosixCalls::StandingClock clock{(std::time(nullptr) + 3'600) * 1'000'000LL + 999'000};
    std::thread waiter;
};

TEST_F(WaiterWithRejectedDeadlines, IsWokenByAPost)
{
    trigger.post();
    EXPECT_TRUE(waitFor([this] { return woken.load(); }));
}

TEST_F(WaiterWithRejectedDeadlines, DoesNotTryThemOverAndOver)
{
    EXPECT_FALSE(waitFor([this] { return timedWaits() > 10; }, std::chrono::milliseconds(50)));
}

TEST(ExchangeFlag, ReturnsThePreviousValue)
{
    int flag = 3;
    EXPECT_EQ(pt::exchange_flag(&flag, 5), 3);
    EXPECT_EQ(pt::exchange_flag(&flag, 0), 5);
    EXPECT_EQ(flag, 0);
}

TEST(ExchangeFlag, ExactlyOneOfManyThreadsSetsAFlag)
{
    for (int round = 0; round < 200; ++round) {
        int flag = 0;
        std::atomic<int> winners{0};
        std::vector<std::thread> threads;
        for (int i = 0; i < 4; ++i)
            threads.emplace_back([&] { winners += pt::exchange_flag(&flag, 1) == 0 ? 1 : 0; });
        for (std::thread& thread : threads)
            thread.join();
        ASSERT_EQ(winners, 1);
    }
}

} // namespace
