// SPDX-License-Identifier: Apache-2.0
// Tests of libVYR.so as a program uses it, with the synthetic scene. Linked to the library alone: no OpenCV.

#include "Receiver.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <limits>
#include <string>
#include <thread>
#include <vector>

#include <time.h>

using test::meanOf;
using test::OpenedCamera;
using test::pixelsOf;
using test::Receiver;

namespace {

std::int64_t now()
{
    timespec time = {};
    clock_gettime(CLOCK_MONOTONIC, &time);
    return static_cast<std::int64_t>(time.tv_sec) * 1000000000 + time.tv_nsec;
}

/// Keeps this thread busy until a point in time, as a receiver that computes too much.
void computeUntil(std::int64_t time)
{
    while (now() < time) {
    }
}

std::string text(void* handle, int id)
{
    char buffer[256];
    std::memset(buffer, 'x', sizeof(buffer));
    EXPECT_EQ(__VYRParamGet__(handle, id, buffer), VYRSuccess);
    EXPECT_NE(std::memchr(buffer, 0, sizeof(buffer)), nullptr);
    return buffer;
}

/// The mean grey value of the left picture after a control was set.
template<typename... Values>
double brightnessWith(int id, Values... values)
{
    OpenedCamera camera;
    EXPECT_TRUE(camera.setMode(320, 240, 5, 30.0F));
    EXPECT_EQ(__VYRParamSet__(camera.handle, id, values...), VYRSuccess);
    double mean = 0.0;
    Receiver receiver([&](const VYRFrame1& frame) { mean = meanOf(pixelsOf(frame, frame.left)); });
    EXPECT_TRUE(camera.start(receiver));
    EXPECT_TRUE(receiver.waitFor(1));
    StopVYR(camera.handle);
    return mean;
}

} // namespace

TEST(Library, ExportsItsOperationsAndNothingElse)
{
    std::FILE* const nm = popen(NM_PROGRAM " -D --defined-only --format=posix " VYR_LIBRARY, "r");
    ASSERT_NE(nm, nullptr);
    std::vector<std::string> names;
    char line[1024];
    while (std::fgets(line, sizeof(line), nm) != nullptr)
        names.emplace_back(line, std::strcspn(line, " "));
    EXPECT_EQ(pclose(nm), 0);
    EXPECT_THAT(names, testing::UnorderedElementsAre("CloseVYR", "EnumerateResolutions", "GetLibVersion", "OpenVYR",
                                                     "StartVYR", "StopVYR", "VYRFrameLayout", "__VYRParamGet__",
                                                     "__VYRParamSet__"));
}

TEST(Library, TheSyntheticCameraDoesWithoutOpenCV)
{
    OpenedCamera camera;
    ASSERT_TRUE(camera.isOpen());
    Receiver receiver;
    ASSERT_TRUE(camera.start(receiver));
    ASSERT_TRUE(receiver.waitFor(1));
    std::ifstream maps("/proc/self/maps");
    const std::string mapped((std::istreambuf_iterator<char>(maps)), std::istreambuf_iterator<char>());
    EXPECT_NE(mapped.find("libVYR.so"), std::string::npos);
    EXPECT_EQ(mapped.find("opencv"), std::string::npos);
    EXPECT_EQ(mapped.find("libVYRPlayback"), std::string::npos);
}

TEST(Library, NamesItsVersionAndLayout)
{
    EXPECT_STREQ(GetLibVersion(), "1.0 (simulator)");
    EXPECT_STREQ(VYRFrameLayout(), "VYR-frame-1");
}

TEST(Library, EnumeratesWithoutAndWithAnOpenCamera)
{
    std::vector<VYRResolutionInfo> modes(32768);
    const int before = EnumerateResolutions(modes.data(), 32768, -1, -1, -1, -1.0F);
    EXPECT_GT(before, 5000);
    OpenedCamera camera;
    EXPECT_EQ(EnumerateResolutions(modes.data(), 32768, -1, -1, -1, -1.0F), before);
    EXPECT_EQ(EnumerateResolutions(nullptr, 32768, -1, -1, -1, -1.0F), 0);
    EXPECT_EQ(EnumerateResolutions(modes.data(), 0, -1, -1, -1, -1.0F), 0);
}

TEST(Library, OnlyOneCanHaveTheCameraOpen)
{
    OpenedCamera first;
    ASSERT_TRUE(first.isOpen());
    void* second = &first;
    EXPECT_FALSE(OpenVYR(&second));
    EXPECT_EQ(second, nullptr);
    CloseVYR(first.handle);
    EXPECT_TRUE(OpenVYR(&first.handle));
}

