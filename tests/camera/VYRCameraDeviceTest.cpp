// SPDX-License-Identifier: Apache-2.0
// VYRCameraDevice against a camera library that logs every call and emits frames on command.

#include <FakeVYR.h>
#include <camera/VYRCameraDevice.h>
#include <libs/IPPCoreLib/ImageProcessingNode.h>
#include <tests/support/WaitFor.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QMetaMethod>
#include <QSignalSpy>
#include <QThread>

#include <atomic>
#include <memory>
#include <thread>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class CameraDevice : public testing::Test
{
protected:
    CameraDevice() { FakeVYR::reset(); }

    /// A device whose mode the camera has, with the log emptied after construction.
    std::unique_ptr<VYRCameraDevice> makeDevice(int binning = 5, int width = 320, int height = 240, float fps = 30.0F)
    {
        auto device = std::make_unique<VYRCameraDevice>(binning, width, height, fps);
        FakeVYR::clearCalls();
        return device;
    }

    std::unique_ptr<VYRCameraDevice> makeStreamingDevice()
    {
        auto device = makeDevice();
        device->StartProcessing();
        FakeVYR::clearCalls();
        return device;
    }

    static StereoFrame* popFrame(VYRCameraDevice& device)
    {
        return static_cast<StereoFrame*>(device.OutputQueue().Pop(0));
    }

    static int countFreeFrames(VYRCameraDevice& device)
    {
        int count = 0;
        while (device.FrameCache().Acquire() != nullptr)
            ++count;
        return count;
    }

    /// The text of the last signal seen by `spy`.
    static QString lastText(const QSignalSpy& spy) { return spy.isEmpty() ? QString() : spy.last().at(0).toString(); }
};

QString idleText(const QString& resolution, const QString& binning)
{
    return QString("Resolution: %1, Binning: %2, FPS:    0.000, Rate:    0.000 MB/s").arg(resolution, binning);
}

// Construction, closing and destruction

TEST_F(CameraDevice, ConstructionOpensAndLooksUpTheMode)
{
    const VYRCameraDevice device(5, 320, 240, 30.0F);
    EXPECT_THAT(FakeVYR::calls(), ElementsAre("OpenVYR", "Enumerate 1 320 240 5 30"));
    EXPECT_TRUE(device.IsOpen());
    EXPECT_NE(device.Instance(), nullptr);
    EXPECT_EQ(device.Name(), "VYRCamera");
}

TEST_F(CameraDevice, ConstructionSendsTheResolutionOnlyWhenNoModeMatches)
{
    const VYRCameraDevice device(0, 111, 222, 30.0F);
    const std::vector<std::string> calls = FakeVYR::calls();
    ASSERT_EQ(calls.size(), 3U);
    EXPECT_EQ(calls[1], "Enumerate 1 111 222 0 30");
    EXPECT_THAT(calls[2], testing::StartsWith("Set 6 ")) << "the record is as the enumeration left it";
}

TEST_F(CameraDevice, ConstructionEndsWhereOpeningFails)
{
    FakeVYR::setOpens(false);
    const VYRCameraDevice device(5, 320, 240, 30.0F);
    EXPECT_THAT(FakeVYR::calls(), ElementsAre("OpenVYR"));
    EXPECT_FALSE(device.IsOpen());
    EXPECT_EQ(device.Instance(), nullptr);
}

TEST_F(CameraDevice, ConstructionWithoutArgumentsOpensWithoutLookingUpAMode)
{
    const VYRCameraDevice device;
    EXPECT_THAT(FakeVYR::calls(), ElementsAre("OpenVYR"));
    EXPECT_TRUE(device.IsOpen());
    EXPECT_EQ(device.ResolutionKey(), "R0x0_B1x1");
}

TEST_F(CameraDevice, CloseClosesOnce)
{
    const auto device = makeDevice();
    device->Close();
    device->Close();
    EXPECT_THAT(FakeVYR::calls(), ElementsAre("CloseVYR"));
    EXPECT_FALSE(device->IsOpen());
}

TEST_F(CameraDevice, DestructionOfAnIdleDeviceCloses)
{
    auto device = makeDevice();
    device.reset();
    EXPECT_THAT(FakeVYR::calls(), ElementsAre("CloseVYR"));
}

TEST_F(CameraDevice, DestructionOfAStreamingDeviceStopsThenCloses)
{
    auto device = makeStreamingDevice();
    device.reset();
    EXPECT_THAT(FakeVYR::calls(), ElementsAre("StopVYR", "CloseVYR"));
}

