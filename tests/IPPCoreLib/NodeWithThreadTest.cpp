// SPDX-License-Identifier: Apache-2.0
// ImageProcessingNodeWithThread: the worker's life and its step.

#include "PosixCalls.h"

#include <libs/IPPCoreLib/ImageProcessingNodeWithThread.h>
#include <libs/IPPCoreLib/NodeData.h>
#include <tests/support/WaitFor.h>

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <memory>
#include <thread>
#include <vector>

namespace {

class Item final : public NodeData
{
public:
    void Release() override
    {
        releasedAfterProcessing = processed.load();
        onRelease();
        ++releases;
    }

    std::function<void()> onRelease = [] {};
    std::atomic<int> processed{0};
    std::atomic<int> releases{0};
    std::atomic<int> releasedAfterProcessing{-1};
};

class SourceNode : public ImageProcessingNode
{
public:
    void StartProcessing() override {}
    void StopProcessing() override {}
    void Close() override {}
    void Process(NodeData*) override {}
};

class WorkerNode : public ImageProcessingNodeWithThread
{
public:
    ~WorkerNode() override { StopProcessing(); }

    void ThreadInit() override
    {
        ++inits;
        onInit();
    }

    void ThreadStep() override
    {
        ImageProcessingNodeWithThread::ThreadStep();
        ++steps;
        processedAfterStep[std::min<std::size_t>(static_cast<std::size_t>(steps) - 1, 1)] = processed.load();
    }

    void ThreadExit() override
    {
        ++exits;
        onExit();
    }

    void Close() override {}

    void Process(NodeData* item) override
    {
        ++processed;
        if (item == nullptr)
            ++nulls;
        else
            ++static_cast<Item*>(item)->processed;
        onProcess();
    }

    std::function<void()> onInit = [] {};
    std::function<void()> onExit = [] {};
    std::function<void()> onProcess = [] {};
    std::atomic<int> inits{0};
    std::atomic<int> steps{0};
    std::atomic<int> processedAfterStep[2] = {{-1}, {-1}}; ///< after the first step, and after the last one
    std::atomic<int> exits{0};
    std::atomic<int> processed{0};
    std::atomic<int> nulls{0};
};

class NodeWithThread : public testing::Test
{
protected:
    NodeWithThread() { worker.SetInputNode(&source); }

    SourceNode source;
    WorkerNode worker;
};

TEST_F(NodeWithThread, ProcessesThenReleasesEveryItemOnce)
{
    std::vector<Item> items(20);
    worker.StartProcessing();
    for (Item& item : items)
        source.OutputQueue().Push(&item);
    ASSERT_TRUE(waitFor([&] { return items.back().releases == 1; }));
    for (Item& item : items) {
        EXPECT_EQ(item.processed, 1);
        EXPECT_EQ(item.releases, 1);
        EXPECT_EQ(item.releasedAfterProcessing, 1);
    }
}

TEST_F(NodeWithThread, HooksAreCalledInOrderOnce)
{
    worker.StartProcessing();
    ASSERT_TRUE(waitFor([&] { return worker.steps > 1; }));
    worker.StopProcessing();
    EXPECT_EQ(worker.inits, 1);
    EXPECT_EQ(worker.exits, 1);
}

TEST_F(NodeWithThread, EmptyQueueEndsEachStepAfterTheQuietPeriod)
{
    const auto start = std::chrono::steady_clock::now();
    worker.StartProcessing();
    ASSERT_TRUE(waitFor([&] { return worker.steps >= 4; }));
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(4 * 5 - 4));
    EXPECT_EQ(worker.processed, 0);
}

TEST_F(NodeWithThread, AnIdleWorkerWaitsForFiveMilliseconds)
{
    const PosixCalls::StandingClock clock{1'000'000};
    PosixCalls::longestTimedWait = 0;
    worker.StartProcessing();
    ASSERT_TRUE(waitFor([&] { return worker.steps >= 4; }));
    worker.StopProcessing();
    EXPECT_EQ(PosixCalls::longestTimedWait, 5'000'000) << "long enough to rest, and a stop is noticed soon";
}

TEST_F(NodeWithThread, StopEndsAnIdleWorker)
{
    worker.StartProcessing();
    ASSERT_TRUE(waitFor([&] { return worker.steps > 0; }));
    worker.StopProcessing();
    EXPECT_EQ(worker.exits, 1);
    EXPECT_FALSE(worker.IsRunning());
    const int steps = worker.steps;
    EXPECT_FALSE(waitFor([&] { return worker.steps > steps; }, std::chrono::milliseconds(20)));
}

