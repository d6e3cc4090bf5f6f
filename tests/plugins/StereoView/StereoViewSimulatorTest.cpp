// SPDX-License-Identifier: Apache-2.0
// Stereo View with the simulated camera.

#include "StereoViewFixture.h"

#include <camera/VYRLibrary.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <vector>

namespace {

class StereoViewSimulator : public StereoViewFixture
{
protected:
    /// The first mode that meets the criteria, as EnumerateResolutions() takes them.
    static VYRResolutionInfo mode(int width, int height, int binning, float fps)
    {
        VYRResolutionInfo found{};
        if (EnumerateResolutions(&found, 1, width, height, binning, fps) != 1)
            ADD_FAILURE() << "the camera has no such mode";
        return found;
    }

    static VYRResolutionInfo smallestMode()
    {
        std::vector<VYRResolutionInfo> modes(32768);
        const int count = EnumerateResolutions(modes.data(), static_cast<int>(modes.size()), VYRAny, VYRAny, VYRAny,
                                               VYRAnyFps);
        modes.resize(static_cast<std::size_t>(count));
        return *std::min_element(modes.begin(), modes.end(), [](const auto& a, const auto& b) {
            return a.width * a.height < b.width * b.height;
        });
    }

    static QString sizeText(const VYRResolutionInfo& size)
    {
        return QStringLiteral("%1 \u00D7 %2").arg(size.width).arg(size.height);
    }

    QString sizeShown() const { return figure("pictureSizeLabel"); }
};

TEST_F(StereoViewSimulator, ShowsPicturesInEveryBinning)
{
    load(mode(752, 480, 0, 30.0F));
    host->start();
    EXPECT_TRUE(QTest::qWaitFor([&] { return sizeShown() == sizeText(host->currentResolution()); }));
    for (const int binning : {4, 8, 1, 5, 9, 2, 6, 10}) {
        host->changeMode(mode(VYRAny, VYRAny, binning, VYRAnyFps));
        EXPECT_TRUE(QTest::qWaitFor([&] { return sizeShown() == sizeText(host->currentResolution()); })) << binning;
        EXPECT_EQ(message(), "");
    }
}

TEST_F(StereoViewSimulator, ShowsTheSmallestWindow)
{
    load(smallestMode());
    host->start();
    EXPECT_TRUE(QTest::qWaitFor([&] { return sizeShown() == sizeText(host->currentResolution()); }));
    EXPECT_EQ(message(), "");
}

TEST_F(StereoViewSimulator, TenThousandFramesAtTwoHundredASecondLoseNoPoolSlotAndNoMemory)
{
    constexpr int framesWanted = 10000;
    constexpr double framesPerSecond = 200.0;
    constexpr int warmUp = 5000;                                        // ms
    constexpr int duration = static_cast<int>(framesWanted / framesPerSecond * 1000.0); // ms
    load(mode(VYRAny, VYRAny, 5, static_cast<float>(framesPerSecond)));

    int framesSeen = 0;
    // Once for every frame that leaves the camera, on its thread; counted here.
    QObject::connect(host->cameraDevice(), &VYRCameraDevice::QChanged, host.get(), [&] { ++framesSeen; });
    host->start();
    QTest::qWait(warmUp);
    const long before = residentBytes();
    EXPECT_TRUE(QTest::qWaitFor([&] { return framesSeen >= framesWanted; }, 2 * duration)) << framesSeen;

    ASSERT_TRUE(QTest::qWaitFor([&] { return worksOff(); })) << framesOut() << " pool slots are lost";
    EXPECT_EQ(figure("unreadableLabel"), "0");
    EXPECT_EQ(message(), "");
    expectLittleGrowth(before);
    std::printf("frame rate %s, dropped %s of %d, memory %+ld bytes\n", qPrintable(figure("frameRateLabel")),
                qPrintable(figure("droppedLabel")), framesSeen, residentBytes() - before);
}

} // namespace
