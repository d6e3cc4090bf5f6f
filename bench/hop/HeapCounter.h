// SPDX-License-Identifier: Apache-2.0
// Counts the heap allocations of the whole process.

#pragma once

#include <cstdint>

/// How many blocks have been allocated so far, by whatever part of the process: malloc() and its relatives are replaced
/// in programs that link this. Thread: any thread.
std::int64_t heapAllocations();
