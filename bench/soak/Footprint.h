// SPDX-License-Identifier: Apache-2.0
// What this process holds just now.

#pragma once

#include <cstddef>

/// What must not grow over a long run.
struct Footprint
{
    std::size_t anonymousBytes; ///< without the pages of files, which come and go as the kernel sees fit
    std::size_t heapBytes;      ///< handed out by malloc and not freed
    std::size_t descriptors;
    std::size_t threads;

    static Footprint measure();
};
