// SPDX-License-Identifier: Apache-2.0
// A line of plain threads around a queue and a pool of one's choice.

#pragma once

#include "Line.h"

#include <libs/IPPCoreLib/NodeData.h>

#include <array>
#include <cstdlib>
#include <thread>

/// An item of those that bring no item of their own. A NodeData, so that our own queue can carry it; the pool gets it
/// back directly.
struct PlainItem final : NodeData
{
    void Release() override {}

    std::int64_t sent = 0;
};

/// One thread a hop.
///
/// `Queue`: bool Push(PlainItem*); PlainItem* Pop() waits at most longestWait, null when nothing came.
/// `Pool`: void Add(PlainItem*) while nobody uses it, PlainItem* Take() on the producer's thread, null when empty, and
/// void Give(PlainItem*) on the last node's.
template<typename Queue, typename Pool>
class ThreadedLine : public Line
{
public:
    ThreadedLine(int hops, Sink& sink)
        : _queues(static_cast<std::size_t>(hops))
        , _sink(sink)
    {
        for (PlainItem& item : _items)
            _pool.Add(&item);
        for (std::size_t hop = 0; hop < _queues.size(); ++hop)
            _threads.emplace_back([this, hop] { Work(hop); });
    }

    ~ThreadedLine() override
    {
        _running = false;
        for (std::thread& thread : _threads)
            thread.join();
    }

    bool Send(bool stamped) override
    {
        PlainItem* const item = _pool.Take();
        if (item == nullptr)
            return false;
        item->sent = stamp(stamped);
        PushInto(0, item);
        return true;
    }

private:
    void PushInto(std::size_t hop, PlainItem* item)
    {
        if (!_queues[hop].Push(item))
            std::abort(); // cannot be: all items of the pool have their place
    }

    void Work(std::size_t hop)
    {
        while (_running.load(std::memory_order_relaxed)) {
            PlainItem* const item = _queues[hop].Pop();
            if (item == nullptr)
                continue;
            if (hop + 1 < _queues.size()) {
                PushInto(hop + 1, item);
            } else {
                _sink.Arrived(item->sent);
                _pool.Give(item);
            }
        }
    }

    std::array<PlainItem, poolSize> _items;
    Pool _pool;
    std::vector<Queue> _queues;
    Sink& _sink;
    std::atomic<bool> _running{true};
    std::vector<std::thread> _threads;
};
