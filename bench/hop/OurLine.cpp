// SPDX-License-Identifier: Apache-2.0
// Our own nodes, queues and pool.

#include "Line.h"

#include <libs/IPPCoreLib/ImageProcessingNodeWithThread.h>
#include <libs/IPPCoreLib/ImageProcessingPipeline.h>
#include <libs/IPPCoreLib/ObjectCache.h>

#include <atomic>
#include <cstdlib>

namespace {

/// An item that several nodes may hold: every node's worker releases it once, the last of them gives it back.
class Item final : public NodeData
{
public:
    explicit Item(ObjectCache<Item>& pool)
        : _pool(pool)
    {
    }

    void Lend() { _holders.store(1, std::memory_order_relaxed); }
    void Retain() { _holders.fetch_add(1, std::memory_order_relaxed); }

    void Release() override
    {
        if (_holders.load(std::memory_order_acquire) == 1 || _holders.fetch_sub(1, std::memory_order_acq_rel) == 1)
            _pool.Release(this);
    }

    std::int64_t sent = 0;

private:
    ObjectCache<Item>& _pool;
    std::atomic<int> _holders{0};
};

void pushInto(ImageProcessingNode& node, Item* item)
{
    if (!node.OutputQueue().Push(item))
        std::abort(); // cannot be: all items of the pool have their place
}

/// Like the camera: has no thread of its own, and is pushed into from outside.
class SourceNode : public ImageProcessingNode
{
public:
    void StartProcessing() override {}
    void StopProcessing() override {}
    void Close() override {}
    void Process(NodeData*) override {}
};

class ForwardNode : public ImageProcessingNodeWithThread
{
public:
    ~ForwardNode() override { ForwardNode::StopProcessing(); }
    void Close() override {}

    void Process(NodeData* data) override
    {
        Item* const item = static_cast<Item*>(data);
        item->Retain();
        pushInto(*this, item);
    }
};

class LastNode : public ImageProcessingNodeWithThread
{
public:
    explicit LastNode(Sink& sink)
        : _sink(sink)
    {
    }
    ~LastNode() override { LastNode::StopProcessing(); }
    void Close() override {}

    void Process(NodeData* data) override { _sink.Arrived(static_cast<Item*>(data)->sent); }

private:
    Sink& _sink;
};

class OurLine : public Line
{
public:
    OurLine(int hops, Sink& sink)
        : _source(new SourceNode)
    {
        _pool.Fill([this] { return new Item(_pool); });
        _pipeline.AddNode(_source);
        for (int hop = 1; hop < hops; ++hop)
            _pipeline.AddNode(new ForwardNode);
        _pipeline.AddNode(new LastNode(sink));
        _pipeline.Start();
    }

    ~OurLine() override
    {
        _pipeline.Stop();
        _pipeline.DeleteNodes();
        _pool.Clear([](Item* item) { delete item; });
    }

    bool Send(bool stamped) override
    {
        Item* const item = _pool.Acquire();
        if (item == nullptr)
            return false;
        item->Lend();
        item->sent = stamp(stamped);
        pushInto(*_source, item);
        return true;
    }

private:
    ObjectCache<Item> _pool{poolSize};
    ImageProcessingPipeline _pipeline;
    SourceNode* _source; ///< the pipeline's
};

} // namespace

std::unique_ptr<Line> makeOurLine(int hops, const Processors&, Sink& sink)
{
    return std::make_unique<OurLine>(hops, sink);
}