TEST_F(CameraDevice, DestructionOfAClosedDeviceCallsNothing)
{
    FakeVYR::setOpens(false);
    auto device = makeDevice();
    device.reset();
    EXPECT_THAT(FakeVYR::calls(), IsEmpty());
}

TEST_F(CameraDevice, CastsByNameToDeviceAndNode)
{
    const auto device = makeDevice();
    QObject* const object = device.get();
    EXPECT_EQ(object->qt_metacast("VYRCameraDevice"), device.get());
    EXPECT_EQ(object->qt_metacast("ImageProcessingNode"), static_cast<ImageProcessingNode*>(device.get()));
    EXPECT_EQ(object->qt_metacast("SomethingElse"), nullptr);
}

TEST_F(CameraDevice, SignalsAndSlotsComeInTheirFixedOrder)
{
    const QMetaObject& meta = VYRCameraDevice::staticMetaObject;
    QStringList methods;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
        methods << QString::fromLatin1(meta.method(i).methodSignature());
    EXPECT_EQ(methods, (QStringList{"InfoChanged(QString)", "QChanged(QString)", "Exposure(int)", "Gain(int)",
                                    "Led(int)", "HFlip(bool)", "VFlip(bool)", "SwapCameras(bool)", "Undistort(bool)",
                                    "IMURange(VYRAccelRange,VYRGyroRange)"}));
    EXPECT_EQ(meta.method(meta.methodOffset()).parameterNames(), QList<QByteArray>{"infoString"});
}

// Starting and stopping

TEST_F(CameraDevice, StartSendsModeAndControlsInOrder)
{
    const auto device = makeDevice();
    device->Exposure(11);
    device->Gain(22);
    device->Led(33);
    device->HFlip(true);
    device->VFlip(true);
    FakeVYR::clearCalls();
    device->StartProcessing();
    EXPECT_THAT(FakeVYR::calls(), ElementsAre("Enumerate 1 320 240 5 30", "Set 6 320 240 5 30", "Set 10 1", "Set 11 1",
                                              "Set 8 11 0", "Set 9 22", "Set 13 33", "StartVYR 1", "Get 7"));
}

TEST_F(CameraDevice, StartWithoutAMatchingModeStartsNothingAndSaysNothing)
{
    const auto device = makeDevice(0, 111, 222, 30.0F);
    const QSignalSpy info(device.get(), &VYRCameraDevice::InfoChanged);
    device->StartProcessing();
    EXPECT_THAT(FakeVYR::calls(), ElementsAre("Enumerate 1 111 222 0 30"));
    EXPECT_TRUE(info.isEmpty());
}

TEST_F(CameraDevice, StartWhileClosedDoesNothing)
{
    FakeVYR::setOpens(false);
    const auto device = makeDevice();
    device->StartProcessing();
    EXPECT_THAT(FakeVYR::calls(), IsEmpty());
}

TEST_F(CameraDevice, StartFreesTheWholePool)
{
    const auto device = makeDevice();
    while (device->FrameCache().Acquire() != nullptr) {
    }
    device->StartProcessing();
    EXPECT_EQ(countFreeFrames(*device), 32);
}

TEST_F(CameraDevice, StartReadsTheActualFrameSizeBack)
{
    FakeVYR::setFrameSize(316, 236);
    const auto device = makeDevice();
    const QSignalSpy info(device.get(), &VYRCameraDevice::InfoChanged);
    device->StartProcessing();
    EXPECT_EQ(info.count(), 1);
    EXPECT_EQ(lastText(info), idleText("316x236", "2x2"));
    EXPECT_EQ(device->ResolutionKey(), "R316x236_B2x2");
}

TEST_F(CameraDevice, StartWhoseLibraryFailsIgnoresFramesAndStillSaysTheMode)
{
    FakeVYR::setStarts(false);
    const auto device = makeDevice();
    const QSignalSpy info(device.get(), &VYRCameraDevice::InfoChanged);
    device->StartProcessing();
    EXPECT_EQ(lastText(info), idleText("320x240", "2x2"));
    FakeVYR::emitLateFrame(0);
    EXPECT_EQ(device->Size(), 0);
    FakeVYR::clearCalls();
    device->StopProcessing();
    EXPECT_THAT(FakeVYR::calls(), IsEmpty());
}

