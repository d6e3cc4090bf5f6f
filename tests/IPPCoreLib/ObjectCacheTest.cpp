// SPDX-License-Identifier: Apache-2.0
// ObjectCache: lending, giving back, filling and clearing.

#include "BusyThread.h"

#include <libs/IPPCoreLib/ObjectCache.h>

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <thread>

/// Stands for the camera's frame: the failing check names it.
struct StereoFrame
{
    int value = 0;
};

namespace {

struct Item
{
    int slot;
};

/// A pool over items that outlive it, with the slot's number in each.
class ObjectCacheOfThree : public testing::Test
{
protected:
    ObjectCacheOfThree()
    {
        int slot = 0;
        cache.Fill([&] { return &items[slot++]; });
    }

    ~ObjectCacheOfThree() override
    {
        cache.Clear([](Item*) {});
    }

    Item items[3] = {{0}, {1}, {2}};
    ObjectCache<Item> cache{3};
};

TEST_F(ObjectCacheOfThree, LendsInSlotOrderThenNothing)
{
    EXPECT_EQ(cache.Acquire(), &items[0]);
    EXPECT_EQ(cache.Acquire(), &items[1]);
    EXPECT_EQ(cache.Acquire(), &items[2]);
    EXPECT_EQ(cache.Acquire(), nullptr);
    cache.Release(&items[1]);
    EXPECT_EQ(cache.Acquire(), &items[1]);
}

TEST_F(ObjectCacheOfThree, SearchBeginsAtTheCursorAndWrapsAround)
{
    for (int i = 0; i < 3; ++i)
        cache.Acquire(); // the cursor is back at 0
    cache.Release(&items[2]);
    EXPECT_EQ(cache.Acquire(), &items[2]) << "slots 0 and 1 are in use";
    cache.Release(&items[0]);
    cache.Release(&items[1]);
    EXPECT_EQ(cache.Acquire(), &items[0]) << "the cursor moved to 0";
}

TEST_F(ObjectCacheOfThree, WhatWasGivenBackLastIsLentAgainLast)
{
    EXPECT_EQ(cache.Acquire(), &items[0]);
    cache.Release(&items[0]);
    EXPECT_EQ(cache.Acquire(), &items[1]);
    EXPECT_EQ(cache.Acquire(), &items[2]);
    EXPECT_EQ(cache.Acquire(), &items[0]);
}

TEST_F(ObjectCacheOfThree, ExhaustionLeavesTheCursorWhereItWas)
{
    cache.Acquire();
    cache.Release(&items[0]);
    for (int i = 0; i < 3; ++i)
        cache.Acquire(); // 1, 2, 0: the cursor is at 1
    EXPECT_EQ(cache.Acquire(), nullptr);
    cache.ReleaseAll();
    EXPECT_EQ(cache.Acquire(), &items[1]);
}

TEST_F(ObjectCacheOfThree, ReleaseOfAStrangerChangesNothing)
{
    for (int i = 0; i < 3; ++i)
        cache.Acquire();
    Item stranger{9};
    cache.Release(&stranger);
    EXPECT_EQ(cache.Acquire(), nullptr);
}

TEST_F(ObjectCacheOfThree, ReleasingTwiceIsHarmless)
{
    EXPECT_EQ(cache.Acquire(), &items[0]);
    cache.Release(&items[0]);
    cache.Release(&items[0]);
    EXPECT_EQ(cache.Acquire(), &items[1]);
    EXPECT_EQ(cache.Acquire(), &items[2]);
    EXPECT_EQ(cache.Acquire(), &items[0]);
    EXPECT_EQ(cache.Acquire(), nullptr);
}

TEST_F(ObjectCacheOfThree, ReleaseAllFreesEverySlot)
{
    for (int i = 0; i < 3; ++i)
        cache.Acquire();
    cache.ReleaseAll();
    for (int i = 0; i < 3; ++i)
        EXPECT_NE(cache.Acquire(), nullptr);
}

TEST_F(ObjectCacheOfThree, ClearLeavesTheInUseFlags)
{
    cache.Acquire();
    cache.Clear([](Item*) {});
    EXPECT_EQ(cache.Acquire(), nullptr) << "slot 1, without an object";
    EXPECT_EQ(cache.Acquire(), nullptr) << "slot 2, without an object; the cursor is back at 0";
    EXPECT_EQ(cache.Acquire(), nullptr) << "slot 0 is still in use, so the cursor stays";
    int calls = 0;
    cache.Fill([&] { return &items[calls++]; });
    EXPECT_EQ(cache.Acquire(), &items[0]) << "filling frees the slots";
}

TEST_F(ObjectCacheOfThree, EmptyCallablesAreErrorsAndLeaveTheCacheUsable)
{
    EXPECT_THROW(cache.Fill(nullptr), std::bad_function_call);
    EXPECT_THROW(cache.Clear(nullptr), std::bad_function_call);
    EXPECT_EQ(cache.Acquire(), &items[0]);
}

TEST_F(ObjectCacheOfThree, ErrorsOfTheCallablesReachTheCaller)
{
    EXPECT_THROW(cache.Fill([]() -> Item* { throw 1; }), int);
    EXPECT_THROW(cache.Clear([](Item*) { throw 2; }), int);
    EXPECT_EQ(cache.Acquire(), &items[0]);
}

TEST_F(ObjectCacheOfThree, MayBeFreedFilledAndClearedWhileItLends)
{
    const BusyThread borrower([this] {
        if (const Item* const item = cache.Acquire())
            cache.Release(item);
    });
    borrower.meanwhile([this] { cache.ReleaseAll(); });
    borrower.meanwhile([this] {
        int slot = 0;
        cache.Fill([&] { return &items[slot++]; });
    });
    borrower.meanwhile([this] { cache.Clear([](Item*) {}); });
}

TEST(ObjectCache, WithoutSlotsLendsNothing)
{
    ObjectCache<Item> cache(0);
    cache.Fill(nullptr);
    EXPECT_EQ(cache.Acquire(), nullptr);
    cache.ReleaseAll();
    cache.Clear(nullptr);
}

TEST(ObjectCache, UnfilledAcquireReturnsNothingAndMarksTheSlot)
{
    ObjectCache<Item> cache(2);
    EXPECT_EQ(cache.Acquire(), nullptr); // slot 0 is in use now, the cursor at 1
    Item items[2] = {{0}, {1}};
    int slot = 0;
    cache.Fill([&] { return &items[slot++]; });
    EXPECT_EQ(cache.Acquire(), &items[1]);
    EXPECT_EQ(cache.Acquire(), &items[0]);
    cache.Clear([](Item*) {});
}

TEST(ObjectCache, ClearPassesNullObjectsToo)
{
    ObjectCache<Item> cache(2);
    int calls = 0;
    cache.Clear([&](const Item* item) {
        EXPECT_EQ(item, nullptr);
        ++calls;
    });
    EXPECT_EQ(calls, 2);
}

TEST(ObjectCache, FillOverwritesWithoutDisposing)
{
    ObjectCache<Item> cache(1);
    Item first{1};
    Item second{2};
    cache.Fill([&] { return &first; });
    cache.Fill([&] { return &second; });
    EXPECT_EQ(cache.Acquire(), &second);
    cache.Clear([](Item*) {});
}

TEST(ObjectCache, LendsEveryObjectToOneBorrowerOnly)
{
    ObjectCache<std::atomic<int>> cache(8);
    cache.Fill([] { return new std::atomic<int>(0); });
    std::atomic<bool> shared{false};
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&] {
            for (int round = 0; round < 20'000; ++round) {
                std::atomic<int>* const borrowers = cache.Acquire();
                if (borrowers == nullptr)
                    continue;
                if (++*borrowers != 1)
                    shared = true;
                --*borrowers;
                cache.Release(borrowers);
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_FALSE(shared);
    int free = 0;
    while (cache.Acquire() != nullptr)
        ++free;
    EXPECT_EQ(free, 8);
    cache.Clear([](std::atomic<int>* item) { delete item; });
}

TEST(ObjectCacheDeathTest, DestroyingAFilledCacheAbortsWithTheStatedText)
{
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_EXIT(
        {
            StereoFrame frame;
            ObjectCache<StereoFrame> cache(1);
            cache.Fill([&] { return &frame; });
        },
        testing::KilledBySignal(SIGABRT),
        "libs/IPPCoreLib/ObjectCache:40: ObjectCache<T>::~ObjectCache\\(\\) \\[with T = StereoFrame\\]: "
        "Assertion `_objectCache\\[i\\]\\.obj == __null' failed\\.\n");
}

} // namespace
