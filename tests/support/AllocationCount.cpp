// SPDX-License-Identifier: Apache-2.0
// Counts what a thread and the process ask of the heap.

#include "AllocationCount.h"

#include <atomic>
#include <cerrno>

namespace {

thread_local std::size_t ofThread = 0;
std::atomic<std::size_t> ofProcess{0};

void countOne()
{
    ++ofThread;
    ofProcess.fetch_add(1, std::memory_order_relaxed);
}

} // namespace

std::size_t allocationCount()
{
    return ofThread;
}

std::size_t processAllocationCount()
{
    return ofProcess.load(std::memory_order_relaxed);
}

// In place of the C library's, for the program and every library in it. Memory is the C library's as before, so that
// its free() stays as it is.
// NOLINTBEGIN(bugprone-reserved-identifier): the names are the C library's
extern "C" {

void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t number, std::size_t size);
void* __libc_realloc(void* memory, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);

__attribute__((visibility("default"))) void* malloc(std::size_t size)
{
    countOne();
    return __libc_malloc(size);
}

__attribute__((visibility("default"))) void* calloc(std::size_t number, std::size_t size)
{
    countOne();
    return __libc_calloc(number, size);
}

__attribute__((visibility("default"))) void* realloc(void* memory, std::size_t size)
{
    countOne();
    return __libc_realloc(memory, size);
}

__attribute__((visibility("default"))) void* aligned_alloc(std::size_t alignment, std::size_t size)
{
    countOne();
    return __libc_memalign(alignment, size);
}

__attribute__((visibility("default"))) int posix_memalign(void** memory, std::size_t alignment, std::size_t size)
{
    countOne();
    *memory = __libc_memalign(alignment, size);
    return *memory != nullptr ? 0 : ENOMEM;
}

} // extern "C"
// NOLINTEND(bugprone-reserved-identifier)
