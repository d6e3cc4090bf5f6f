// SPDX-License-Identifier: Apache-2.0
// Tests of the camera where something fails underneath it.

#include <simulator/Camera.h>
#include <simulator/Clock.h>
#include <simulator/include/VYRFrame1.h>

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <mutex>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <pthread.h>

using simulator::Camera;
using simulator::StereoPicture;

namespace {

/// Shows grey, or fails.
class GreySource : public simulator::Source
{
public:
    /// Fails for every frame but one in `period`.
    explicit GreySource(int period)
        : _period(period)
    {
    }

    std::string deviceName() const override { return "Grey"; }

    bool undistorts() const override { return false; }

    bool next(const simulator::PictureRequest& /*request*/, StereoPicture& picture) override
    {
        if (_asked++ % _period != 0)
            throw std::runtime_error("no light");
        picture = {_grey.data(), _grey.data()};
        return true;
    }

private:
    int _period;
    int _asked = 0;
    std::vector<std::uint8_t> _grey = std::vector<std::uint8_t>(752 * 480, 100);
};

/// Takes the time of some frames to prepare, and notes when it was done.
class SlowToPrepareSource : public GreySource
{
public:
    SlowToPrepareSource()
        : GreySource(1)
    {
    }

    void prepare() override
    {
        const std::int64_t begin = simulator::monotonicNow();
        while (simulator::monotonicNow() < begin + 100'000'000)
            std::this_thread::yield();
        _preparedAt = simulator::monotonicNow();
        ++_preparations;
    }

    bool next(const simulator::PictureRequest& request, StereoPicture& picture) override
    {
        if (_firstDue < 0.0)
            _firstDue = request.seconds;
        return GreySource::next(request, picture);
    }

    int preparations() const { return _preparations; }

    /// On the monotonic clock.
    std::int64_t preparedAt() const { return _preparedAt; }

    /// In seconds since the camera was opened.
    double firstDue() const { return _firstDue; }

private:
    std::atomic<int> _preparations = 0;
    std::int64_t _preparedAt = 0;
    double _firstDue = -1.0;
};

/// Fails to prepare when the camera asks for it, and to show the first picture.
class UnpreparedSource : public GreySource
{
public:
    UnpreparedSource()
        : GreySource(1)
    {
    }

    void prepare() override { throw std::runtime_error("not ready"); }

    bool next(const simulator::PictureRequest& request, StereoPicture& picture) override
    {
        if (_first) {
            _first = false;
            prepare();
        }
        return GreySource::next(request, picture);
    }

private:
    bool _first = true;
};

/// Counts frames and remembers the number of the latest. The test stops the camera before it goes.
class Counter
{
public:
    static void callback(const VYRFrameRecord* record, void* userData)
    {
        static_cast<Counter*>(userData)->count(*reinterpret_cast<const VYRFrame1*>(record));
    }

    /// Waits, with a limit, until `wanted` frames have come in all.
    bool waitFor(int wanted)
    {
        std::unique_lock<std::mutex> lock(_mutex);
        return _came.wait_for(lock, std::chrono::seconds(20), [&] { return _count >= wanted; });
    }

    /// The number of the frame that came last.
    std::uint32_t last()
    {
        const std::lock_guard<std::mutex> lock(_mutex);
        return _last;
    }

private:
    void count(const VYRFrame1& frame)
    {
        const std::lock_guard<std::mutex> lock(_mutex);
        ++_count;
        _last = frame.frameCounter;
        _came.notify_all();
    }

    std::mutex _mutex;
    std::condition_variable _came;
    int _count = 0;
    std::uint32_t _last = 0;
};

/// Gives new threads stacks that no machine has room for, so that none can be made.
class NoMoreThreads
{
public:
    NoMoreThreads()
    {
        pthread_getattr_default_np(&_usual);
        pthread_attr_t huge;
        pthread_attr_init(&huge);
        pthread_attr_setstacksize(&huge, std::numeric_limits<std::size_t>::max() - (std::size_t{1} << 20));
        pthread_setattr_default_np(&huge);
        pthread_attr_destroy(&huge);
    }

    NoMoreThreads(const NoMoreThreads&) = delete;
    NoMoreThreads& operator=(const NoMoreThreads&) = delete;

    ~NoMoreThreads()
    {
        pthread_setattr_default_np(&_usual);
        pthread_attr_destroy(&_usual);
    }

private:
    pthread_attr_t _usual;
};

} // namespace

TEST(Camera, AFrameThatCannotBeMadeIsMissedAndTheStreamGoesOn)
{
    const auto camera = std::make_shared<Camera>(std::make_unique<GreySource>(2));
    Counter counter;
    testing::internal::CaptureStderr();
    ASSERT_TRUE(camera->start(&Counter::callback, &counter));
    EXPECT_TRUE(counter.waitFor(3));
    camera->stop();
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "libVYR: a frame is missed: no light\n") << "told once";
    EXPECT_GE(counter.last(), 4U) << "two were missed";
}

TEST(Camera, ASourceIsPreparedBeforeTheFirstFrameIsDue)
{
    auto owned = std::make_unique<SlowToPrepareSource>();
    const SlowToPrepareSource& source = *owned;
    const auto camera = std::make_shared<Camera>(std::move(owned));
    const std::int64_t opened = simulator::monotonicNow();
    EXPECT_EQ(source.preparations(), 0) << "opening takes no time";
    Counter counter;
    ASSERT_TRUE(camera->start(&Counter::callback, &counter));
    EXPECT_TRUE(counter.waitFor(1));
    camera->stop();
    EXPECT_EQ(source.preparations(), 1);
    EXPECT_GE(source.firstDue(), static_cast<double>(source.preparedAt() - opened) * 1e-9);
}

TEST(Camera, APreparationThatFailsIsToldWithTheFirstFrame)
{
    const auto camera = std::make_shared<Camera>(std::make_unique<UnpreparedSource>());
    Counter counter;
    testing::internal::CaptureStderr();
    ASSERT_TRUE(camera->start(&Counter::callback, &counter));
    EXPECT_TRUE(counter.waitFor(1));
    camera->stop();
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "libVYR: a frame is missed: not ready\n");
}

TEST(Camera, WithoutAThreadItDoesNotStartAndMayLater)
{
    const auto camera = std::make_shared<Camera>(std::make_unique<GreySource>(1));
    Counter counter;
    {
        const NoMoreThreads noMoreThreads;
        testing::internal::CaptureStderr();
        EXPECT_FALSE(camera->start(&Counter::callback, &counter));
        EXPECT_EQ(testing::internal::GetCapturedStderr().find("libVYR: cannot start the stream: "), 0U);
    }
    EXPECT_TRUE(camera->start(&Counter::callback, &counter));
    EXPECT_TRUE(counter.waitFor(1));
    camera->stop();
}