TEST_F(NodeWithThread, NullItemEndsTheStepWithoutProcessing)
{
    Item item;
    source.OutputQueue().Push(nullptr);
    source.OutputQueue().Push(&item);
    worker.StartProcessing();
    ASSERT_TRUE(waitFor([&] { return item.releases == 1; }));
    worker.StopProcessing();
    EXPECT_EQ(worker.processedAfterStep[0], 0) << "the item behind the null waits for the next step";
    EXPECT_EQ(worker.nulls, 0);
}

TEST_F(NodeWithThread, StepOfAStoppedNodeTakesNothing)
{
    Item item;
    source.OutputQueue().Push(&item);
    worker.ThreadStep();
    EXPECT_EQ(worker.processed, 0);
    EXPECT_EQ(source.Size(), 1);
}

TEST_F(NodeWithThread, OneStepProcessesEverythingThatIsQueued)
{
    std::vector<Item> items(20);
    for (Item& item : items)
        source.OutputQueue().Push(&item);
    worker.StartProcessing();
    ASSERT_TRUE(waitFor([&] { return worker.steps > 0; }));
    worker.StopProcessing();
    EXPECT_EQ(worker.processedAfterStep[0], 20);
}

TEST_F(NodeWithThread, StepsRunWithoutALock)
{
    std::atomic<int> held{-1};
    worker.onProcess = [&] { held = PosixCalls::mutexesHeldHere(); };
    Item item;
    source.OutputQueue().Push(&item);
    worker.StartProcessing();
    ASSERT_TRUE(waitFor([&] { return item.releases == 1; }));
    worker.StopProcessing();
    EXPECT_EQ(held, 0);
}

TEST_F(NodeWithThread, StopDuringProcessingLeavesTheRestQueued)
{
    std::vector<Item> items(3);
    std::atomic<bool> inside{false};
    std::atomic<bool> leave{false};
    worker.onProcess = [&] {
        inside = true;
        waitFor([&] { return leave.load(); });
    };
    for (Item& item : items)
        source.OutputQueue().Push(&item);
    worker.StartProcessing();
    ASSERT_TRUE(waitFor([&] { return inside.load(); }));
    std::thread stopper([&] { worker.StopProcessing(); });
    EXPECT_TRUE(waitFor([&] { return !worker.IsRunning(); }));
    leave = true;
    stopper.join();
    EXPECT_EQ(worker.processed, 1);
    EXPECT_EQ(items[0].releases, 1);
    EXPECT_EQ(source.Size(), 2);
}

TEST_F(NodeWithThread, WithoutInputProcessesNullOverAndOver)
{
    worker.SetInputNode(nullptr);
    worker.StartProcessing();
    ASSERT_TRUE(waitFor([&] { return worker.nulls > 100; }));
    worker.StopProcessing();
    EXPECT_EQ(worker.nulls, worker.processed);
}

TEST_F(NodeWithThread, StartTwiceStartsOneThread)
{
    const int before = PosixCalls::threadCreate.calls;
    worker.StartProcessing();
    worker.StartProcessing();
    EXPECT_EQ(PosixCalls::threadCreate.calls - before, 1);
}

TEST_F(NodeWithThread, StartAfterStopRunsNoThread)
{
    worker.StartProcessing();
    ASSERT_TRUE(waitFor([&] { return worker.inits == 1; }));
    worker.StopProcessing();
    const int before = PosixCalls::threadCreate.calls;
    Item item;
    source.OutputQueue().Push(&item);
    worker.StartProcessing();
    EXPECT_TRUE(worker.IsRunning());
    EXPECT_EQ(PosixCalls::threadCreate.calls - before, 0);
    EXPECT_FALSE(waitFor([&] { return worker.processed > 0; }, std::chrono::milliseconds(30)));
    EXPECT_EQ(worker.inits, 1);
}

TEST_F(NodeWithThread, StopOfAStoppedNodeDoesNothing)
{
    const int before = PosixCalls::threadJoin.calls;
    worker.StopProcessing();
    worker.StopProcessing();
    EXPECT_EQ(PosixCalls::threadJoin.calls - before, 0);
    EXPECT_EQ(worker.exits, 0);
}

TEST_F(NodeWithThread, ExceptionOutOfAStepEndsTheWorkerWithoutFurtherHooks)
{
    worker.onProcess = [] { throw 1; };
    Item item;
    source.OutputQueue().Push(&item);
    worker.StartProcessing();
    ASSERT_TRUE(waitFor([&] { return worker.processed == 1; }));
    EXPECT_FALSE(waitFor([&] { return worker.steps > 0; }, std::chrono::milliseconds(20)));
    worker.StopProcessing();
    EXPECT_EQ(worker.exits, 0);
    EXPECT_EQ(item.releases, 0);
}

