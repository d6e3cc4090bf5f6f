// SPDX-License-Identifier: Apache-2.0
// Counts what a thread asks of the heap.

#include "AllocationCount.h"

namespace {

thread_local std::size_t count = 0;

} // namespace

std::size_t allocationCount()
{
    return count;
}

// In place of the C library's, for the program and every library in it. Memory is the C library's as before, so that
// its free() stays as it is.
// NOLINTBEGIN(bugprone-reserved-identifier): the names are the C library's
extern "C" {

void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t number, std::size_t size);
void* __libc_realloc(void* memory, std::size_t size);

__attribute__((visibility("default"))) void* malloc(std::size_t size)
{
    ++count;
    return __libc_malloc(size);
}

__attribute__((visibility("default"))) void* calloc(std::size_t number, std::size_t size)
{
    ++count;
    return __libc_calloc(number, size);
}

__attribute__((visibility("default"))) void* realloc(void* memory, std::size_t size)
{
    ++count;
    return __libc_realloc(memory, size);
}

} // extern "C"
// NOLINTEND(bugprone-reserved-identifier)
