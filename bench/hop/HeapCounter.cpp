// SPDX-License-Identifier: Apache-2.0
// Counts the heap allocations of the whole process.

#include "HeapCounter.h"

#include <atomic>
#include <cerrno>
#include <cstddef>

namespace {

std::atomic<std::int64_t> allocations{0};

void countOne()
{
    allocations.fetch_add(1, std::memory_order_relaxed);
}

} // namespace

std::int64_t heapAllocations()
{
    return allocations.load(std::memory_order_relaxed);
}

// The C library's own entry points, by which a replacement reaches the real allocator.
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);

void* malloc(std::size_t size)
{
    countOne();
    return __libc_malloc(size);
}

void* calloc(std::size_t count, std::size_t size)
{
    countOne();
    return __libc_calloc(count, size);
}

void* realloc(void* block, std::size_t size)
{
    countOne();
    return __libc_realloc(block, size);
}

void* aligned_alloc(std::size_t alignment, std::size_t size)
{
    countOne();
    return __libc_memalign(alignment, size);
}

int posix_memalign(void** block, std::size_t alignment, std::size_t size)
{
    countOne();
    *block = __libc_memalign(alignment, size);
    return *block != nullptr ? 0 : ENOMEM;
}
}
