// SPDX-License-Identifier: Apache-2.0
// What a pair of pictures of the simulated camera costs, without and with each control. The whole sensor is the largest
// mode.

#include "AllControls.h"

#include <simulator/FrameMaker.h>
#include <simulator/ModeTable.h>
#include <simulator/SyntheticSource.h>

#include <benchmark/benchmark.h>

using namespace simulator;

namespace {

constexpr double framesPerSecond = 60.0;

VYRResolutionInfo mode(int width, int height, int binning)
{
    VYRResolutionInfo found = {};
    enumerateModes(&found, 1, width, height, binning, -1.0F);
    return found;
}

/// Makes one pair after the other, as the streaming thread does.
// cppcheck-suppress constParameter ; the loop over it counts in it
void makePairs(benchmark::State& state, const VYRResolutionInfo& mode, const Controls& controls)
{
    SyntheticSource source;
    FrameRing ring;
    FrameMaker maker(mode, source, ring);
    for (std::size_t i = 0; i < FrameRing::capacity; ++i) // draws what stands still, and touches all memory
        maker.make(0.0, controls);
    double time = 0.0;
    while (state.KeepRunning())
        benchmark::DoNotOptimize(maker.make(time += 1.0 / framesPerSecond, controls));
}

void pair(benchmark::State& state)
{
    makePairs(state, mode(752, 480, 0), Controls());
}
BENCHMARK(pair)->Name("simulator: pair of 752 x 480/ours");

void binnedPair(benchmark::State& state)
{
    makePairs(state, mode(376, 240, 5), Controls());
}
BENCHMARK(binnedPair)->Name("simulator: pair of 376 x 240, binned 2 x 2/ours");

void pairWithExposure(benchmark::State& state)
{
    Controls controls;
    controls.exposure = 70.0;
    makePairs(state, mode(752, 480, 0), controls);
}
BENCHMARK(pairWithExposure)->Name("simulator: pair with exposure/ours");

void pairWithLamp(benchmark::State& state)
{
    Controls controls;
    controls.led = 60.0;
    makePairs(state, mode(752, 480, 0), controls);
}
BENCHMARK(pairWithLamp)->Name("simulator: pair with lamp/ours");

void flippedPair(benchmark::State& state)
{
    Controls controls;
    controls.horizontalFlip = true;
    controls.verticalFlip = true;
    makePairs(state, mode(752, 480, 0), controls);
}
BENCHMARK(flippedPair)->Name("simulator: pair with flips/ours");

void undistortedPair(benchmark::State& state)
{
    Controls controls;
    controls.undistort = true;
    makePairs(state, mode(752, 480, 0), controls);
}
BENCHMARK(undistortedPair)->Name("simulator: undistorted pair/ours");

void pairWithAll(benchmark::State& state)
{
    makePairs(state, mode(752, 480, 0), allControls());
}
BENCHMARK(pairWithAll)->Name("simulator: pair with all controls/ours");

} // namespace
