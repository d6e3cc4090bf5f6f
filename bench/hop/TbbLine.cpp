// SPDX-License-Identifier: Apache-2.0
// oneTBB's flow graph: one serial function node a hop.

#include "LockedPool.h"

#include <tbb/flow_graph.h>
#include <tbb/global_control.h>
#include <tbb/info.h>
#include <tbb/task_arena.h>
#include <tbb/task_scheduler_observer.h>

#include <utility>

namespace {

// The library counts the processors once, at its first use. It must not be while the threads are pinned to one core,
// where it would do without any worker.
[[maybe_unused]] const int concurrency = tbb::info::default_concurrency();

/// Keeps the library's threads where the line's threads belong; they are started when the library sees fit.
class Pinning : public tbb::task_scheduler_observer
{
public:
    Pinning(tbb::task_arena& arena, Processors workers)
        : task_scheduler_observer(arena)
        , _workers(std::move(workers))
    {
        observe(true);
    }
    ~Pinning() override { observe(false); }

    void on_scheduler_entry(bool isWorker) override
    {
        if (isWorker)
            pinCallingThread(_workers);
    }

private:
    Processors _workers;
};

class TbbLine : public Line
{
    using Node = tbb::flow::function_node<PlainItem*, PlainItem*>;
    using Entry = tbb::flow::limiter_node<PlainItem*>;

public:
    TbbLine(int hops, const Processors& workers, Sink& sink)
        // As many workers as hops, beside the producer: the arena has the places, and the limit the threads, also where
        // these are more than processors.
        : _limit(tbb::global_control::max_allowed_parallelism, static_cast<std::size_t>(hops) + 1)
        , _arena(hops + 1)
        , _pinning(_arena, workers)
    {
        _arena.execute([this, hops, &sink] { Build(hops, sink); });
    }

    ~TbbLine() override { _graph->wait_for_all(); }

    bool Send(bool stamped) override
    {
        PlainItem* const item = _pool.Take();
        if (item == nullptr)
            return false;
        item->sent = stamp(stamped);
        if (_entry->try_put(item))
            return true;
        _pool.Give(item);
        return false;
    }

private:
    /// A graph belongs to the arena in which it is made.
    void Build(int hops, Sink& sink)
    {
        _graph = std::make_unique<tbb::flow::graph>();
        _entry = std::make_unique<Entry>(*_graph, queueLength);
        for (PlainItem& item : _items)
            _pool.Give(&item);
        for (int hop = 0; hop < hops; ++hop) {
            const bool first = hop == 0;
            const bool last = hop + 1 == hops;
            _nodes.push_back(
                std::make_unique<Node>(*_graph, tbb::flow::serial, [this, first, last, &sink](PlainItem* item) {
                    if (first)
                        _entry->decrementer().try_put(tbb::flow::continue_msg());
                    if (last) {
                        sink.Arrived(item->sent);
                        _pool.Give(item);
                    }
                    return item;
                }));
            if (!first)
                tbb::flow::make_edge(*_nodes[_nodes.size() - 2], *_nodes.back());
        }
        tbb::flow::make_edge(*_entry, *_nodes.front());
    }

    std::array<PlainItem, poolSize> _items;
    LockedPool _pool;
    tbb::global_control _limit;
    tbb::task_arena _arena;
    Pinning _pinning;
    std::unique_ptr<tbb::flow::graph> _graph;
    /// The nodes' own queues know no limit; further hops cannot hold more than enters here and the pool has.
    std::unique_ptr<Entry> _entry;
    std::vector<std::unique_ptr<Node>> _nodes;
};

} // namespace

std::unique_ptr<Line> makeTbbLine(int hops, const Processors& workers, Sink& sink)
{
    return std::make_unique<TbbLine>(hops, workers, sink);
}
