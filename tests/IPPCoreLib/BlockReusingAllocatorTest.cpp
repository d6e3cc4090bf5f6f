// SPDX-License-Identifier: Apache-2.0
// BlockReusingAllocator: what is kept, and for whom.

#include "HeapCalls.h"

#include <libs/IPPCoreLib/BlockReusingAllocator.h>

#include <gtest/gtest.h>

#include <deque>

namespace {

TEST(BlockReusingAllocator, ABlockGivenBackServesTheNextRequestOfItsSize)
{
    BlockReusingAllocator<int> allocator;
    int* const block = allocator.allocate(64);
    allocator.deallocate(block, 64);
    const long before = heapAllocations();
    EXPECT_EQ(allocator.allocate(64), block);
    EXPECT_EQ(heapAllocations(), before);
    allocator.deallocate(block, 64);
}

TEST(BlockReusingAllocator, ARequestOfAnotherSizeIsAllocatedAnew)
{
    BlockReusingAllocator<int> allocator;
    int* const kept = allocator.allocate(8);
    allocator.deallocate(kept, 8);
    int* const larger = allocator.allocate(64);
    larger[63] = 1; // the address sanitizer knows how long the block is
    EXPECT_NE(larger, kept);
    allocator.deallocate(larger, 64);
}

TEST(BlockReusingAllocator, KeepsOneBlockAndFreesTheOther)
{
    BlockReusingAllocator<int> allocator;
    int* const first = allocator.allocate(64);
    int* const second = allocator.allocate(64);
    allocator.deallocate(first, 64);
    allocator.deallocate(second, 64); // the leak sanitizer counts what is left
    EXPECT_EQ(allocator.allocate(64), second);
    const long before = heapAllocations();
    int* const third = allocator.allocate(64);
    EXPECT_EQ(heapAllocations(), before + 1);
    allocator.deallocate(second, 64);
    allocator.deallocate(third, 64);
}

TEST(BlockReusingAllocator, ACopyKeepsABlockOfItsOwnAndMayGiveBackTheOthers)
{
    BlockReusingAllocator<int> allocator;
    int* const block = allocator.allocate(64);
    BlockReusingAllocator<int> copy(allocator);
    EXPECT_TRUE(copy == allocator);
    copy.deallocate(block, 64);
    EXPECT_EQ(copy.allocate(64), block);
    allocator.deallocate(block, 64);
}

TEST(BlockReusingAllocator, ContainersCanBeCopiedMovedAndSwapped)
{
    std::deque<int, BlockReusingAllocator<int>> numbers(1000, 7);
    std::deque<int, BlockReusingAllocator<int>> copy = numbers;
    const std::deque<int, BlockReusingAllocator<int>> moved = std::move(numbers);
    copy.pop_front();
    EXPECT_EQ(copy.size(), 999U);
    EXPECT_EQ(moved.size(), 1000U);
    EXPECT_EQ(moved.back(), 7);
}

} // namespace
