// SPDX-License-Identifier: Apache-2.0
// GStreamer's queue element: buffers of a pool are pushed through one queue a hop.

#include "Line.h"

#include <gst/gst.h>

#include <stdexcept>
#include <utility>

namespace {

GstElement* makeQueue()
{
    GstElement* const queue = gst_element_factory_make("queue", nullptr);
    if (queue == nullptr)
        throw std::runtime_error("GStreamer has no queue element");
    g_object_set(queue, "max-size-buffers", static_cast<guint>(queueLength), "max-size-bytes", 0U, "max-size-time",
                 static_cast<guint64>(0), "silent", TRUE, nullptr);
    return static_cast<GstElement*>(gst_object_ref_sink(queue));
}

class GStreamerLine : public Line
{
public:
    GStreamerLine(int hops, Processors workers, Sink& sink)
        : _workers(std::move(workers))
        , _source(gst_pad_new("source", GST_PAD_SRC))
        , _last(gst_pad_new("last", GST_PAD_SINK))
        , _pool(gst_buffer_pool_new())
        , _bus(gst_bus_new())
    {
        gst_bus_set_sync_handler(_bus, &GStreamerLine::PinStreamingThread, this, nullptr);
        FillPool();
        gst_pad_set_element_private(_last, &sink);
        gst_pad_set_chain_function(_last, &GStreamerLine::Chain);
        gst_pad_set_event_function(_last, [](GstPad*, GstObject*, GstEvent* event) -> gboolean {
            gst_event_unref(event);
            return TRUE;
        });
        auto* upstream = static_cast<GstPad*>(gst_object_ref(_source));
        gst_pad_set_active(_last, TRUE);
        for (int hop = 0; hop < hops; ++hop) {
            _queues.push_back(makeQueue());
            gst_element_set_bus(_queues.back(), _bus);
            upstream = LinkBehind(upstream, _queues.back());
        }
        gst_pad_link(upstream, _last);
        gst_object_unref(upstream);
        for (auto queue = _queues.rbegin(); queue != _queues.rend(); ++queue)
            gst_element_set_state(*queue, GST_STATE_PLAYING);
        gst_pad_set_active(_source, TRUE);
        Begin();
    }

    ~GStreamerLine() override
    {
        gst_pad_set_active(_source, FALSE);
        for (GstElement* queue : _queues) {
            gst_element_set_state(queue, GST_STATE_NULL);
            gst_object_unref(queue);
        }
        gst_pad_set_active(_last, FALSE);
        gst_buffer_pool_set_active(_pool, FALSE);
        gst_object_unref(_pool);
        gst_object_unref(_bus);
        gst_object_unref(_source);
        gst_object_unref(_last);
    }

    bool Send(bool stamped) override
    {
        GstBuffer* buffer = nullptr;
        GstBufferPoolAcquireParams parameters = {};
        parameters.flags = GST_BUFFER_POOL_ACQUIRE_FLAG_DONTWAIT;
        if (gst_buffer_pool_acquire_buffer(_pool, &buffer, &parameters) != GST_FLOW_OK)
            return false;
        GST_BUFFER_OFFSET(buffer) = static_cast<guint64>(stamp(stamped));
        return gst_pad_push(_source, buffer) == GST_FLOW_OK;
    }

private:
    /// The streaming threads come from a process-wide pool, wherever they ran before: each says when it begins.
    static GstBusSyncReply PinStreamingThread(GstBus*, GstMessage* message, gpointer self)
    {
        if (GST_MESSAGE_TYPE(message) == GST_MESSAGE_STREAM_STATUS) {
            GstStreamStatusType type = GST_STREAM_STATUS_TYPE_CREATE;
            gst_message_parse_stream_status(message, &type, nullptr);
            if (type == GST_STREAM_STATUS_TYPE_ENTER)
                pinCallingThread(static_cast<GStreamerLine*>(self)->_workers);
        }
        gst_message_unref(message);
        return GST_BUS_DROP;
    }

    static GstFlowReturn Chain(GstPad* pad, GstObject*, GstBuffer* buffer)
    {
        static_cast<Sink*>(gst_pad_get_element_private(pad))
            ->Arrived(static_cast<std::int64_t>(GST_BUFFER_OFFSET(buffer)));
        gst_buffer_unref(buffer);
        return GST_FLOW_OK;
    }

    /// Takes over `upstream` and returns the queue's own source pad.
    static GstPad* LinkBehind(GstPad* upstream, GstElement* queue)
    {
        GstPad* const input = gst_element_get_static_pad(queue, "sink");
        gst_pad_link(upstream, input);
        gst_object_unref(input);
        gst_object_unref(upstream);
        return gst_element_get_static_pad(queue, "src");
    }

    void FillPool()
    {
        GstStructure* const configuration = gst_buffer_pool_get_config(_pool);
        gst_buffer_pool_config_set_params(configuration, nullptr, 16, poolSize, poolSize);
        gst_buffer_pool_set_config(_pool, configuration);
        gst_buffer_pool_set_active(_pool, TRUE);
    }

    void Begin()
    {
        gst_pad_push_event(_source, gst_event_new_stream_start("hop"));
        GstSegment segment;
        gst_segment_init(&segment, GST_FORMAT_TIME);
        gst_pad_push_event(_source, gst_event_new_segment(&segment));
    }

    Processors _workers;
    GstPad* _source;
    GstPad* _last;
    GstBufferPool* _pool;
    GstBus* _bus;
    std::vector<GstElement*> _queues;
};

} // namespace

std::unique_ptr<Line> makeGStreamerLine(int hops, const Processors& workers, Sink& sink)
{
    if (!gst_is_initialized()) {
        gst_init(nullptr, nullptr);
        // Otherwise those without work end one by one, and allocate at it, in the next contender's turn.
        g_thread_pool_set_max_unused_threads(-1);
        g_thread_pool_set_max_idle_time(0);
    }
    return std::make_unique<GStreamerLine>(hops, workers, sink);
}
