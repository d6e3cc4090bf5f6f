// SPDX-License-Identifier: Apache-2.0
// VYRCameraDevice against a camera library that misbehaves: silent, late, absurd, calling back when it must not.

#include <FakeVYR.h>
#include <camera/VYRCameraDevice.h>
#include <libs/IPPCoreLib/ImageProcessingNodeWithThread.h>
#include <libs/IPPCoreLib/ImageProcessingPipeline.h>
#include <tests/support/WaitFor.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QSignalSpy>

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <climits>
#include <cstdlib>
#include <functional>
#include <memory>
#include <new>
#include <thread>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

bool libraryWasCalled(const std::string& call)
{
    const std::vector<std::string> calls = FakeVYR::calls();
    return std::find(calls.begin(), calls.end(), call) != calls.end();
}

/// A thread of the library that has called the host with one frame, and is held in a receiver of the node's signal
/// until it is let go.
class HeldCallback
{
public:
    using Signal = void (VYRCameraDevice::*)(QString);

    /// Returns when the callback is held. `timestamp` is the frame's; `inside` is run in the receiver, instead of the
    /// wait for letGo().
    HeldCallback(VYRCameraDevice& device, Signal signal, std::uint32_t timestamp,
                 const std::function<void()>& inside = {})
    {
        const auto receiver = [this, inside] {
            if (_held.exchange(true))
                return; // this one callback only
            if (inside)
                inside();
            else
                waitFor([this] { return _letGo.load(); });
        };
        _connection = QObject::connect(&device, signal, &device, receiver, Qt::DirectConnection);
        _thread = std::thread([this, timestamp] {
            FakeVYR::emitFrame(timestamp);
            _returned = true;
        });
        EXPECT_TRUE(waitFor([this] { return _held.load(); }));
    }

    ~HeldCallback() { letGo(); }

    void letGo()
    {
        _letGo = true;
        if (_thread.joinable())
            _thread.join();
        QObject::disconnect(_connection);
    }

    bool hasReturned() const { return _returned; }

private:
    std::atomic<bool> _held{false};
    std::atomic<bool> _letGo{false};
    std::atomic<bool> _returned{false};
    QMetaObject::Connection _connection;
    std::thread _thread;
};

/// A node that counts the frames it gets and whether they come in order.
class CountingNode : public ImageProcessingNodeWithThread
{
public:
    ~CountingNode() override { ImageProcessingNodeWithThread::StopProcessing(); }

    void Close() override {}

    void Process(NodeData* item) override
    {
        const std::uint32_t timestamp = static_cast<StereoFrame*>(item)->record->timestamp;
        inOrder = inOrder && (delivered == 0 || timestamp > last);
        last = timestamp;
        ++delivered;
    }

    std::atomic<int> delivered{0};
    std::atomic<bool> inOrder{true};
    std::atomic<std::uint32_t> last{0};
};

class CameraFaults : public testing::Test
{
protected:
    CameraFaults() { FakeVYR::reset(); }

    std::unique_ptr<VYRCameraDevice> makeStreamingDevice()
    {
        auto device = std::make_unique<VYRCameraDevice>(5, 320, 240, 30.0F);
        device->StartProcessing();
        FakeVYR::clearCalls();
        return device;
    }

    /// The number of frames that the pool can lend; they are given back.
    static int countFreeFrames(VYRCameraDevice& device)
    {
        std::vector<StereoFrame*> frames;
        while (StereoFrame* const frame = device.FrameCache().Acquire())
            frames.push_back(frame);
        for (const StereoFrame* frame : frames)
            device.FrameCache().Release(frame);
        return static_cast<int>(frames.size());
    }

    static std::string lastText(const QSignalSpy& spy)
    {
        return spy.isEmpty() ? std::string() : spy.last().at(0).toString().toStdString();
    }
};

// Starting

