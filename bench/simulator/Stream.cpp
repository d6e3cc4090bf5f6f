// SPDX-License-Identifier: Apache-2.0
// What the simulated camera costs while it streams at full speed, and what it takes to get ready.

#include "AllControls.h"

#include <bench/Figures.h>
#include <simulator/Camera.h>
#include <simulator/ModeTable.h>
#include <simulator/SyntheticSource.h>

#include <atomic>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <memory>
#include <string>

using namespace simulator;

namespace {

constexpr double patience = 10.0; // s

double seconds(clockid_t clock)
{
    timespec time = {};
    clock_gettime(clock, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

void rest(long milliseconds)
{
    const timespec time = {milliseconds / 1000, milliseconds % 1000 * 1'000'000};
    nanosleep(&time, nullptr);
}

void countFrame(const VYRFrameRecord*, void* userData)
{
    static_cast<std::atomic<int>*>(userData)->fetch_add(1);
}

bool drawsTheRoom(const std::atomic<int>& frames)
{
    const double begin = seconds(CLOCK_MONOTONIC);
    while (frames < 10) { // the room is drawn by then
        if (seconds(CLOCK_MONOTONIC) - begin > patience) {
            std::fprintf(stderr, "The simulated camera has sent %d frames in %.0f seconds.\n", frames.load(), patience);
            return false;
        }
        rest(10);
    }
    return true;
}

/// Streams the whole sensor for a while, without anybody who looks, and tells which part of a core all threads used.
/// False when the camera does not come to that.
bool measureStream(const std::string& question, const Controls& controls, long milliseconds)
{
    const auto camera = std::make_shared<Camera>(std::make_unique<SyntheticSource>());
    VYRResolutionInfo mode = {};
    enumerateModes(&mode, 1, 752, 480, 0, 60.0F);
    camera->setMode(mode);
    camera->setControls([&controls](Controls& changed) { changed = controls; });
    std::atomic<int> frames = 0;
    camera->start(&countFrame, &frames);
    if (!drawsTheRoom(frames)) {
        camera->stop();
        return false;
    }
    const int firstFrame = frames;
    const double begin = seconds(CLOCK_MONOTONIC);
    const double beginProcessor = seconds(CLOCK_PROCESS_CPUTIME_ID);
    rest(milliseconds);
    const double length = seconds(CLOCK_MONOTONIC) - begin;
    const double processor = seconds(CLOCK_PROCESS_CPUTIME_ID) - beginProcessor;
    printFigure(question + ": share of a core (%)", "ours", 100.0 * processor / length);
    printFigure(question + ": frames per second", "ours", (frames - firstFrame) / length);
    camera->stop();
    return true;
}

/// What holds up the first frame of the first stream.
void measurePreparation()
{
    SyntheticSource source;
    const double begin = seconds(CLOCK_PROCESS_CPUTIME_ID);
    source.prepare();
    printFigure("simulator: processor time to draw the room (ms)", "ours",
                (seconds(CLOCK_PROCESS_CPUTIME_ID) - begin) * 1e3);
}

} // namespace

int main(int argc, char** argv)
{
    const long milliseconds = argc > 1 && std::strcmp(argv[1], "--quick") == 0 ? 300 : 4000;
    measurePreparation();
    const bool streams = measureStream("simulator: 752 x 480 at 60 fps", Controls(), milliseconds)
                      && measureStream("simulator: 752 x 480 at 60 fps, all controls", allControls(), milliseconds);
    return streams ? 0 : 1;
}