TEST(Library, NoneMeansNoCameraWithoutAWord)
{
    testing::internal::CaptureStderr();
    const OpenedCamera camera("none");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_FALSE(camera.isOpen());
    EXPECT_EQ(camera.handle, nullptr);
}

TEST(Library, AnUnknownSourceIsNamed)
{
    testing::internal::CaptureStderr();
    const OpenedCamera camera("webcam:0");
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "libVYR: VYR_SOURCE=webcam:0: unknown source, expected none, playback:FOLDER or playback:FILE\n");
    EXPECT_FALSE(camera.isOpen());
}

TEST(Library, AnEmptySourceIsTheSyntheticScene)
{
    const OpenedCamera camera("");
    EXPECT_TRUE(camera.isOpen());
}

TEST(Library, TellsWhatTheDeviceIs)
{
    const OpenedCamera camera;
    EXPECT_EQ(text(camera.handle, VYRDeviceName), "VYR Simulator");
    EXPECT_EQ(text(camera.handle, VYRSerialNumber), "SIM-0001");
    EXPECT_EQ(text(camera.handle, VYRFirmwareVersion), "1.0.0");
    EXPECT_EQ(text(camera.handle, VYRFirmwareBuildTime), "2026-11-20 12:00:00");
}

TEST(Library, ReservedParametersGiveZero)
{
    const OpenedCamera camera;
    for (const int id : {VYRParameter18, VYRParameter19}) {
        std::int32_t value = 77;
        EXPECT_EQ(__VYRParamGet__(camera.handle, id, &value), VYRSuccess);
        EXPECT_EQ(value, 0);
    }
}

TEST(Library, EveryControlCanBeSet)
{
    const OpenedCamera camera;
    const VYRResolutionInfo mode = {320, 240, 5, 30.0F, 0.5F, 60.0F};
    EXPECT_EQ(__VYRParamSet__(camera.handle, VYRResolution, mode), VYRSuccess);
    EXPECT_EQ(__VYRParamSet__(camera.handle, VYRExposure, 40.0, 0), VYRSuccess);
    EXPECT_EQ(__VYRParamSet__(camera.handle, VYRGain, 40.0), VYRSuccess);
    EXPECT_EQ(__VYRParamSet__(camera.handle, VYRHorizontalFlip, 1), VYRSuccess);
    EXPECT_EQ(__VYRParamSet__(camera.handle, VYRVerticalFlip, 1), VYRSuccess);
    EXPECT_EQ(__VYRParamSet__(camera.handle, VYRSwapCameras, 1), VYRSuccess);
    EXPECT_EQ(__VYRParamSet__(camera.handle, VYRLed, 30.0), VYRSuccess);
    EXPECT_EQ(__VYRParamSet__(camera.handle, VYRUndistort, 1), VYRSuccess);
    EXPECT_EQ(__VYRParamSet__(camera.handle, VYRImuRange, VYR_ACCEL_RANGE_8G, VYR_GYRO_RANGE_1000), VYRSuccess);
}

TEST(Library, UnknownParametersAreRefused)
{
    const OpenedCamera camera;
    for (const int id : {-1, 0, 1, 6, 8, 14, 15, 16, 17, 20, 21, 1000})
        EXPECT_EQ(__VYRParamGet__(camera.handle, id, nullptr, nullptr), VYRUnknownParameter) << id;
    for (const int id : {-1, 0, 1, 2, 5, 7, 14, 15, 16, 18, 19, 21, 1000})
        EXPECT_EQ(__VYRParamSet__(camera.handle, id, 0, 0), VYRUnknownParameter) << id;
}

TEST(Library, NullPointersAreRefused)
{
    const OpenedCamera camera;
    int width = 0;
    char* const nothing = nullptr;
    int* const nowhere = nullptr;
    for (const int id : {2, 3, 4, 5, 18, 19})
        EXPECT_EQ(__VYRParamGet__(camera.handle, id, nothing), VYRValueRefused) << id;
    EXPECT_EQ(__VYRParamGet__(camera.handle, VYRFrameSize, &width, nowhere), VYRValueRefused);
    EXPECT_EQ(__VYRParamGet__(camera.handle, VYRFrameSize, nowhere, &width), VYRValueRefused);
    EXPECT_FALSE(OpenVYR(nullptr));
    EXPECT_FALSE(StartVYR(camera.handle, nullptr, nullptr, true));
}