TEST_F(CameraFaults, StartThatFailedCanBeTriedAgain)
{
    FakeVYR::setStarts(false);
    VYRCameraDevice device(5, 320, 240, 30.0F);
    device.StartProcessing();
    FakeVYR::setStarts(true);
    device.StartProcessing();
    FakeVYR::emitFrame(0);
    EXPECT_EQ(device.Size(), 1);
}

TEST_F(CameraFaults, RestartThatFailsIgnoresTheFramesOfTheStreamBefore)
{
    const auto device = makeStreamingDevice();
    FakeVYR::setStarts(false);
    device->StartProcessing();
    FakeVYR::emitLateFrame(0);
    EXPECT_EQ(device->Size(), 0);
}

// A silent library

TEST_F(CameraFaults, SilentLibraryLeavesTheStatusTextAlone)
{
    const auto device = makeStreamingDevice();
    const QSignalSpy info(device.get(), &VYRCameraDevice::InfoChanged);
    for (const std::uint32_t timestamp : {0U, 5'000U, 10'000U})
        FakeVYR::emitFrame(timestamp);
    const std::string before = lastText(info);
    device->StopProcessing(); // after which not a word has come
    EXPECT_EQ(info.count(), 1);
    device->UpdateInfo();
    EXPECT_EQ(lastText(info), before);
    EXPECT_THAT(before, HasSubstr("FPS:    2.000"));
}

TEST_F(CameraFaults, SilentLibraryCanBeStoppedWithAWaitingConsumer)
{
    auto* const device = new VYRCameraDevice(5, 320, 240, 30.0F);
    auto* const node = new CountingNode;
    ImageProcessingPipeline pipeline;
    pipeline.AddNode(device);
    pipeline.AddNode(node);
    pipeline.Start();
    FakeVYR::emitFrame(1);
    ASSERT_TRUE(waitFor([&] { return node->delivered == 1; }));
    pipeline.Stop();
    FakeVYR::clearCalls();
    pipeline.DeleteNodes();
    EXPECT_THAT(FakeVYR::calls(), ElementsAre("CloseVYR"));
}

// Callbacks after the end

TEST_F(CameraFaults, FramesAfterCloseAreIgnored)
{
    const auto device = makeStreamingDevice();
    device->Close();
    const QSignalSpy queue(device.get(), &VYRCameraDevice::QChanged);
    FakeVYR::emitLateFrame(0);
    EXPECT_TRUE(queue.isEmpty());
    EXPECT_EQ(device->Size(), 0);
}

TEST_F(CameraFaults, FramesAfterDestructionLeaveTheDevicesMemoryAlone)
{
    alignas(VYRCameraDevice) std::array<unsigned char, sizeof(VYRCameraDevice)> memory{};
    auto* const device = new (memory.data()) VYRCameraDevice(5, 320, 240, 30.0F);
    device->StartProcessing();
    FakeVYR::emitFrame(0);
    EXPECT_EQ(device->Size(), 1) << "the library knows the device";
    device->~VYRCameraDevice();
    memory.fill(0xA5); // taken as a device it would be open and streaming
    FakeVYR::emitLateFrame(0);
    std::thread([] { FakeVYR::emitLateFrame(1); }).join();
    EXPECT_THAT(memory, testing::Each(0xA5));
}

TEST_F(CameraFaults, FramesForADeviceThatIsGoneDoNotReachAnother)
{
    auto gone = makeStreamingDevice();
    const VYRCameraDevice other(5, 320, 240, 30.0F);
    gone.reset();
    const QSignalSpy queue(&other, &VYRCameraDevice::QChanged);
    FakeVYR::emitLateFrame(0);
    EXPECT_TRUE(queue.isEmpty());
}

