// SPDX-License-Identifier: Apache-2.0
// The heap allocations of the program under test, counted.

#include "HeapCalls.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {

std::atomic<long> allocations{0};

} // namespace

long heapAllocations()
{
    return allocations;
}

#pragma GCC visibility push(default) // seen by the libraries that this program loads

void* operator new(std::size_t size)
{
    ++allocations;
    if (void* const block = std::malloc(size))
        return block;
    throw std::bad_alloc();
}

void operator delete(void* block) noexcept
{
    std::free(block);
}

void operator delete(void* block, std::size_t) noexcept
{
    std::free(block);
}

#pragma GCC visibility pop