TEST(Library, WithoutACameraEveryCallFailsAndNoneCrashes)
{
    OpenedCamera camera;
    void* const closed = camera.handle;
    CloseVYR(camera.handle);
    int stranger = 0;
    for (void* const handle : {static_cast<void*>(nullptr), closed, static_cast<void*>(&stranger)}) {
        char buffer[256] = "";
        Receiver receiver;
        EXPECT_EQ(__VYRParamGet__(handle, VYRDeviceName, buffer), VYRNoCamera);
        EXPECT_EQ(__VYRParamSet__(handle, VYRExposure, 1.0, 0), VYRNoCamera);
        EXPECT_FALSE(StartVYR(handle, &Receiver::callback, &receiver, true));
        EXPECT_FALSE(StopVYR(handle));
        CloseVYR(handle);
    }
}

TEST(Library, UnsupportedModesAndRangesAreRefusedAndChangeNothing)
{
    OpenedCamera camera;
    ASSERT_TRUE(camera.setMode(320, 240, 5, 30.0F));
    const VYRResolutionInfo unsupported = {321, 240, 5, 30.0F, 0.5F, 60.0F};
    EXPECT_EQ(__VYRParamSet__(camera.handle, VYRResolution, unsupported), VYRValueRefused);
    const VYRResolutionInfo tooFast = {320, 240, 5, 1000.0F, 0.5F, 1000.0F};
    EXPECT_EQ(__VYRParamSet__(camera.handle, VYRResolution, tooFast), VYRValueRefused);
    const VYRResolutionInfo noNumber = {320, 240, 5, std::numeric_limits<float>::quiet_NaN(), 0.5F, 60.0F};
    EXPECT_EQ(__VYRParamSet__(camera.handle, VYRResolution, noNumber), VYRValueRefused);
    int width = 0;
    int height = 0;
    EXPECT_EQ(__VYRParamGet__(camera.handle, VYRFrameSize, &width, &height), VYRSuccess);
    EXPECT_EQ(width, 320);
    EXPECT_EQ(height, 240);
    EXPECT_EQ(__VYRParamSet__(camera.handle, VYRImuRange, 4, 0), VYRValueRefused);
    EXPECT_EQ(__VYRParamSet__(camera.handle, VYRImuRange, 0, -1), VYRValueRefused);
}

TEST(Library, BeforeAnyModeWasSetTheWholeSensorStreams)
{
    OpenedCamera camera;
    Receiver receiver;
    ASSERT_TRUE(camera.start(receiver));
    ASSERT_TRUE(receiver.waitFor(1));
    EXPECT_EQ(receiver.frames()[0].width, 752);
    EXPECT_EQ(receiver.frames()[0].height, 480);
}

TEST(Library, ARecordDescribesItsPictures)
{
    OpenedCamera camera;
    ASSERT_TRUE(camera.setMode(188, 120, 10, 60.0F));
    Receiver receiver;
    ASSERT_TRUE(camera.start(receiver));
    ASSERT_TRUE(receiver.waitFor(3));
    StopVYR(camera.handle);
    for (const VYRFrame1& frame : receiver.frames()) {
        EXPECT_EQ(frame.recordSize, 80U);
        EXPECT_EQ(frame.width, 188);
        EXPECT_EQ(frame.height, 120);
        EXPECT_EQ(frame.bytesPerRow, 192U);
        EXPECT_EQ(frame.bitsPerPixel, 8);
        EXPECT_NE(frame.left.pixels, nullptr);
        EXPECT_NE(frame.left.pixels, frame.right.pixels);
    }
}

TEST(Library, AModeSetWhileStreamingWaitsForTheNextStart)
{
    OpenedCamera camera;
    ASSERT_TRUE(camera.setMode(320, 240, 5, 60.0F));
    Receiver receiver;
    ASSERT_TRUE(camera.start(receiver));
    ASSERT_TRUE(camera.setMode(192, 120, 0, 60.0F));
    int width = 0;
    int height = 0;
    EXPECT_EQ(__VYRParamGet__(camera.handle, VYRFrameSize, &width, &height), VYRSuccess);
    EXPECT_EQ(width, 320);
    ASSERT_TRUE(receiver.waitFor(receiver.count() + 2));
    Receiver next;
    ASSERT_TRUE(camera.start(next));
    EXPECT_EQ(__VYRParamGet__(camera.handle, VYRFrameSize, &width, &height), VYRSuccess);
    EXPECT_EQ(width, 192);
    EXPECT_EQ(height, 120);
    ASSERT_TRUE(next.waitFor(1));
    EXPECT_EQ(receiver.frames().back().width, 320);
    EXPECT_EQ(next.frames()[0].width, 192);
}

