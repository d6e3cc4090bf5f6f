// SPDX-License-Identifier: Apache-2.0
// Counts what a thread asks of the heap.

#pragma once

#include <cstddef>

/// How often the calling thread has called malloc(), calloc() or realloc() so far; operator new calls malloc(). Links a
/// malloc() of its own into the program, so not for programs built with a sanitizer.
std::size_t allocationCount();
