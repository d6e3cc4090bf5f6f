// SPDX-License-Identifier: Apache-2.0
// The bounded queue between two processing nodes.

#pragma once

#include "AdaptiveMutex.h"
#include "BlockReusingAllocator.h"
#include "IPPCoreLibExport.h"
#include "NodeData.h"

#include <libs/IPPCoreLib/pt/trigger.h>

#include <atomic>
#include <cstdint>
#include <deque>

/// A bounded first-in-first-out queue of pointers that it does not own. Producer and one consumer meet here:
///  - full: Push() refuses at once and the producer keeps the item;
///  - empty: Pop() waits, at most as long as it is told, and returns null.
/// Whatever is still queued when the queue is cleared or destroyed is forgotten, never released.
///
/// Instantiated for NodeData*, in the library.
/// Thread: any thread. The mutex is never held while waiting.
template<typename Item>
class IPPCORELIB_EXPORT WaitableQueue
{
public:
    /// A queue of the given capacity, of which one place stays unused: 32 holds 31 items.
    explicit WaitableQueue(std::int32_t capacity);
    /// Forgets the items, without releasing them.
    virtual ~WaitableQueue();

    WaitableQueue(const WaitableQueue&) = delete;
    WaitableQueue& operator=(const WaitableQueue&) = delete;

    /// Appends `item` and wakes the consumer. Returns false, without taking the item, when the queue is full: the
    /// caller still has it, and releases it or tries again. Never waits for anybody but for the short lock.
    bool Push(Item item);

    /// Takes the front item. On an empty queue waits at most `timeout` milliseconds (negative: without limit), once:
    /// null when nothing arrived, and also, before that time, when what arrived was cleared or was the item that an
    /// earlier call has taken without waiting for it. So null is no reason to give up. An item may itself be null.
    Item Pop(std::int32_t timeout);

    /// Forgets every item, without releasing it.
    void Clear();

    /// The number of items just now, read without the mutex.
    std::int32_t Size() const { return _count.load(std::memory_order_relaxed); }

private:
    bool TakeFront(Item& item);

    AdaptiveMutex _mutex; ///< guards _items and every change of _count
    pt::trigger _filled{true, false};
    std::deque<Item, BlockReusingAllocator<Item>> _items;
    std::atomic<std::int32_t> _count{0}; ///< always the size of _items while the mutex is held
    std::int32_t _capacity;
};

static_assert(sizeof(std::atomic<std::int32_t>) == 4, "the count is a 32-bit word");

extern template class WaitableQueue<NodeData*>;
