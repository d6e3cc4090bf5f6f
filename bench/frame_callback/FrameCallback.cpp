// SPDX-License-Identifier: Apache-2.0
// What one frame costs the camera's thread: time and allocations of the camera node's frame callback. Nobody waits for
// the frames here; what it takes to wake a worker is measured with the hops.
//
// Allocations of a frame, as counted here:
//  - none for the text of QChanged: the texts of all lengths are made once;
//  - none for the queue, which uses its blocks again;
//  - 2 for each receiver on another thread: Qt's event, and the copy of the text in it.
// Once per second of camera time the status text of InfoChanged comes on top; the frames here are 1 ms apart, so that
// it is in the figures with a thousandth.

#include <camera/VYRCameraDevice.h>
#include <camera/VYRLibrary.h>
#include <tests/support/AllocationCount.h>

#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QThread>

namespace {

VYRFrameCallback frameCallback = nullptr;
void* frameUserData = nullptr;

enum class Receiver { None, Direct, Queued };
enum class Consumer { Keeping, None };

/// Frames between two consumptions, which are left out of the time: fewer than the queue has places.
constexpr benchmark::IterationCount framesAtATime = 30;

/// A streaming camera node, and the library's side of it.
class Stream
{
public:
    explicit Stream(Receiver receiver)
        : _device(0, 640, 480, 30.0F)
    {
        const auto receive = [](const QString& text) { benchmark::DoNotOptimize(text.size()); };
        if (receiver == Receiver::Direct)
            QObject::connect(&_device, &VYRCameraDevice::QChanged, &_receiver, receive, Qt::DirectConnection);
        else if (receiver == Receiver::Queued)
            QObject::connect(&_device, &VYRCameraDevice::QChanged, &_receiver, receive, Qt::QueuedConnection);
        _device.StartProcessing();
    }

    void frame()
    {
        _record.timestamp += 10;
        frameCallback(&_record, frameUserData);
    }

    void consume()
    {
        while (NodeData* const item = _device.OutputQueue().Pop(0))
            item->Release();
    }

    /// What is queued for the receiver, left undelivered: the price of delivery is the receiver's.
    void forgetEvents() { QCoreApplication::removePostedEvents(&_receiver); }

private:
    VYRCameraDevice _device;
    QObject _receiver;
    VYRFrameRecord _record{};
};

void measure(benchmark::State& state, Receiver receiver, Consumer consumer)
{
    constexpr int warmUp = 200; // past the first of everything, and, without a consumer, until the pool is dry
    Stream stream(receiver);
    const auto afterwards = [&] {
        if (consumer == Consumer::Keeping)
            stream.consume();
        stream.forgetEvents();
    };
    for (int i = 0; i < warmUp; ++i) {
        stream.frame();
        afterwards();
    }
    std::size_t allocations = 0;
    while (state.KeepRunningBatch(framesAtATime)) {
        const std::size_t before = allocationCount();
        for (benchmark::IterationCount i = 0; i < framesAtATime; ++i)
            stream.frame();
        allocations += allocationCount() - before;
        state.PauseTiming();
        afterwards();
        state.ResumeTiming();
    }
    state.counters["allocations"] =
        benchmark::Counter(static_cast<double>(allocations), benchmark::Counter::kAvgIterations);
}

} // namespace

// In place of the library's: the node's callback is called from here, with nobody's thread in between.
extern "C" {

__attribute__((visibility("default"))) bool StartVYR(void*, VYRFrameCallback callback, void* userData, bool)
{
    frameCallback = callback;
    frameUserData = userData;
    return true;
}

__attribute__((visibility("default"))) bool StopVYR(void*)
{
    return true;
}

} // extern "C"

BENCHMARK_CAPTURE(measure, no_receiver, Receiver::None, Consumer::Keeping)->Name("frame callback, no receiver/ours");
BENCHMARK_CAPTURE(measure, direct, Receiver::Direct, Consumer::Keeping)->Name("frame callback, direct receiver/ours");
BENCHMARK_CAPTURE(measure, queued, Receiver::Queued, Consumer::Keeping)->Name("frame callback, queued receiver/ours");
BENCHMARK_CAPTURE(measure, empty_pool, Receiver::None, Consumer::None)->Name("frame callback, pool empty/ours");
