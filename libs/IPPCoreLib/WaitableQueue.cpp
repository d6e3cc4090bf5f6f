// SPDX-License-Identifier: Apache-2.0
// The bounded queue between two processing nodes.

#include "WaitableQueue.h"

#include <mutex>

template<typename Item>
WaitableQueue<Item>::WaitableQueue(std::int32_t capacity)
    : _capacity(capacity)
{
}

template<typename Item>
WaitableQueue<Item>::~WaitableQueue() = default;

template<typename Item>
bool WaitableQueue<Item>::Push(Item item)
{
    {
        const std::lock_guard<AdaptiveMutex> guard(_mutex);
        // Deliberate: the limit is one short of the capacity, so a queue of 32 holds 31 items and a pool of 32
        // objects always has one more to lend than its queue can keep. Compared unsigned: a capacity of 0
        // sets no limit.
        if (static_cast<std::uint32_t>(Size()) >= static_cast<std::uint32_t>(_capacity) - 1U)
            return false;
        _items.push_back(item);
        _count.store(static_cast<std::int32_t>(_items.size()), std::memory_order_relaxed);
    }
    // After unlocking, so that the woken consumer does not run into the mutex.
    _filled.post();
    return true;
}

template<typename Item>
Item WaitableQueue<Item>::Pop(std::int32_t timeout)
{
    Item item = nullptr;
    if (TakeFront(item))
        return item;
    // The trigger may still be signalled from an item that was taken without waiting: one look, then give up,
    // and the caller comes again.
    if (_filled.wait(timeout))
        TakeFront(item);
    return item;
}

template<typename Item>
void WaitableQueue<Item>::Clear()
{
    // Deliberate: the items are not released. Who clears a queue also stops the pool's user and takes every object back
    // at once; a release here would reach into pools that may be gone.
    const std::lock_guard<AdaptiveMutex> guard(_mutex);
    _items.clear();
    _count.store(0, std::memory_order_relaxed);
}

template<typename Item>
bool WaitableQueue<Item>::TakeFront(Item& item)
{
    const std::lock_guard<AdaptiveMutex> guard(_mutex);
    if (Size() < 1)
        return false;
    item = _items.front();
    _items.pop_front();
    _count.store(static_cast<std::int32_t>(_items.size()), std::memory_order_relaxed);
    return true;
}

template class WaitableQueue<NodeData*>;
