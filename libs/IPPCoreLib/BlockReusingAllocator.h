// SPDX-License-Identifier: Apache-2.0
// An allocator that keeps one block back for the next request.

#pragma once

#include <cstddef>
#include <memory>
#include <utility>

/// For a container that gives back and takes blocks of one size all the time, as a double-ended queue does when items
/// pass through it: the block given back last is kept and serves the next request of its size, so that a queue which
/// has once reached its length allocates nothing more.
///
/// Each container's own allocator keeps its own block; a copy begins without one, and any of them may give back what
/// another has allocated.
/// Thread: that of the container, under whatever lock guards it.
template<typename T>
class BlockReusingAllocator
{
public:
    /// What the blocks hold.
    using value_type = T;

    /// Keeps no block yet.
    BlockReusingAllocator() noexcept = default;
    /// Keeps no block yet, whatever the original keeps.
    BlockReusingAllocator(const BlockReusingAllocator&) noexcept {}
    /// Likewise, for blocks of something else.
    template<typename Other>
    // cppcheck-suppress noExplicitConstructor ; the same
    // NOLINTNEXTLINE(google-explicit-constructor): containers convert their allocator for the blocks they need
    BlockReusingAllocator(const BlockReusingAllocator<Other>&) noexcept
    {
    }
    ~BlockReusingAllocator() { Free(_kept, _keptCount); }

    BlockReusingAllocator& operator=(const BlockReusingAllocator&) = delete;

    /// A block for `count` items: the one kept, if it is of that size. Throws std::bad_alloc when memory has run out.
    T* allocate(std::size_t count)
    {
        if (_kept != nullptr && _keptCount == count)
            return std::exchange(_kept, nullptr);
        return std::allocator<T>().allocate(count);
    }

    /// Keeps `block`, of `count` items, and frees the one kept before.
    void deallocate(T* block, std::size_t count) noexcept
    {
        Free(std::exchange(_kept, block), std::exchange(_keptCount, count));
    }

    /// Always true: any allocator of this kind may free what another has allocated.
    friend bool operator==(const BlockReusingAllocator&, const BlockReusingAllocator&) noexcept { return true; }
    /// Always false.
    friend bool operator!=(const BlockReusingAllocator&, const BlockReusingAllocator&) noexcept { return false; }

private:
    static void Free(T* block, std::size_t count) noexcept
    {
        if (block != nullptr)
            std::allocator<T>().deallocate(block, count);
    }

    T* _kept = nullptr;
    std::size_t _keptCount = 0;
};
