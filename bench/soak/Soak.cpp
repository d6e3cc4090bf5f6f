// SPDX-License-Identifier: Apache-2.0
// Drives the frame path for long, with many restarts, and says whether anything was lost or has grown.

#include "Footprint.h"
#include "LibraryTap.h"
#include "UnevenWorker.h"

#include <camera/VYRCameraDevice.h>
#include <libs/IPPCoreLib/ImageProcessingPipeline.h>
#include <tests/support/WaitFor.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

namespace {

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool memoryIsJudged = false; // a sanitizer keeps books of its own, which grow
#else
constexpr bool memoryIsJudged = true;
#endif

constexpr double allowedGrowth = 0.01;
constexpr std::size_t fewPages = 32 * 1024;        // that threads' stacks may take at one start and not at another
constexpr std::uint64_t fewestFramesPerStart = 80; // that a worker may miss 40 of
constexpr auto longestSilence = std::chrono::minutes(2);

struct Options
{
    std::uint64_t frames = 1'000'000;
    std::uint64_t starts = 1'000;
    float fps = 0.0F; ///< 0: the camera's fastest
};

/// Everything that did not hold.
class Problems
{
public:
    void expect(bool holds, const char* what, std::uint64_t start)
    {
        if (holds)
            return;
        ++_count;
        if (_count <= 20)
            std::printf("FAILED at start %llu: %s\n", static_cast<unsigned long long>(start), what);
    }

