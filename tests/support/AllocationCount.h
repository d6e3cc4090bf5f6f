// SPDX-License-Identifier: Apache-2.0
// Counts what a thread and the process ask of the heap.

#pragma once

#include <cstddef>

// Links a malloc() and relatives of its own into the program, so not for programs built with a sanitizer.

/// How often the calling thread has asked for memory so far, by malloc() or a relative; operator new calls malloc().
std::size_t allocationCount();

/// How often all threads together have. Thread: any thread.
std::size_t processAllocationCount();