TEST_F(NodeWithThread, ExceptionOutOfInitEndsTheWorker)
{
    worker.onInit = [] { throw 1; };
    worker.StartProcessing();
    ASSERT_TRUE(waitFor([&] { return worker.inits == 1; }));
    EXPECT_FALSE(waitFor([&] { return worker.steps > 0; }, std::chrono::milliseconds(20)));
    worker.StopProcessing();
    EXPECT_EQ(worker.exits, 0);
}

/// Runs a worker whose hook throws and returns how many mutexes its thread has locked and not unlocked.
int locksLeftBehind(WorkerNode& worker, const std::atomic<int>& hookCalls)
{
    const int before = PosixCalls::mutexLock.calls - PosixCalls::mutexUnlock.calls;
    worker.StartProcessing();
    waitFor([&] { return worker.steps > 0 || hookCalls > 0; });
    worker.StopProcessing();
    waitFor([&] { return hookCalls > 0; });
    return PosixCalls::mutexLock.calls - PosixCalls::mutexUnlock.calls - before;
}

TEST_F(NodeWithThread, ExceptionOutOfInitLeavesTheHookLockLocked)
{
    worker.onInit = [] { throw 1; };
    EXPECT_EQ(locksLeftBehind(worker, worker.inits), 1);
}

TEST_F(NodeWithThread, ExceptionOutOfExitEndsTheWorkerAndLeavesTheHookLockLocked)
{
    worker.onExit = [] { throw 1; };
    EXPECT_EQ(locksLeftBehind(worker, worker.exits), 1);
    EXPECT_EQ(worker.exits, 1);
}

TEST_F(NodeWithThread, HooksThatReturnLeaveNoLockLocked)
{
    EXPECT_EQ(locksLeftBehind(worker, worker.exits), 0);
}

TEST_F(NodeWithThread, TimingCountsTheItems)
{
    worker.onProcess = [] { std::this_thread::sleep_for(std::chrono::milliseconds(3)); };
    std::vector<Item> items(3);
    for (Item& item : items)
        source.OutputQueue().Push(&item);
    worker.StartProcessing();
    ASSERT_TRUE(waitFor([&] { return items.back().releases == 1; }));
    worker.StopProcessing();
    EXPECT_GE(worker.Timing().AverageMilliseconds(3), 2.0);
}

TEST_F(NodeWithThread, TimingCountsWhatANodeWithoutInputDoes)
{
    const PosixCalls::StandingClock clock{1'000'000};
    worker.SetInputNode(nullptr);
    worker.onProcess = [] { PosixCalls::wallClock += 3'000; };
    worker.ThreadStep();
    EXPECT_NEAR(worker.Timing().AverageMilliseconds(1), 3.0, 1e-6);
}

TEST_F(NodeWithThread, TimingIncludesTheRelease)
{
    const PosixCalls::StandingClock clock{1'000'000};
    Item item;
    item.onRelease = [] { PosixCalls::wallClock += 3'000; };
    source.OutputQueue().Push(&item);
    worker.StartProcessing();
    ASSERT_TRUE(waitFor([&] { return item.releases == 1; }));
    worker.StopProcessing();
    EXPECT_NEAR(worker.Timing().AverageMilliseconds(1), 3.0, 1e-6);
}

TEST(NodeWithThreadLife, AThreadThatComesUpAfterTheStopCallsNoHook)
{
    SourceNode source;
    WorkerNode worker;
    worker.SetInputNode(&source);
    {
        const PosixCalls::HeldBackThreads heldBack;
        worker.StartProcessing();
        worker.StopProcessing();
        EXPECT_EQ(heldBack.count(), 1);
    }
    EXPECT_EQ(worker.inits, 0);
    EXPECT_EQ(worker.exits, 0);
}

TEST(NodeWithThreadLife, StopOvertakingTheStartCallsNoHookOnADyingNode)
{
    SourceNode source;
    for (int i = 0; i < 1'000; ++i) {
        WorkerNode worker;
        worker.SetInputNode(&source);
        worker.StartProcessing();
        worker.StopProcessing();
        const int inits = worker.inits;
        EXPECT_EQ(worker.exits, inits) << "a worker that has begun has ended";
    }
}

TEST(NodeWithThreadLife, DestructionStopsARunningWorker)
{
    SourceNode source;
    const int joined = PosixCalls::threadJoin.calls;
    {
        WorkerNode worker;
        worker.SetInputNode(&source);
        worker.StartProcessing();
        ASSERT_TRUE(waitFor([&] { return worker.steps > 0; }));
    }
    EXPECT_EQ(PosixCalls::threadJoin.calls - joined, 1);
}

} // namespace