TEST_F(CameraFaults, DevicesComeAndGoWhileTheLibraryNeverStopsCallingBack)
{
    std::atomic<bool> stop{false};
    std::atomic<int> emitted{0};
    std::thread library([&] {
        for (std::uint32_t i = 0; !stop; ++i) {
            FakeVYR::emitLateFrame(i * 100);
            ++emitted;
        }
    });
    for (int round = 0; round < 100; ++round) {
        const auto device = makeStreamingDevice();
        const int before = emitted;
        EXPECT_TRUE(waitFor([&] { return emitted > before + 2; }));
    }
    stop = true;
    library.join();
}

/// Ends the process, with a status of its own, while frames arrive that speak of the queue and of the mode.
[[noreturn]] void exitWhileFramesArrive(VYRCameraDevice& device)
{
    std::thread([] {
        for (std::uint32_t i = 0;; ++i)
            FakeVYR::emitFrame(i * 5001); // every other one closes a measuring window
    }).detach();
    std::exit(waitFor([&] { return device.Size() > 0; }) ? 41 : 1);
}

using CameraFaultsDeathTest = CameraFaults;

TEST_F(CameraFaultsDeathTest, FramesWhileTheProcessExitsLeaveItsStatusAlone)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            // Runs after all that is made from here on, and is destroyed at the end, has gone.
            std::atexit([] { std::this_thread::sleep_for(std::chrono::milliseconds(50)); });
            static auto* const device = makeStreamingDevice().release(); // as when nobody closes the window
            exitWhileFramesArrive(*device);
        },
        testing::ExitedWithCode(41), "");
}

TEST_F(CameraFaults, StoppedPoolStaysWholeWhileTheLibraryNeverStopsCallingBack)
{
    const auto device = makeStreamingDevice();
    const VYRFrameRecord record{};
    std::atomic<bool> stop{false};
    std::vector<std::thread> library;
    for (int i = 0; i < 2; ++i)
        library.emplace_back([&] {
            while (!stop)
                FakeVYR::emitLateRecord(&record);
        });
    for (int round = 0; round < 300; ++round) {
        device->StartProcessing();
        FakeVYR::clearCalls();
        EXPECT_TRUE(waitFor([&] { return device->Size() > 0; }));
        device->StopProcessing();
        device->OutputQueue().Clear();
        ASSERT_EQ(countFreeFrames(*device), 32);
        ASSERT_EQ(device->Size(), 0);
    }
    stop = true;
    for (std::thread& thread : library)
        thread.join();
}

TEST_F(CameraFaults, CloseWaitsForAFrameThatIsJustBeingPushed)
{
    const auto device = makeStreamingDevice();
    std::array<StereoFrame*, 32> frames{};
    for (StereoFrame*& frame : frames)
        frame = device->FrameCache().Acquire();
    std::thread library;
    std::thread closer;
    int queuedAtClose = -1;
    std::size_t next = 0;
    // The pool's lock is held while this is called: the callback has to wait for its frame.
    device->FrameCache().Fill([&] {
        if (next == 0) {
            library = std::thread([] { FakeVYR::emitFrame(0); });
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
            closer = std::thread([&] {
                device->Close();
                queuedAtClose = device->Size();
            });
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
        }
        return frames.at(next++);
    });
    library.join();
    closer.join();
    EXPECT_EQ(device->Size(), queuedAtClose) << "pushed after Close() had returned";
}

// Callbacks that are inside

struct HeldIn
{
    const char* name;
    HeldCallback::Signal signal;
};

void PrintTo(const HeldIn& place, std::ostream* stream)
{
    *stream << place.name;
}

class CallbackInside : public CameraFaults, public testing::WithParamInterface<HeldIn>
{
protected:
    /// A device in which the frame at 10000 emits both signals.
    std::unique_ptr<VYRCameraDevice> makeMeasuringDevice()
    {
        auto device = makeStreamingDevice();
        FakeVYR::emitFrame(0);
        return device;
    }
};

