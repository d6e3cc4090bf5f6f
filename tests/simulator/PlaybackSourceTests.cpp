// SPDX-License-Identifier: Apache-2.0
// Tests of the decoding thread with recordings that fail.

#include <simulator/playback/PlaybackSource.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>

#include <dlfcn.h>
#include <pthread.h>

using simulator::PlaybackSource;
using simulator::RecordedPair;
using simulator::StereoPicture;

namespace {

constexpr auto limit = std::chrono::seconds(20);

/// How often a thread has been waited for.
std::atomic<int> joins{0};

/// Has one good pair in so many, the first one among them, and never says that it is exhausted.
class FailingRecording : public simulator::Recording
{
public:
    FailingRecording(int period, std::atomic<int>& reads)
        : _period(period)
        , _reads(reads)
    {
    }

    RecordedPair read() override
    {
        if (_reads++ % _period != 0)
            throw std::runtime_error("broken");
        const cv::Mat picture(480, 752, CV_8UC1, cv::Scalar(100));
        return {picture, picture};
    }

    bool isExhausted() const override { return false; }

private:
    int _period;
    std::atomic<int>& _reads; ///< the test's, which counts with it
};

template<typename Condition>
bool waitFor(Condition condition)
{
    const auto end = std::chrono::steady_clock::now() + limit;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end)
            return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return true;
}

std::unique_ptr<PlaybackSource> play(int period, std::atomic<int>& reads)
{
    return std::make_unique<PlaybackSource>("film", std::make_unique<FailingRecording>(period, reads));
}

bool next(PlaybackSource& source)
{
    StereoPicture picture;
    return source.next({0.0, 0, 480, false}, picture);
}

} // namespace

// In front of the C library's, so that a test knows when a thread is waited for.
extern "C" __attribute__((visibility("default"))) int pthread_join(pthread_t thread, void** result)
{
    ++joins;
    return reinterpret_cast<decltype(&pthread_join)>(dlsym(RTLD_NEXT, "pthread_join"))(thread, result);
}

TEST(PlaybackSource, ARecordingThatFailsEveryTimeEndsAfterAHundredFailures)
{
    std::atomic<int> reads = 0;
    testing::internal::CaptureStderr();
    auto source = play(1000000, reads);
    EXPECT_TRUE(waitFor([&] { return reads == 101; }));
    source.reset();
    const std::string told = testing::internal::GetCapturedStderr();
    EXPECT_EQ(reads, 101) << "one good pair and a hundred failures";
    EXPECT_EQ(std::count(told.begin(), told.end(), '\n'), 100);
    const std::string last = "libVYR: broken; the recording ends\n";
    EXPECT_EQ(told.find(last), told.size() - last.size()) << "said once, at the end";
}

TEST(PlaybackSource, FailuresWithGoodPairsBetweenThemDoNotEndARecording)
{
    std::atomic<int> reads = 0;
    testing::internal::CaptureStderr();
    auto source = play(60, reads);
    for (int i = 0; i < 10; ++i)
        EXPECT_TRUE(waitFor([&] { return next(*source); })) << i;
    source.reset();
    EXPECT_EQ(testing::internal::GetCapturedStderr().find("the recording ends"), std::string::npos);
}

TEST(PlaybackSource, DeletingItEndsARecordingThatFailsAtOnce)
{
    /// Fails again and again, each time only when the thread that reads it is waited for.
    class PatientRecording : public FailingRecording
    {
    public:
        using FailingRecording::FailingRecording;

        RecordedPair read() override
        {
            try {
                return FailingRecording::read();
            } catch (const std::runtime_error&) {
                waitFor([] { return joins > 0; });
                throw;
            }
        }
    };

    joins = 0;
    std::atomic<int> reads = 0;
    testing::internal::CaptureStderr();
    auto source = std::make_unique<PlaybackSource>("film", std::make_unique<PatientRecording>(1000000, reads));
    EXPECT_TRUE(waitFor([&] { return reads == 2; }));
    source.reset();
    testing::internal::GetCapturedStderr();
    EXPECT_EQ(reads, 2) << "no further one";
}