    bool none() const { return _count == 0; }

private:
    int _count = 0;
};

VYRResolutionInfo fastestMode()
{
    std::vector<VYRResolutionInfo> modes(32'768);
    const int count =
        EnumerateResolutions(modes.data(), static_cast<int>(modes.size()), VYRAny, VYRAny, VYRAny, VYRAnyFps);
    if (count < 1)
        return {};
    // Of the fastest ones the smallest, since the making of the pictures is not what is looked at.
    return *std::max_element(
        modes.begin(), modes.begin() + count, [](const VYRResolutionInfo& a, const VYRResolutionInfo& b) {
            return a.maxFps != b.maxFps ? a.maxFps < b.maxFps : a.width * a.height > b.width * b.height;
        });
}

UnevenWorker::Manner mannerOf(std::uint64_t start)
{
    switch (start % 4) {
    case 1:
        return UnevenWorker::Manner::ComesLate;
    case 3:
        return UnevenWorker::Manner::Pauses;
    default:
        return UnevenWorker::Manner::Prompt;
    }
}

/// Returns when the library has called back so often, or false when it has been silent for too long.
bool waitForFrames(const LibraryTap& tap, std::uint64_t number)
{
    while (tap.emitted() < number) {
        const std::uint64_t before = tap.emitted();
        // cppcheck-suppress knownConditionTrueFalse ; the library's thread counts meanwhile
        if (!waitFor([&] { return tap.emitted() != before; }, longestSilence))
            return false;
    }
    return true;
}

std::uint64_t accountedFor(const FrameCounts& counts, const Delivered& delivered)
{
    return delivered.frames + counts.poolEmpty + counts.refused + counts.leftQueued + counts.ignored;
}

class Soak
{
public:
    Soak(const Options& options, const VYRResolutionInfo& mode)
        : _options(options)
        , _device(mode.binning, mode.width, mode.height, mode.fps)
        , _tap(_device, _delivered.frames)
    {
    }

    /// Whether everything holds.
    bool run()
    {
        const std::uint64_t warmUp = std::max<std::uint64_t>(_options.starts / 4, 8);
        Footprint before{};
        for (std::uint64_t start = 1; start <= _options.starts && _problems.none(); ++start) {
            runOnce(start);
            if (start <= warmUp) // more than once, since measuring takes memory the first time
                before = Footprint::measure();
        }
        _problems.expect(_tap.counts().refused > 0, "no frame was refused, so nothing was shown about it", 0);
        _problems.expect(_tap.counts().poolEmpty > 0, "no frame met an empty pool, so nothing was shown about it", 0);
        // The kernel may list a thread for a moment after it was joined.
        waitFor([&] { return Footprint::measure().threads <= before.threads; });
        const Footprint after = Footprint::measure();
        judge(before, after);
        report(before, after);
        return _problems.none();
    }

private:
    void runOnce(std::uint64_t start)
    {
        const FrameCounts before = _tap.counts();
        const std::uint64_t deliveredBefore = _delivered.frames;
        ImageProcessingPipeline pipeline;
        pipeline.AddNode(&_device);
        pipeline.AddNode(new UnevenWorker(_tap, _delivered, mannerOf(start)));
        pipeline.Start();
        _tap.setStreaming(true);
        const bool heard = waitForFrames(_tap, _options.frames * start / _options.starts);
        // A library that catches up may have called back as often before the worker's first turn.
        const bool delivers = waitFor([&] { return _delivered.frames > deliveredBefore; }, longestSilence);
        _tap.setStreaming(false);
        pipeline.Stop();
        pipeline.RemoveNode(&_device); // the worker goes with the pipeline, since it can be started only once

        const FrameCounts& counts = _tap.counts();
        _problems.expect(heard, "the camera library has gone silent", start);
        _problems.expect(delivers, "nothing was delivered", start);
        _problems.expect(counts.emitted == accountedFor(counts, _delivered), "frames are unaccounted for", start);
        // For this start alone: where a full queue had room again by the time of the push, a slot could hide that is
        // lost at another start.
        _problems.expect(counts.refused - before.refused <= counts.metFull - before.metFull,
                         "a slot was lost without a full queue", start);
        _problems.expect(counts.baseless == 0, "a frame was dropped for no reason", start);
        _problems.expect(_tap.poolIsWhole(), "the pool has not regained all its slots", start);
        _problems.expect(_device.Size() == 0, "the queue is not empty after the stop", start);
        _problems.expect(_delivered.outOfOrder == 0, "frames came out of order", start);
    }

    void judge(const Footprint& before, const Footprint& after)
    {
        const auto hasGrown = [](std::size_t from, std::size_t to) {
            return static_cast<double>(to) > static_cast<double>(from) * (1.0 + allowedGrowth);
        };
        if (memoryIsJudged) {
            _problems.expect(before.anonymousBytes > 0, "resident memory could not be read", _options.starts);
            _problems.expect(!hasGrown(before.anonymousBytes + fewPages, after.anonymousBytes),
                             "resident memory has grown", _options.starts);
            _problems.expect(!hasGrown(before.heapBytes, after.heapBytes), "the heap has grown", _options.starts);
        }
        _problems.expect(after.descriptors <= before.descriptors, "descriptors have leaked", _options.starts);
        _problems.expect(after.threads <= before.threads, "threads have leaked", _options.starts);
    }

    void report(const Footprint& before, const Footprint& after) const
    {
        const FrameCounts& counts = _tap.counts();
        const auto count = [](const char* what, std::uint64_t value, const char* remark) {
            std::printf("%-18s %12llu  %s\n", what, static_cast<unsigned long long>(value), remark);
        };
        const auto size = [](const char* what, std::size_t from, std::size_t to) {
            const double growth = 100.0 * (static_cast<double>(to) / static_cast<double>(from) - 1.0);
            std::printf("%-18s %9zu KB  after warm-up, %zu KB at the end: %+.2f %%\n", what, from / 1024, to / 1024,
                        growth);
        };
        count("frames", counts.emitted, "called back by the library");
        count("  delivered", _delivered.frames.load(), "to the worker");
        count("  pool empty", counts.poolEmpty, "dropped, all 32 being out");
        count("  refused", counts.refused, "by a full queue, each with its slot until the stop");
        count("  left queued", counts.leftQueued, "at the stops");
        count("  ignored", counts.ignored, "while the camera was starting or stopping");
        count("out of order", _delivered.outOfOrder, "");
        count("starts and stops", _options.starts, "");
        size("resident memory", before.anonymousBytes, after.anonymousBytes);
        size("heap in use", before.heapBytes, after.heapBytes);
        std::printf("%-18s %12zu  after warm-up, %zu at the end\n", "descriptors", before.descriptors,
                    after.descriptors);
        std::printf("%-18s %12zu  after warm-up, %zu at the end\n", "threads", before.threads, after.threads);
    }

    const Options _options;
    VYRCameraDevice _device;
    Delivered _delivered;
    LibraryTap _tap;
    Problems _problems;
};

/// False when the arguments make no sense.
bool readOptions(int count, char** arguments, Options& options)
{
    for (int i = 1; i + 1 < count; i += 2) {
        if (std::strcmp(arguments[i], "--frames") == 0)
            options.frames = std::strtoull(arguments[i + 1], nullptr, 10);
        else if (std::strcmp(arguments[i], "--starts") == 0)
            options.starts = std::strtoull(arguments[i + 1], nullptr, 10);
        else if (std::strcmp(arguments[i], "--fps") == 0)
            options.fps = std::strtof(arguments[i + 1], nullptr);
        else
            return false;
    }
    return count % 2 == 1 && options.starts >= 16 && options.frames / options.starts >= fewestFramesPerStart;
}

} // namespace

int main(int count, char** arguments)
{
    Options options;
    if (!readOptions(count, arguments, options)) {
        std::fprintf(stderr,
                     "usage: %s [--frames N] [--starts N] [--fps F]\n"
                     "At least 16 starts, of at least %llu frames each.\n",
                     arguments[0], static_cast<unsigned long long>(fewestFramesPerStart));
        return 2;
    }
    std::setvbuf(stdout, nullptr, _IOLBF, 0);

    VYRResolutionInfo mode = fastestMode();
    mode.fps = options.fps > 0.0F ? std::min(options.fps, mode.maxFps) : mode.maxFps;
    std::printf("camera library     %s, %d x %d at %.0f frames per second\n", GetLibVersion(), mode.width, mode.height,
                static_cast<double>(mode.fps));

    const auto began = std::chrono::steady_clock::now();
    const bool holds = Soak(options, mode).run();
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - began;
    std::printf("%s, in %.0f s\n", holds ? "everything holds" : "FAILED", took.count());
    return holds ? 0 : 1;
}