TEST(Library, FramesComeAtTheRateAskedFor)
{
    OpenedCamera camera;
    ASSERT_TRUE(camera.setMode(192, 120, 0, 200.0F));
    std::vector<std::int64_t> times;
    Receiver receiver([&](const VYRFrame1&) { times.push_back(now()); });
    const std::int64_t start = now();
    ASSERT_TRUE(camera.start(receiver));
    ASSERT_TRUE(receiver.waitFor(150));
    StopVYR(camera.handle);
    const std::vector<VYRFrame1> frames = receiver.frames();
    for (std::size_t i = 0; i < frames.size(); ++i) {
        // 5 ms a frame are 50 units of time, exactly and without an error that grows.
        const std::int64_t sinceFirst = static_cast<std::int64_t>(frames[i].timestamp) - frames[0].timestamp;
        EXPECT_NEAR(static_cast<double>(sinceFirst), 50.0 * frames[i].frameCounter, 1.0);
        EXPECT_GE(times[i] - start, static_cast<std::int64_t>(frames[i].frameCounter) * 5000000) << "never early";
    }
    EXPECT_EQ(frames[0].frameCounter, 0U);
    for (std::size_t i = 1; i < frames.size(); ++i)
        EXPECT_GT(frames[i].frameCounter, frames[i - 1].frameCounter);
}

TEST(Library, HighModesReachTwoHundredAndFifty)
{
    OpenedCamera camera;
    ASSERT_TRUE(camera.setMode(752, 120, 0, 250.0F));
    Receiver receiver;
    ASSERT_TRUE(camera.start(receiver));
    ASSERT_TRUE(receiver.waitFor(100));
    StopVYR(camera.handle);
    const VYRFrame1 last = receiver.frames()[99];
    EXPECT_NEAR((last.timestamp - receiver.frames()[0].timestamp) / 40.0, last.frameCounter, 0.5);
}

TEST(Library, ASlowReceiverMissesFramesAndGetsNoBurst)
{
    OpenedCamera camera;
    ASSERT_TRUE(camera.setMode(192, 120, 0, 100.0F));
    std::vector<std::int64_t> came;
    Receiver receiver([&](const VYRFrame1&) {
        came.push_back(now());
        computeUntil(came.back() + 35000000); // three and a half frames
    });
    ASSERT_TRUE(camera.start(receiver));
    ASSERT_TRUE(receiver.waitFor(5));
    StopVYR(camera.handle);
    const std::vector<VYRFrame1> frames = receiver.frames();
    for (std::size_t i = 1; i < frames.size(); ++i) {
        EXPECT_GE(frames[i].frameCounter, frames[i - 1].frameCounter + 4) << "the counter jumps over what was missed";
        const std::int64_t between = static_cast<std::int64_t>(frames[i].timestamp) - frames[i - 1].timestamp;
        EXPECT_GE(between, 350) << "what comes next is new, not what was due meanwhile";
    }
}

TEST(Library, SixtyThreeLaterFramesLeaveAFrameAsItWas)
{
    OpenedCamera camera;
    ASSERT_TRUE(camera.setMode(192, 120, 0, 240.0F));
    std::vector<const std::uint8_t*> pictures;
    std::vector<std::vector<std::uint8_t>> copies;
    std::atomic<bool> allSame = true;
    Receiver receiver([&](const VYRFrame1& frame) {
        if (pictures.size() >= 63) {
            const std::size_t held = pictures.size() - 63;
            allSame = allSame && std::equal(copies[held].begin(), copies[held].end(), pictures[held]);
        }
        pictures.push_back(frame.right.pixels);
        copies.emplace_back(frame.right.pixels, frame.right.pixels + 192 * 120);
    });
    ASSERT_TRUE(camera.start(receiver));
    ASSERT_TRUE(receiver.waitFor(80));
    ASSERT_TRUE(camera.start(receiver)); // the ring goes on over a restart
    ASSERT_TRUE(receiver.waitFor(150));
    StopVYR(camera.handle);
    EXPECT_TRUE(allSame);
    for (std::size_t i = pictures.size() - 64; i < pictures.size(); ++i)
        EXPECT_TRUE(std::equal(copies[i].begin(), copies[i].end(), pictures[i])) << "readable until the camera closes";
}

