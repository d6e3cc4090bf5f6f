// SPDX-License-Identifier: Apache-2.0
// Our own queue and pool, driven by plain threads as the queues of the peers are: without what a node does beside,
// which is to keep statistics of its time.

#include "ThreadedLine.h"

#include <libs/IPPCoreLib/ObjectCache.h>
#include <libs/IPPCoreLib/WaitableQueue.h>

namespace {

class OurQueue
{
public:
    bool Push(PlainItem* item) { return _queue.Push(item); }
    PlainItem* Pop() { return static_cast<PlainItem*>(_queue.Pop(longestWait)); }

private:
    WaitableQueue<NodeData*> _queue{queueLength + 1};
};

class OurPool
{
public:
    ~OurPool()
    {
        _cache.Clear([](PlainItem*) {});
    }

    void Add(PlainItem* item)
    {
        _items.push_back(item);
        std::size_t next = 0;
        _cache.Fill([&] { return next < _items.size() ? _items[next++] : nullptr; });
    }

    PlainItem* Take() { return _cache.Acquire(); }
    void Give(PlainItem* item) { _cache.Release(item); }

private:
    std::vector<PlainItem*> _items;
    ObjectCache<PlainItem> _cache{poolSize};
};

} // namespace

std::unique_ptr<Line> makeOurQueueLine(int hops, const Processors&, Sink& sink)
{
    return std::make_unique<ThreadedLine<OurQueue, OurPool>>(hops, sink);
}
