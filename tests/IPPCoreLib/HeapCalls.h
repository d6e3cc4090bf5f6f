// SPDX-License-Identifier: Apache-2.0
// The heap allocations of the program under test, counted.

#pragma once

/// How often operator new has been called so far, by the tests and by the library under test: the test program replaces
/// it. Thread: any thread.
long heapAllocations();