TEST_F(CameraDevice, StartWhileStreamingStartsTheLibraryAgain)
{
    const auto device = makeStreamingDevice();
    device->StartProcessing();
    EXPECT_THAT(FakeVYR::calls(), testing::Contains("StartVYR 1"));
    FakeVYR::emitFrame(0);
    EXPECT_EQ(device->Size(), 1);
}

TEST_F(CameraDevice, StopStopsTheLibraryOnceAndFreesTheWholePool)
{
    const auto device = makeStreamingDevice();
    FakeVYR::emitFrame(0);
    FakeVYR::emitFrame(10);
    device->StopProcessing();
    device->StopProcessing();
    EXPECT_THAT(FakeVYR::calls(), ElementsAre("StopVYR"));
    EXPECT_EQ(countFreeFrames(*device), 32);
}

TEST_F(CameraDevice, FramesAfterStopAreIgnored)
{
    const auto device = makeStreamingDevice();
    const QSignalSpy queue(device.get(), &VYRCameraDevice::QChanged);
    device->StopProcessing();
    FakeVYR::emitLateFrame(0);
    EXPECT_EQ(device->Size(), 0);
    EXPECT_TRUE(queue.isEmpty());
}

TEST_F(CameraDevice, StartAfterStopStreamsAgain)
{
    const auto device = makeStreamingDevice();
    device->StopProcessing();
    device->StartProcessing();
    FakeVYR::emitFrame(0);
    EXPECT_EQ(device->Size(), 1);
}

TEST_F(CameraDevice, ProcessDoesNothing)
{
    const auto device = makeStreamingDevice();
    device->Process(nullptr);
    EXPECT_THAT(FakeVYR::calls(), IsEmpty());
}

// Frames

TEST_F(CameraDevice, FramesAreFilledAndPushedInOrder)
{
    const auto device = makeStreamingDevice();
    for (const std::uint32_t timestamp : {100U, 200U, 300U})
        FakeVYR::emitFrame(timestamp);
    for (const std::uint32_t timestamp : {100U, 200U, 300U}) {
        StereoFrame* const frame = popFrame(*device);
        ASSERT_NE(frame, nullptr);
        EXPECT_EQ(frame->owner, device.get());
        EXPECT_EQ(frame->record->timestamp, timestamp);
        EXPECT_EQ(frame->fps, 0.0F);
    }
}

TEST_F(CameraDevice, QChangedTellsTheQueueLengthBeforeThePush)
{
    const auto device = makeStreamingDevice();
    const QSignalSpy queue(device.get(), &VYRCameraDevice::QChanged);
    for (std::uint32_t i = 0; i < 3; ++i)
        FakeVYR::emitFrame(i);
    ASSERT_EQ(queue.count(), 3);
    EXPECT_EQ(queue.at(0).at(0).toString(), "0");
    EXPECT_EQ(queue.at(1).at(0).toString(), "1");
    EXPECT_EQ(queue.at(2).at(0).toString(), "2");
}

TEST_F(CameraDevice, FullQueueKeepsThePoolSlotTakenUntilStopped)
{
    const auto device = makeStreamingDevice();
    for (std::uint32_t i = 0; i < 32; ++i)
        FakeVYR::emitFrame(i);
    EXPECT_EQ(device->Size(), 31);
    for (int i = 0; i < 31; ++i)
        popFrame(*device)->Release();
    EXPECT_EQ(countFreeFrames(*device), 31) << "the refused frame's slot stays taken";
    device->StopProcessing();
    EXPECT_EQ(countFreeFrames(*device), 32);
}

TEST_F(CameraDevice, FullQueueKeepsThePoolSlotTakenUntilStartedAgain)
{
    const auto device = makeStreamingDevice();
    for (std::uint32_t i = 0; i < 32; ++i)
        FakeVYR::emitFrame(i);
    device->OutputQueue().Clear();
    EXPECT_EQ(countFreeFrames(*device), 0) << "31 forgotten, one refused";
    device->StartProcessing();
    EXPECT_EQ(countFreeFrames(*device), 32);
}

TEST_F(CameraDevice, FullQueueCostsOnePoolSlotAtMost)
{
    const auto device = makeStreamingDevice();
    std::uint32_t timestamp = 0;
    for (int standstill = 0; standstill < 3; ++standstill) {
        for (int i = 0; i < 40; ++i)
            FakeVYR::emitFrame(timestamp++);
        ASSERT_EQ(device->Size(), 31);
        for (int i = 0; i < 31; ++i)
            popFrame(*device)->Release();
    }
    EXPECT_EQ(countFreeFrames(*device), 31);
}