TEST(Library, EveryTenthFrameCarriesSensorData)
{
    OpenedCamera camera;
    ASSERT_TRUE(camera.setMode(192, 120, 0, 200.0F));
    Receiver receiver;
    ASSERT_TRUE(camera.start(receiver));
    ASSERT_TRUE(receiver.waitFor(41));
    StopVYR(camera.handle);
    const std::vector<VYRFrame1> frames = receiver.frames();
    for (std::size_t i = 0; i < frames.size(); ++i) {
        EXPECT_EQ(frames[i].hasSensorData != 0, i % 10 == 0) << i;
        if (frames[i].hasSensorData != 0) {
            EXPECT_NEAR(frames[i].temperature, 24.0F, 1.0F);
            EXPECT_NEAR(frames[i].acceleration[1], -1.0F, 0.05F);
        } else {
            EXPECT_EQ(frames[i].temperature, 0.0F);
            EXPECT_EQ(frames[i].acceleration[1], 0.0F);
        }
    }
}

TEST(Library, TimestampsGoOnAndCountersStartAgainOverARestart)
{
    OpenedCamera camera;
    ASSERT_TRUE(camera.setMode(192, 120, 0, 100.0F));
    Receiver first;
    ASSERT_TRUE(camera.start(first));
    ASSERT_TRUE(first.waitFor(3));
    ASSERT_TRUE(StopVYR(camera.handle));
    Receiver second;
    ASSERT_TRUE(camera.start(second));
    ASSERT_TRUE(second.waitFor(1));
    EXPECT_GE(second.frames()[0].timestamp, first.frames().back().timestamp);
    EXPECT_EQ(second.frames()[0].frameCounter, 0U);
}

TEST(Library, StartedTwiceItRestartsWithTheSameSettings)
{
    OpenedCamera camera;
    ASSERT_TRUE(camera.setMode(192, 120, 0, 100.0F));
    __VYRParamSet__(camera.handle, VYRExposure, 5.0, 0);
    Receiver first;
    ASSERT_TRUE(camera.start(first));
    ASSERT_TRUE(first.waitFor(2));
    double mean = 255.0;
    Receiver second([&](const VYRFrame1& frame) { mean = meanOf(pixelsOf(frame, frame.left)); });
    ASSERT_TRUE(camera.start(second));
    const std::size_t before = first.count();
    ASSERT_TRUE(second.waitFor(2));
    StopVYR(camera.handle);
    EXPECT_EQ(first.count(), before) << "the first stream has ended";
    EXPECT_EQ(second.frames()[0].width, 192);
    EXPECT_LT(mean, 40.0);
}

TEST(Library, AfterStopNoCallbackRuns)
{
    OpenedCamera camera;
    ASSERT_TRUE(camera.setMode(192, 120, 0, 240.0F));
    for (int round = 0; round < 20; ++round) {
        std::atomic<bool> isRunning = false;
        Receiver receiver([&](const VYRFrame1&) {
            isRunning = true;
            computeUntil(now() + 3000000);
            isRunning = false;
        });
        ASSERT_TRUE(camera.start(receiver));
        const std::int64_t limit = now() + 10000000000;
        while (!isRunning && now() < limit)
            std::this_thread::yield();
        ASSERT_TRUE(isRunning) << "stopped in the middle of a callback";
        EXPECT_TRUE(StopVYR(camera.handle));
        EXPECT_FALSE(isRunning);
        const std::size_t count = receiver.count();
        computeUntil(now() + 10000000);
        EXPECT_EQ(receiver.count(), count);
    }
}

TEST(Library, StopDoesNotWaitForASlowStreamsNextFrame)
{
    constexpr std::int64_t interval = 2'000'000'000; // ns
    OpenedCamera camera;
    ASSERT_TRUE(camera.setMode(192, 120, 0, 0.5F));
    bool stoppedBefore = false;
    for (int attempt = 0; attempt < 5 && !stoppedBefore; ++attempt) { // on a busy machine a frame may be late
        Receiver receiver;
        const std::int64_t start = now();
        ASSERT_TRUE(camera.start(receiver));
        ASSERT_TRUE(receiver.waitFor(1));
        EXPECT_TRUE(StopVYR(camera.handle));
        stoppedBefore = now() - start < interval;
    }
    EXPECT_TRUE(stoppedBefore) << "every stop took until the next frame was due";
}

