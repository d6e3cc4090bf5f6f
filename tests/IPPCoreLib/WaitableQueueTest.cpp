// SPDX-License-Identifier: Apache-2.0
// WaitableQueue: limits, order, waiting.

#include "BusyThread.h"
#include "HeapCalls.h"
#include "PosixCalls.h"
#include "SystemCalls.h"

#include <libs/IPPCoreLib/NodeData.h>
#include <libs/IPPCoreLib/WaitableQueue.h>
#include <tests/support/WaitFor.h>

#include <gtest/gtest.h>

#include <cerrno>
#include <thread>
#include <vector>

namespace {

class Item final : public NodeData
{
public:
    void Release() override { ++releases; }

    int releases = 0;
};

TEST(WaitableQueue, PushFailsAtThirtyOne)
{
    WaitableQueue<NodeData*> queue(32);
    Item item;
    for (int i = 0; i < 31; ++i)
        ASSERT_TRUE(queue.Push(&item)) << i;
    EXPECT_FALSE(queue.Push(&item));
    EXPECT_EQ(queue.Size(), 31);
    queue.Pop(0);
    EXPECT_TRUE(queue.Push(&item));
}

TEST(WaitableQueue, CapacityOfZeroSetsNoLimit)
{
    WaitableQueue<NodeData*> queue(0);
    for (int i = 0; i < 100; ++i)
        ASSERT_TRUE(queue.Push(nullptr)) << i;
}

TEST(WaitableQueue, ItemsComeOutInTheOrderTheyWentIn)
{
    WaitableQueue<NodeData*> queue(32);
    Item items[3];
    for (Item& item : items)
        queue.Push(&item);
    for (Item& item : items)
        EXPECT_EQ(queue.Pop(0), &item);
    EXPECT_EQ(queue.Size(), 0);
}

TEST(WaitableQueue, PopOfAnEmptyQueueTimesOut)
{
    WaitableQueue<NodeData*> queue(32);
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(queue.Pop(20), nullptr);
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(19));
}

TEST(WaitableQueue, PopOfZeroReturnsAtOnce)
{
    WaitableQueue<NodeData*> queue(32);
    EXPECT_EQ(queue.Pop(0), nullptr);
}

TEST(WaitableQueue, PopIsWokenByAPush)
{
    WaitableQueue<NodeData*> queue(32);
    Item item;
    NodeData* popped = nullptr;
    std::thread consumer([&] { popped = queue.Pop(-1); });
    queue.Push(&item);
    consumer.join();
    EXPECT_EQ(popped, &item);
}

TEST(WaitableQueue, AWaitingPopTakesWhatIsPushed)
{
    WaitableQueue<NodeData*> queue(32);
    Item item;
    const PosixCalls::TimedWaitStandIn standIn([&](const timespec&) {
        const bool again = queue.Size() > 0;
        queue.Push(&item);
        return again ? ETIMEDOUT : 0;
    });
    EXPECT_EQ(queue.Pop(10), &item);
}

TEST(WaitableQueue, PushSignalsAfterUnlocking)
{
    WaitableQueue<NodeData*> queue(32);
    PosixCalls::mutexesHeldAtSignal = -1;
    queue.Push(nullptr);
    EXPECT_EQ(PosixCalls::mutexesHeldAtSignal, 0);
}

TEST(WaitableQueue, TriggerLeftOverFromATakenItemEndsOneWaitEarly)
{
    WaitableQueue<NodeData*> queue(32);
    Item item;
    queue.Push(&item);
    EXPECT_EQ(queue.Pop(0), &item); // taken without waiting: the trigger stays signalled
    const int before = PosixCalls::timedWait.calls;
    EXPECT_EQ(queue.Pop(10), nullptr);
    EXPECT_EQ(PosixCalls::timedWait.calls, before) << "one look, no second wait";
}

TEST(WaitableQueue, ClearForgetsWithoutReleasing)
{
    WaitableQueue<NodeData*> queue(32);
    Item item;
    queue.Push(&item);
    queue.Push(&item);
    queue.Clear();
    EXPECT_EQ(queue.Size(), 0);
    EXPECT_EQ(queue.Pop(0), nullptr);
    EXPECT_EQ(item.releases, 0);
}

TEST(WaitableQueue, DestructionForgetsWithoutReleasing)
{
    Item item;
    {
        WaitableQueue<NodeData*> queue(32);
        queue.Push(&item);
    }
    EXPECT_EQ(item.releases, 0);
}

TEST(WaitableQueue, NullItemsAreCarriedLikeAnyOther)
{
    WaitableQueue<NodeData*> queue(32);
    queue.Push(nullptr);
    EXPECT_EQ(queue.Size(), 1);
    EXPECT_EQ(queue.Pop(0), nullptr);
    EXPECT_EQ(queue.Size(), 0);
}

TEST(WaitableQueue, NothingIsLostBetweenTwoThreads)
{
    WaitableQueue<NodeData*> queue(32);
    constexpr std::size_t count = 50'000;
    std::vector<Item> items(count);
    std::thread producer([&] {
        for (Item& item : items)
            while (!queue.Push(&item))
                std::this_thread::yield();
    });
    for (std::size_t received = 0; received < count;) {
        NodeData* const item = queue.Pop(5);
        if (item == nullptr)
            continue;
        ASSERT_EQ(item, &items[received]);
        ++received;
    }
    producer.join();
    EXPECT_EQ(queue.Size(), 0);
}

TEST(WaitableQueue, MayBeClearedWhileItIsPushedTo)
{
    WaitableQueue<NodeData*> queue(32);
    Item item;
    const BusyThread producer([&] { queue.Push(&item); });
    producer.meanwhile([&] { queue.Clear(); });
}

TEST(WaitableQueue, PassingItemsThroughAllocatesNothing)
{
    WaitableQueue<NodeData*> queue(32);
    Item item;
    const auto fillAndDrain = [&] {
        while (queue.Push(&item))
            ;
        while (queue.Pop(0) != nullptr)
            ;
    };
    for (int round = 0; round < 10; ++round)
        fillAndDrain();
    const long before = heapAllocations();
    for (int round = 0; round < 1000; ++round)
        fillAndDrain();
    EXPECT_EQ(heapAllocations(), before);
}

TEST(WaitableQueueDeathTest, PushAndPopWithoutAWaiterMakeNoSystemCall)
{
    if (!canForbidSystemCalls())
        GTEST_SKIP() << "system calls cannot be forbidden here";
    EXPECT_EXIT(
        {
            WaitableQueue<NodeData*> queue(32);
            Item item;
            queue.Push(&item);
            queue.Pop(0);
            forbidSystemCalls();
            for (int round = 0; round < 1000; ++round) {
                while (queue.Push(&item))
                    ;
                while (queue.Size() > 0)
                    queue.Pop(0);
            }
            endProcess(0);
        },
        testing::ExitedWithCode(0), "");
}

} // namespace
