// SPDX-License-Identifier: Apache-2.0
// Stereo View with the simulated camera.

#include "StereoViewSimulatorFixture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace {

class StereoViewSimulator : public StereoViewSimulatorFixture
{
protected:
    static VYRResolutionInfo smallestMode()
    {
        std::vector<VYRResolutionInfo> modes(32768);
        const int count =
            EnumerateResolutions(modes.data(), static_cast<int>(modes.size()), VYRAny, VYRAny, VYRAny, VYRAnyFps);
        modes.resize(static_cast<std::size_t>(count));
        return *std::min_element(modes.begin(), modes.end(),
                                 [](const auto& a, const auto& b) { return a.width * a.height < b.width * b.height; });
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

} // namespace