TEST(Library, StoppedTwiceOrNeverStartedItStaysStopped)
{
    const OpenedCamera camera;
    EXPECT_TRUE(StopVYR(camera.handle));
    EXPECT_TRUE(StopVYR(camera.handle));
}

TEST(Library, StoppedInItsCallbackItCanBeStartedAgain)
{
    OpenedCamera camera;
    ASSERT_TRUE(camera.setMode(192, 120, 0, 200.0F));
    std::atomic<int> startedInside = -1;
    int calls = 0;
    Receiver receiver([&](const VYRFrame1&) {
        if (++calls == 4) {
            startedInside = StartVYR(camera.handle, &Receiver::callback, nullptr, true) ? 1 : 0;
            StopVYR(camera.handle);
        }
    });
    ASSERT_TRUE(camera.start(receiver));
    ASSERT_TRUE(receiver.waitFor(4));
    EXPECT_TRUE(StopVYR(camera.handle));
    EXPECT_EQ(startedInside, 0);
    EXPECT_EQ(receiver.count(), 4U) << "that callback was the last";
    Receiver again;
    ASSERT_TRUE(camera.start(again));
    EXPECT_TRUE(again.waitFor(2));
}

TEST(Library, ClosedInItsCallbackItCanBeOpenedAgain)
{
    OpenedCamera camera;
    ASSERT_TRUE(camera.setMode(192, 120, 0, 200.0F));
    Receiver receiver([&](const VYRFrame1&) { CloseVYR(camera.handle); });
    ASSERT_TRUE(camera.start(receiver));
    ASSERT_TRUE(receiver.waitFor(1));
    void* handle = nullptr;
    ASSERT_TRUE(OpenVYR(&handle));
    Receiver again;
    EXPECT_TRUE(StartVYR(handle, &Receiver::callback, &again, true));
    EXPECT_TRUE(again.waitFor(2));
    CloseVYR(handle);
    EXPECT_EQ(receiver.count(), 1U);
}

TEST(Library, CloseWhileStreamingStopsFirst)
{
    Receiver receiver;
    OpenedCamera camera;
    ASSERT_TRUE(camera.setMode(192, 120, 0, 240.0F));
    ASSERT_TRUE(camera.start(receiver));
    ASSERT_TRUE(receiver.waitFor(2));
    CloseVYR(camera.handle);
    const std::size_t count = receiver.count();
    computeUntil(now() + 10000000);
    EXPECT_EQ(receiver.count(), count);
}

TEST(Library, ControlsCanBeSetFromAllThreadsWhileStreaming)
{
    OpenedCamera camera;
    ASSERT_TRUE(camera.setMode(192, 120, 0, 240.0F));
    Receiver receiver([&](const VYRFrame1& frame) {
        __VYRParamSet__(camera.handle, VYRGain, static_cast<double>(frame.frameCounter % 100));
    });
    ASSERT_TRUE(camera.start(receiver));
    std::thread other([&] {
        for (int i = 0; i < 500; ++i) {
            __VYRParamSet__(camera.handle, VYRExposure, static_cast<double>(i % 100), 0);
            __VYRParamSet__(camera.handle, VYRHorizontalFlip, i % 2);
            int width = 0;
            int height = 0;
            __VYRParamGet__(camera.handle, VYRFrameSize, &width, &height);
            EXPECT_EQ(width, 192);
        }
    });
    EXPECT_TRUE(receiver.waitFor(30));
    other.join();
}

TEST(Library, ExposureGainAndLampChangeThePicture)
{
    const double automatic = brightnessWith(VYRExposure, 0.0, 0);
    EXPECT_NEAR(automatic, 120.0, 30.0) << "the first picture is a good one";
    EXPECT_NEAR(brightnessWith(VYRExposure, 50.0, 0), automatic, 2.0);
    EXPECT_NEAR(brightnessWith(VYRExposure, 25.0, 0), automatic / 2.0, 2.0);
    EXPECT_NEAR(brightnessWith(VYRGain, 25.0), automatic / 2.0, 2.0);
    EXPECT_GT(brightnessWith(VYRGain, 75.0), automatic * 1.4);
    EXPECT_GT(brightnessWith(VYRLed, 100.0), automatic * 1.15);
    EXPECT_NEAR(brightnessWith(VYRLed, 0.0), automatic, 2.0);
}