TEST_F(CameraDevice, WithAllFramesHeldFurtherOnesCountForTheRateOnly)
{
    const auto device = makeStreamingDevice();
    const QSignalSpy info(device.get(), &VYRCameraDevice::InfoChanged);
    FakeVYR::emitFrame(0);
    for (int held = 0; held < 32; ++held) {
        if (device->Size() > 0)
            popFrame(*device); // held: not released
        FakeVYR::emitFrame(static_cast<std::uint32_t>(100 * (held + 1)));
    }
    device->OutputQueue().Clear();
    for (std::uint32_t timestamp = 3'300; timestamp <= 10'000; timestamp += 100)
        FakeVYR::emitFrame(timestamp);
    EXPECT_EQ(device->Size(), 0) << "dropped";
    EXPECT_EQ(info.count(), 1);
    EXPECT_THAT(lastText(info).toStdString(), testing::HasSubstr("FPS:  100.000"));
}

TEST_F(CameraDevice, FramesCarryTheRateMeasuredWhenTheyCame)
{
    const auto device = makeStreamingDevice();
    for (const std::uint32_t timestamp : {0U, 5'000U, 10'000U, 15'000U})
        FakeVYR::emitFrame(timestamp);
    EXPECT_EQ(popFrame(*device)->fps, 0.0F);
    EXPECT_EQ(popFrame(*device)->fps, 0.0F);
    EXPECT_EQ(popFrame(*device)->fps, 2.0F) << "the frame that closes the window carries the new rate";
    EXPECT_EQ(popFrame(*device)->fps, 2.0F);
}

// Frame rate

TEST_F(CameraDevice, FifthFrameAfterOneSecondMeasuresFourFramesPerSecond)
{
    const auto device = makeStreamingDevice();
    const QSignalSpy info(device.get(), &VYRCameraDevice::InfoChanged);
    for (const std::uint32_t timestamp : {0U, 2'500U, 5'000U, 7'500U})
        FakeVYR::emitFrame(timestamp);
    EXPECT_EQ(info.count(), 0);
    FakeVYR::emitFrame(10'000);
    EXPECT_EQ(info.count(), 1);
    EXPECT_EQ(lastText(info), "Resolution: 320x240, Binning: 2x2, FPS:    4.000, Rate:    0.586 MB/s");
}

TEST_F(CameraDevice, WindowsFollowOneAnother)
{
    const auto device = makeStreamingDevice();
    const QSignalSpy info(device.get(), &VYRCameraDevice::InfoChanged);
    for (std::uint32_t timestamp = 0; timestamp <= 30'000; timestamp += 1'000)
        FakeVYR::emitFrame(timestamp);
    EXPECT_EQ(info.count(), 3);
    EXPECT_THAT(lastText(info).toStdString(), testing::HasSubstr("FPS:   10.000"));
}

TEST_F(CameraDevice, SmallerTimestampOpensANewWindowSilently)
{
    const auto device = makeStreamingDevice();
    const QSignalSpy info(device.get(), &VYRCameraDevice::InfoChanged);
    FakeVYR::emitFrame(50'000);
    FakeVYR::emitFrame(55'000);
    FakeVYR::emitFrame(1'000); // the library's counter has started again
    FakeVYR::emitFrame(6'000);
    EXPECT_EQ(info.count(), 0);
    FakeVYR::emitFrame(11'000);
    EXPECT_EQ(info.count(), 1);
    EXPECT_THAT(lastText(info).toStdString(), testing::HasSubstr("FPS:    2.000"));
}

TEST_F(CameraDevice, TimestampsThatStandStillNeverCloseAWindow)
{
    const auto device = makeStreamingDevice();
    const QSignalSpy info(device.get(), &VYRCameraDevice::InfoChanged);
    for (int i = 0; i < 20; ++i)
        FakeVYR::emitFrame(4'294'967'295U);
    EXPECT_EQ(info.count(), 0);
}

struct Control
{
    const char* name;
    void (*use)(VYRCameraDevice& device);
};

void PrintTo(const Control& control, std::ostream* stream)
{
    *stream << control.name;
}

class WindowReset : public CameraDevice, public testing::WithParamInterface<Control>
{
};

TEST_P(WindowReset, NextFrameOpensANewWindow)
{
    const auto device = makeStreamingDevice();
    const QSignalSpy info(device.get(), &VYRCameraDevice::InfoChanged);
    FakeVYR::emitFrame(0);
    FakeVYR::emitFrame(9'000);
    GetParam().use(*device);
    FakeVYR::emitFrame(10'000);
    EXPECT_EQ(info.count(), 0) << "the window that began at 0 is gone";
    FakeVYR::emitFrame(20'000);
    EXPECT_EQ(info.count(), 1);
    EXPECT_THAT(lastText(info).toStdString(), testing::HasSubstr("FPS:    1.000"));
}

INSTANTIATE_TEST_SUITE_P(Controls, WindowReset,
                         testing::Values(Control{"Exposure", [](VYRCameraDevice& device) { device.Exposure(1); }},
                                         Control{"Gain", [](VYRCameraDevice& device) { device.Gain(1); }},
                                         Control{"Led", [](VYRCameraDevice& device) { device.Led(1); }},
                                         Control{"HFlip", [](VYRCameraDevice& device) { device.HFlip(true); }},
                                         Control{"VFlip", [](VYRCameraDevice& device) { device.VFlip(true); }}));

class WindowKept : public WindowReset
{
};

TEST_P(WindowKept, TheWindowGoesOn)
{
    const auto device = makeStreamingDevice();
    const QSignalSpy info(device.get(), &VYRCameraDevice::InfoChanged);
    FakeVYR::emitFrame(0);
    GetParam().use(*device);
    FakeVYR::emitFrame(10'000);
    EXPECT_EQ(info.count(), 1);
}

INSTANTIATE_TEST_SUITE_P(Controls, WindowKept,
                         testing::Values(Control{"SwapCameras",
                                                 [](VYRCameraDevice& device) { device.SwapCameras(true); }},
                                         Control{"Undistort", [](VYRCameraDevice& device) { device.Undistort(true); }},
                                         Control{"IMURange", [](VYRCameraDevice& device) {
                                                     device.IMURange(VYR_ACCEL_RANGE_4G, VYR_GYRO_RANGE_500);
                                                 }}));

// Temperature and status text

TEST_F(CameraDevice, TemperatureIsTheMeanOfTheLastAndTheNewReading)
{
    const auto device = makeStreamingDevice();
    const QSignalSpy info(device.get(), &VYRCameraDevice::InfoChanged);
    FakeVYR::emitFrameWithTemperature(0, 40.0F);
    FakeVYR::emitFrameWithTemperature(1, 42.0F);
    FakeVYR::emitFrame(10'000); // without sensor data
    EXPECT_THAT(lastText(info).toStdString(), testing::EndsWith(", Temp:   41.000 \u00B0C"));
}

TEST_F(CameraDevice, WithoutATemperatureTheTextHasNoTemp)
{
    const auto device = makeStreamingDevice();
    const QSignalSpy info(device.get(), &VYRCameraDevice::InfoChanged);
    FakeVYR::emitFrame(0);
    FakeVYR::emitFrame(10'000);
    EXPECT_FALSE(lastText(info).contains("Temp"));
}

TEST_F(CameraDevice, StartForgetsTheTemperature)
{
    const auto device = makeStreamingDevice();
    FakeVYR::emitFrameWithTemperature(0, 40.0F);
    device->StopProcessing();
    device->StartProcessing();
    const QSignalSpy info(device.get(), &VYRCameraDevice::InfoChanged);
    device->UpdateInfo();
    EXPECT_EQ(lastText(info), idleText("320x240", "2x2"));
}

TEST_F(CameraDevice, TextOfSixFortyByFourEightyAtThirty)
{
    const auto device = makeDevice(0, 640, 480, 30.0F);
    device->StartProcessing();
    const QSignalSpy info(device.get(), &VYRCameraDevice::InfoChanged);
    for (std::uint32_t frame = 0; frame <= 30; ++frame)
        FakeVYR::emitFrame(frame * 10'000 / 30);
    EXPECT_EQ(lastText(info), "Resolution: 640x480, Binning: 1x1, FPS:   30.000, Rate:   17.578 MB/s");
}

TEST_F(CameraDevice, UnknownBinningCodeHasAnEmptyNameInTheText)
{
    FakeVYR::setModes({{320, 240, 77, 30.0F, 0.5F, 60.0F}});
    const auto device = makeDevice(77, 320, 240, 30.0F);
    const QSignalSpy info(device.get(), &VYRCameraDevice::InfoChanged);
    device->StartProcessing();
    EXPECT_EQ(lastText(info), idleText("320x240", ""));
    EXPECT_EQ(device->ResolutionKey(), "R320x240_B");
}

// Changing the mode

TEST_F(CameraDevice, SetResolutionWithTheStoredValuesEmitsNothing)
{
    const auto device = makeDevice();
    const QSignalSpy info(device.get(), &VYRCameraDevice::InfoChanged);
    device->SetResolution(5, 320, 240, 30.0F);
    EXPECT_TRUE(info.isEmpty());
    EXPECT_THAT(FakeVYR::calls(), IsEmpty());
}

TEST_F(CameraDevice, SetResolutionNamesTheOldModeAndLeavesTheCameraAlone)
{
    const auto device = makeDevice();
    const QSignalSpy info(device.get(), &VYRCameraDevice::InfoChanged);
    device->SetResolution(0, 640, 480, 60.0F);
    EXPECT_EQ(info.count(), 1);
    EXPECT_EQ(lastText(info), idleText("320x240", "2x2"));
    EXPECT_THAT(FakeVYR::calls(), IsEmpty());
    device->StartProcessing();
    EXPECT_EQ(lastText(info), idleText("640x480", "1x1"));
    EXPECT_EQ(FakeVYR::calls().front(), "Enumerate 1 640 480 0 60");
}

TEST_F(CameraDevice, SetResolutionOfAnotherFrameRateAloneIsAChange)
{
    const auto device = makeDevice();
    const QSignalSpy info(device.get(), &VYRCameraDevice::InfoChanged);
    device->SetResolution(5, 320, 240, 30.001F);
    EXPECT_EQ(info.count(), 1);
}

// Controls

TEST_F(CameraDevice, ControlsReachTheLibrary)
{
    const auto device = makeDevice();
    device->Exposure(7);
    device->Gain(8);
    device->Led(9);
    device->HFlip(true);
    device->VFlip(false);
    device->SwapCameras(true);
    device->Undistort(true);
    device->IMURange(VYR_ACCEL_RANGE_8G, VYR_GYRO_RANGE_2000);
    EXPECT_THAT(FakeVYR::calls(), ElementsAre("Set 8 7 0", "Set 9 8", "Set 13 9", "Set 10 1", "Set 11 0", "Set 12 1",
                                              "Set 17 1", "Set 20 2 3"));
}

TEST_F(CameraDevice, ExposureIsFollowedByAZero)
{
    const auto device = makeDevice();
    device->Gain(1); // leaves something else than zeros where the library looks for its arguments
    device->Exposure(250);
    EXPECT_THAT(FakeVYR::calls(), ElementsAre("Set 9 1", "Set 8 250 0"));
}

TEST_F(CameraDevice, ControlsOfAClosedDeviceCallNothing)
{
    FakeVYR::setOpens(false);
    const auto device = makeDevice();
    device->Exposure(7);
    device->Gain(8);
    device->Led(9);
    device->HFlip(true);
    device->VFlip(true);
    device->SwapCameras(true);
    device->Undistort(true);
    device->IMURange(VYR_ACCEL_RANGE_2G, VYR_GYRO_RANGE_250);
    EXPECT_THAT(FakeVYR::calls(), IsEmpty());
}

TEST_F(CameraDevice, StartDoesNotReapplySwapUndistortAndRanges)
{
    const auto device = makeDevice();
    device->SwapCameras(true);
    device->Undistort(true);
    device->IMURange(VYR_ACCEL_RANGE_4G, VYR_GYRO_RANGE_500);
    FakeVYR::clearCalls();
    device->StartProcessing();
    for (const std::string& call : FakeVYR::calls())
        EXPECT_FALSE(call == "Set 12 1" || call == "Set 17 1" || call == "Set 20 1 1") << call;
}

// Identity

TEST_F(CameraDevice, TextsEndAtTheirZeroByte)
{
    FakeVYR::setText(2, std::string("Camera\0rest", 11));
    FakeVYR::setText(3, std::string("0042\0", 5));
    FakeVYR::setText(4, std::string("1.2\0", 4));
    FakeVYR::setText(5, std::string("today\0", 6));
    const auto device = makeDevice();
    EXPECT_EQ(device->DeviceName(), "Camera");
    EXPECT_EQ(device->SerialNumber(), "0042");
    EXPECT_EQ(device->FirmwareVersion(), "1.2");
    EXPECT_EQ(device->FirmwareBuildTime(), "today");
    EXPECT_THAT(FakeVYR::calls(), ElementsAre("Get 2", "Get 3", "Get 4", "Get 5"));
}

TEST_F(CameraDevice, TextWithoutAZeroByteYieldsTwoHundredFiftySixCharacters)
{
    FakeVYR::setText(2, std::string(256, 'x'));
    const auto device = makeDevice();
    EXPECT_EQ(device->DeviceName(), QString(256, 'x'));
}

TEST_F(CameraDevice, TextsOfAClosedDeviceAreEmpty)
{
    FakeVYR::setOpens(false);
    const auto device = makeDevice();
    EXPECT_EQ(device->DeviceName(), QString());
    EXPECT_THAT(FakeVYR::calls(), IsEmpty());
}

TEST_F(CameraDevice, LibraryVersionIsTheLibrarysOwn)
{
    EXPECT_EQ(makeDevice()->LibraryVersion(), "9.8.7");
    FakeVYR::setVersion(nullptr);
    EXPECT_TRUE(makeDevice()->LibraryVersion().isNull());
}

TEST_F(CameraDevice, ResolutionIsSupportedWhenTheLibraryFindsIt)
{
    const auto device = makeDevice();
    EXPECT_TRUE(device->IsResolutionSupported(0, 640, 480, 60.0F));
    EXPECT_FALSE(device->IsResolutionSupported(0, 640, 481, 60.0F));
    device->Close();
    EXPECT_FALSE(device->IsResolutionSupported(0, 640, 480, 60.0F));
}

TEST_F(CameraDevice, ResolutionKeyNamesSizeAndBinning)
{
    EXPECT_EQ(makeDevice(5, 640, 480, 30.0F)->ResolutionKey(), "R640x480_B2x2");
}

TEST_F(CameraDevice, LibrarysOwnParametersAreReadThroughOnePointer)
{
    const auto device = makeDevice();
    EXPECT_EQ(device->Parameter18(), 1'800);
    EXPECT_EQ(device->Parameter19(), 1'900);
    device->Close();
    EXPECT_EQ(device->Parameter18(), 0);
}

// Threads

TEST_F(CameraDevice, SignalsFromTheCallbackThreadReachTheGuiThreadQueued)
{
    const auto device = makeStreamingDevice();
    QObject receiver;
    QThread* deliveredOn = nullptr;
    int delivered = 0;
    QObject::connect(device.get(), &VYRCameraDevice::QChanged, &receiver, [&] {
        deliveredOn = QThread::currentThread();
        ++delivered;
    });
    std::thread([] { FakeVYR::emitFrame(0); }).join();
    EXPECT_EQ(delivered, 0);
    QCoreApplication::processEvents();
    EXPECT_EQ(delivered, 1);
    EXPECT_EQ(deliveredOn, QCoreApplication::instance()->thread());
}

TEST_F(CameraDevice, ControlsAndModesMayChangeWhileFramesArrive)
{
    const auto device = makeStreamingDevice();
    std::atomic<bool> stop{false};
    std::atomic<int> emitted{0};
    std::thread library([&] {
        for (std::uint32_t i = 0; !stop; ++i) {
            FakeVYR::emitFrameWithTemperature(i * 2'000, 40.0F);
            ++emitted;
        }
    });
    for (int round = 0; round < 50; ++round) {
        std::atomic<bool> stopConsumer{false};
        std::thread consumer([&] {
            while (!stopConsumer)
                if (NodeData* const item = device->OutputQueue().Pop(5))
                    item->Release();
        });
        device->Exposure(round);
        device->Gain(round);
        stopConsumer = true;
        consumer.join();
        device->StopProcessing();
        device->OutputQueue().Clear();
        device->SetResolution(round % 2 == 0 ? 0 : 5, round % 2 == 0 ? 640 : 320, round % 2 == 0 ? 480 : 240, 30.0F);
        device->StartProcessing();
        const int before = emitted;
        ASSERT_TRUE(waitFor([&] { return emitted > before + 5; }));
    }
    stop = true;
    library.join();
    device->StopProcessing();
    EXPECT_EQ(countFreeFrames(*device), 32);
}

TEST_F(CameraDevice, SetResolutionForgetsTheMeasurements)
{
    const auto device = makeStreamingDevice();
    FakeVYR::emitFrameWithTemperature(0, 40.0F);
    FakeVYR::emitFrame(10'000);
    device->StopProcessing();
    device->SetResolution(0, 640, 480, 60.0F);
    const QSignalSpy info(device.get(), &VYRCameraDevice::InfoChanged);
    device->UpdateInfo();
    EXPECT_EQ(lastText(info), idleText("640x480", "1x1"));
}

TEST_F(CameraDevice, SetResolutionOfAnySingleValueIsAChange)
{
    const auto device = makeDevice();
    const QSignalSpy info(device.get(), &VYRCameraDevice::InfoChanged);
    device->SetResolution(0, 320, 240, 30.0F);
    EXPECT_EQ(info.count(), 1);
    device->SetResolution(0, 321, 240, 30.0F);
    EXPECT_EQ(info.count(), 2);
    device->SetResolution(0, 321, 241, 30.0F);
    EXPECT_EQ(info.count(), 3);
    EXPECT_EQ(device->ResolutionKey(), "R321x241_B1x1");
}

TEST_F(CameraDevice, StartForgetsTheRateAndTheWindow)
{
    const auto device = makeStreamingDevice();
    FakeVYR::emitFrame(0);
    FakeVYR::emitFrame(10'000);
    device->StopProcessing();
    device->StartProcessing();
    const QSignalSpy info(device.get(), &VYRCameraDevice::InfoChanged);
    device->UpdateInfo();
    EXPECT_EQ(lastText(info), idleText("320x240", "2x2"));
    FakeVYR::emitFrame(20'000);
    EXPECT_EQ(info.count(), 1) << "opens a window";
}

TEST_F(CameraDevice, TheFrameThatClosesAWindowBringsItsTemperatureIntoTheText)
{
    const auto device = makeStreamingDevice();
    const QSignalSpy info(device.get(), &VYRCameraDevice::InfoChanged);
    FakeVYR::emitFrame(0);
    FakeVYR::emitFrameWithTemperature(10'000, 40.0F);
    EXPECT_THAT(lastText(info).toStdString(), testing::EndsWith(", Temp:   40.000 \u00B0C"));
}

TEST_F(CameraDevice, AnyNonZeroFlagMeansSensorData)
{
    const auto device = makeStreamingDevice();
    const QSignalSpy info(device.get(), &VYRCameraDevice::InfoChanged);
    VYRFrameRecord record{};
    record.hasSensorData = 0x80;
    record.temperature = 40.0F;
    FakeVYR::emitRecord(&record);
    device->UpdateInfo();
    EXPECT_THAT(lastText(info).toStdString(), testing::EndsWith(", Temp:   40.000 \u00B0C"));
}

TEST_F(CameraDevice, StopAfterCloseCallsNothing)
{
    auto device = makeStreamingDevice();
    device->Close();
    FakeVYR::clearCalls();
    device->StopProcessing();
    device.reset();
    EXPECT_THAT(FakeVYR::calls(), IsEmpty());
}

TEST_F(CameraDevice, StartWithoutAMatchingModeLeavesPoolAndMeasurementsAlone)
{
    const auto device = makeStreamingDevice();
    FakeVYR::emitFrameWithTemperature(0, 40.0F);
    FakeVYR::setModes({});
    device->StartProcessing();
    EXPECT_EQ(countFreeFrames(*device), 31);
    const QSignalSpy info(device.get(), &VYRCameraDevice::InfoChanged);
    device->UpdateInfo();
    EXPECT_THAT(lastText(info).toStdString(), testing::EndsWith(", Temp:   40.000 \u00B0C"));
}

TEST_F(CameraDevice, WithoutArgumentsTheTemperatureIsNotKnown)
{
    VYRCameraDevice device;
    const QSignalSpy info(&device, &VYRCameraDevice::InfoChanged);
    device.UpdateInfo();
    EXPECT_EQ(lastText(info), idleText("0x0", "1x1"));
}

TEST_F(CameraDevice, FramesThatTheLibraryEmitsWhileItStopsAreIgnored)
{
    const auto device = makeStreamingDevice();
    const QSignalSpy queue(device.get(), &VYRCameraDevice::QChanged);
    FakeVYR::setDuringStop([] { FakeVYR::emitLateFrame(0); });
    device->StopProcessing();
    EXPECT_TRUE(queue.isEmpty());
    EXPECT_EQ(device->Size(), 0);
}

} // namespace