TEST_P(CallbackInside, StopDoesNotWaitForItAndItsFrameIsDropped)
{
    const auto device = makeMeasuringDevice();
    HeldCallback callback(*device, GetParam().signal, 10'000);
    device->StopProcessing();
    EXPECT_FALSE(callback.hasReturned());
    EXPECT_THAT(FakeVYR::calls(), ElementsAre("StopVYR"));
    device->OutputQueue().Clear();
    callback.letGo();
    EXPECT_EQ(device->Size(), 0);
    EXPECT_EQ(countFreeFrames(*device), 32);
}

TEST_P(CallbackInside, CloseDoesNotWaitForIt)
{
    const auto device = makeMeasuringDevice();
    HeldCallback callback(*device, GetParam().signal, 10'000);
    device->StopProcessing();
    device->Close();
    EXPECT_FALSE(callback.hasReturned());
    EXPECT_FALSE(device->IsOpen());
    device->OutputQueue().Clear();
    callback.letGo();
    EXPECT_EQ(device->Size(), 0);
}

TEST_P(CallbackInside, CloseWhileStreamingDropsItsFrame)
{
    const auto device = makeMeasuringDevice();
    device->OutputQueue().Clear();
    HeldCallback callback(*device, GetParam().signal, 10'000);
    device->Close();
    device->StopProcessing();
    callback.letGo();
    EXPECT_EQ(device->Size(), 0) << "a record of a camera that is closed";
}

TEST_P(CallbackInside, DestructionWaitsForItBeforeTheCameraIsClosed)
{
    auto device = makeMeasuringDevice();
    bool closedMeanwhile = false;
    HeldCallback callback(*device, GetParam().signal, 10'000, [&] {
        waitFor([] { return libraryWasCalled("StopVYR"); });
        // Long enough for a destruction that does not wait to come through.
        closedMeanwhile = waitFor([] { return libraryWasCalled("CloseVYR"); }, std::chrono::milliseconds(50));
    });
    device.reset();
    callback.letGo();
    EXPECT_FALSE(closedMeanwhile);
    EXPECT_THAT(FakeVYR::calls(), ElementsAre("StopVYR", "CloseVYR"));
}

TEST_P(CallbackInside, ItMayStopTheCameraItself)
{
    const auto device = makeMeasuringDevice();
    HeldCallback callback(*device, GetParam().signal, 10'000, [&] { device->StopProcessing(); });
    callback.letGo();
    EXPECT_EQ(device->Size(), 1) << "the frame before is still queued, its own is dropped";
    EXPECT_EQ(countFreeFrames(*device), 32);
}

INSTANTIATE_TEST_SUITE_P(Receivers, CallbackInside,
                         testing::Values(HeldIn{"QChanged", &VYRCameraDevice::QChanged},
                                         HeldIn{"InfoChanged", &VYRCameraDevice::InfoChanged}));

TEST_F(CameraFaults, CallbackThatOutlastsARestartHandsOverAFrameOfItsOwn)
{
    const auto device = makeStreamingDevice();
    HeldCallback callback(*device, &VYRCameraDevice::QChanged, 0);
    device->StopProcessing();
    device->OutputQueue().Clear();
    device->StartProcessing();
    FakeVYR::emitFrame(1);
    callback.letGo();
    NodeData* const first = device->OutputQueue().Pop(0);
    NodeData* const second = device->OutputQueue().Pop(0);
    ASSERT_NE(second, nullptr);
    EXPECT_NE(first, second) << "no frame is lent twice";
}

// Timestamps

TEST_F(CameraFaults, TimestampsThatWrapOpenANewWindowSilently)
{
    const auto device = makeStreamingDevice();
    const QSignalSpy info(device.get(), &VYRCameraDevice::InfoChanged);
    constexpr std::uint32_t step = 1'000;
    std::uint32_t timestamp = 0U - 5 * step;
    for (int i = 0; i < 15; ++i, timestamp += step)
        FakeVYR::emitFrame(timestamp); // the sixth is 0 and opens a window
    EXPECT_EQ(info.count(), 0);
    FakeVYR::emitFrame(timestamp);
    EXPECT_EQ(info.count(), 1);
    EXPECT_THAT(lastText(info), HasSubstr("FPS:   10.000"));
}

TEST_F(CameraFaults, TimestampsThatKeepJumpingBackNeverCloseAWindow)
{
    const auto device = makeStreamingDevice();
    const QSignalSpy info(device.get(), &VYRCameraDevice::InfoChanged);
    for (std::uint32_t timestamp = 4'000'000'000U; timestamp > 0; timestamp -= 100'000'000U)
        FakeVYR::emitFrame(timestamp);
    EXPECT_EQ(info.count(), 0);
}

TEST_F(CameraFaults, TimestampsThatStandStillAreTheRateOfTheNextStep)
{
    const auto device = makeStreamingDevice();
    const QSignalSpy info(device.get(), &VYRCameraDevice::InfoChanged);
    for (int i = 0; i < 100; ++i)
        FakeVYR::emitFrame(7);
    EXPECT_EQ(info.count(), 0);
    FakeVYR::emitFrame(10'007);
    EXPECT_THAT(lastText(info), HasSubstr("FPS:  100.000"));
}

TEST_F(CameraFaults, TimestampThatJumpsToTheEndMeasuresNearlyNothing)
{
    const auto device = makeStreamingDevice();
    const QSignalSpy info(device.get(), &VYRCameraDevice::InfoChanged);
    FakeVYR::emitFrame(0);
    FakeVYR::emitFrame(UINT32_MAX);
    EXPECT_THAT(lastText(info), HasSubstr("FPS:    0.000, Rate:    0.000"));
}

// Texts

struct Text
{
    const char* name;
    int id;
    QString (VYRCameraDevice::*read)() const;
};

void PrintTo(const Text& text, std::ostream* stream)
{
    *stream << text.name;
}

class TextWithoutEnd : public CameraFaults, public testing::WithParamInterface<Text>
{
};

TEST_P(TextWithoutEnd, StopsAtTheBuffersEnd)
{
    FakeVYR::setText(GetParam().id, std::string(256, 'x'));
    const VYRCameraDevice device(5, 320, 240, 30.0F);
    EXPECT_EQ((device.*GetParam().read)(), QString(256, 'x'));
}

TEST_P(TextWithoutEnd, OfBytesThatAreNoTextStopsAtTheBuffersEnd)
{
    FakeVYR::setText(GetParam().id, std::string(255, 'x') + '\xF0'); // the beginning of a character of four bytes
    const VYRCameraDevice device(5, 320, 240, 30.0F);
    EXPECT_EQ((device.*GetParam().read)(), QString(255, 'x') + QChar(QChar::ReplacementCharacter));
}

INSTANTIATE_TEST_SUITE_P(Identity, TextWithoutEnd,
                         testing::Values(Text{"DeviceName", 2, &VYRCameraDevice::DeviceName},
                                         Text{"SerialNumber", 3, &VYRCameraDevice::SerialNumber},
                                         Text{"FirmwareVersion", 4, &VYRCameraDevice::FirmwareVersion},
                                         Text{"FirmwareBuildTime", 5, &VYRCameraDevice::FirmwareBuildTime}));

// Frame sizes

struct FrameSize
{
    int width;
    int height;
    const char* resolution;
    const char* rate; ///< in the text at 2 frames per second
};

void PrintTo(const FrameSize& size, std::ostream* stream)
{
    *stream << size.resolution;
}

class AbsurdFrameSize : public CameraFaults, public testing::WithParamInterface<FrameSize>
{
};

TEST_P(AbsurdFrameSize, StandsInTheStatusTextAsItIs)
{
    FakeVYR::setFrameSize(GetParam().width, GetParam().height);
    const auto device = makeStreamingDevice();
    const QSignalSpy info(device.get(), &VYRCameraDevice::InfoChanged);
    for (const std::uint32_t timestamp : {0U, 5'000U, 10'000U})
        FakeVYR::emitFrame(timestamp);
    EXPECT_EQ(lastText(info), std::string("Resolution: ") + GetParam().resolution
                                  + ", Binning: 2x2, FPS:    2.000, Rate: " + GetParam().rate + " MB/s");
    EXPECT_EQ(device->Size(), 3);
}

TEST_P(AbsurdFrameSize, IsOvercomeByTheNextMode)
{
    FakeVYR::setFrameSize(GetParam().width, GetParam().height);
    const auto device = makeStreamingDevice();
    device->StopProcessing();
    device->OutputQueue().Clear();
    FakeVYR::setFrameSize(320, 240);
    device->SetResolution(5, 320, 240, 30.0F);
    device->StartProcessing();
    EXPECT_EQ(device->ResolutionKey(), "R320x240_B2x2");
    FakeVYR::emitFrame(0);
    EXPECT_EQ(device->Size(), 1);
}

INSTANTIATE_TEST_SUITE_P(Sizes, AbsurdFrameSize,
                         testing::Values(FrameSize{0, 0, "0x0", "   0.000"}, FrameSize{-1, 0, "-1x0", "   0.000"},
                                         FrameSize{-640, 480, "-640x480", "  -1.172"},
                                         FrameSize{INT_MAX, INT_MAX, "2147483647x2147483647", "17592186044416.000"},
                                         FrameSize{INT_MIN, INT_MIN, "-2147483648x-2147483648", "17592186044416.000"}));

// Bursts

TEST_F(CameraFaults, BurstWithoutAConsumerFillsTheQueueAndNoMore)
{
    const auto device = makeStreamingDevice();
    const QSignalSpy queue(device.get(), &VYRCameraDevice::QChanged);
    for (std::uint32_t i = 0; i < 10'000; ++i)
        FakeVYR::emitFrame(i);
    ASSERT_EQ(queue.count(), 10'000);
    for (int i = 0; i < 31; ++i)
        EXPECT_EQ(queue.at(i).at(0).toString(), QString::number(i));
    EXPECT_EQ(lastText(queue), "31");
    EXPECT_EQ(device->Size(), 31);
    EXPECT_EQ(countFreeFrames(*device), 0) << "31 queued, one refused";
    for (std::uint32_t i = 0; i < 31; ++i)
        EXPECT_EQ(static_cast<StereoFrame*>(device->OutputQueue().Pop(0))->record->timestamp % 256, i)
            << "the first ones, in order; the records are written over every 256 frames";
    device->StopProcessing();
    EXPECT_EQ(countFreeFrames(*device), 32);
}

TEST_F(CameraFaults, BurstWithAConsumerIsDeliveredOrDroppedInOrder)
{
    std::vector<VYRFrameRecord> records(10'000);
    for (std::uint32_t i = 0; i < records.size(); ++i)
        records[i].timestamp = i;
    const auto device = makeStreamingDevice();
    CountingNode node;
    node.SetInputNode(device.get());
    node.StartProcessing();
    int emitted = 0;
    int longest = 0;
    QObject::connect(device.get(), &VYRCameraDevice::QChanged, [&](const QString& length) {
        ++emitted;
        longest = std::max(longest, length.toInt());
    });
    std::thread([&] {
        for (const VYRFrameRecord& record : records)
            FakeVYR::emitRecord(&record);
    }).join();
    ASSERT_TRUE(waitFor([&] { return device->Size() == 0; }));
    node.StopProcessing(); // which ends with what it was busy with
    EXPECT_EQ(emitted, 10'000);
    EXPECT_LE(longest, 31);
    EXPECT_GE(node.delivered, 31);
    EXPECT_TRUE(node.inOrder);
    EXPECT_GE(countFreeFrames(*device), 31) << "at most one slot is lost to a full queue; what was not delivered was "
                                               "dropped and holds nothing";
    device->StopProcessing();
    EXPECT_EQ(countFreeFrames(*device), 32);
}

} // namespace
