// SPDX-License-Identifier: Apache-2.0
// Tests of the capture modes.

#include <simulator/ModeTable.h>
#include <simulator/SensorGeometry.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <set>
#include <vector>

using namespace simulator;

namespace {

std::vector<VYRResolutionInfo> allModes(int binning = -1)
{
    std::vector<VYRResolutionInfo> modes(32768);
    modes.resize(static_cast<std::size_t>(enumerateModes(modes.data(), 32768, -1, -1, binning, -1.0F)));
    return modes;
}

std::set<int> widths(int binning)
{
    std::set<int> result;
    for (const VYRResolutionInfo& mode : allModes(binning))
        result.insert(mode.width);
    return result;
}

std::set<int> heights(int binning)
{
    std::set<int> result;
    for (const VYRResolutionInfo& mode : allModes(binning))
        result.insert(mode.height);
    return result;
}

} // namespace

TEST(ModeTable, HasAllNineBinningsAndNoOther)
{
    std::set<int> codes;
    for (const VYRResolutionInfo& mode : allModes())
        codes.insert(mode.binning);
    EXPECT_THAT(codes, testing::ElementsAre(0, 1, 2, 4, 5, 6, 8, 9, 10));
    EXPECT_TRUE(allModes(3).empty());
    EXPECT_TRUE(allModes(7).empty());
    EXPECT_TRUE(allModes(11).empty());
    EXPECT_TRUE(allModes(-2).empty());
}

TEST(ModeTable, FitsIntoTheListThatHostsReserve)
{
    EXPECT_EQ(allModes().size(), 5265U);
}

TEST(ModeTable, WidthsAreMultiplesOf16FromAQuarterAndTheWhole)
{
    std::set<int> unbinned;
    for (int width = 192; width <= 752; width += 16)
        unbinned.insert(width);
    EXPECT_EQ(widths(0), unbinned);
    EXPECT_THAT(widths(1), testing::ElementsAre(96, 112, 128, 144, 160, 176, 192, 208, 224, 240, 256, 272, 288, 304,
                                                320, 336, 352, 368, 376));
    EXPECT_THAT(widths(2), testing::ElementsAre(48, 64, 80, 96, 112, 128, 144, 160, 176, 188));
}

TEST(ModeTable, HeightsAreMultiplesOf8FromAQuarterAndTheWhole)
{
    std::set<int> unbinned;
    for (int height = 120; height <= 480; height += 8)
        unbinned.insert(height);
    EXPECT_EQ(heights(0), unbinned);
    EXPECT_EQ(*heights(4).begin(), 64);
    EXPECT_EQ(*heights(4).rbegin(), 240);
    EXPECT_THAT(heights(8), testing::ElementsAre(32, 40, 48, 56, 64, 72, 80, 88, 96, 104, 112, 120));
}

TEST(ModeTable, EachModeIsListedOnceAndLargestFirst)
{
    for (const int code : {0, 1, 2, 4, 5, 6, 8, 9, 10}) {
        const std::vector<VYRResolutionInfo> modes = allModes(code);
        ASSERT_FALSE(modes.empty());
        EXPECT_EQ(modes[0].width, 752 / horizontalBinning(code));
        EXPECT_EQ(modes[0].height, 480 / verticalBinning(code));
        for (std::size_t i = 1; i < modes.size(); ++i) {
            const bool narrower = modes[i].width < modes[i - 1].width;
            const bool lower = modes[i].width == modes[i - 1].width && modes[i].height < modes[i - 1].height;
            EXPECT_TRUE(narrower || lower) << code << ", " << i;
        }
    }
    EXPECT_EQ(allModes()[0].width, 752);
}

TEST(ModeTable, FrameRateBoundsFollowTheRowsRead)
{
    EXPECT_FLOAT_EQ(maximumFps(480), 60.0F);
    EXPECT_FLOAT_EQ(maximumFps(240), 125.0F);
    EXPECT_FLOAT_EQ(maximumFps(120), 250.0F);
    for (int rows = 128; rows <= 480; rows += 8)
        EXPECT_LT(maximumFps(rows), maximumFps(rows - 8));
    for (const VYRResolutionInfo& mode : allModes()) {
        EXPECT_FLOAT_EQ(mode.minFps, 0.5F);
        EXPECT_FLOAT_EQ(mode.maxFps, maximumFps(mode.height * verticalBinning(mode.binning)));
        EXPECT_GE(mode.maxFps, 60.0F);
        EXPECT_LE(mode.maxFps, 250.0F);
    }
}

TEST(ModeTable, AnyFrameRateGivesThirty)
{
    for (const VYRResolutionInfo& mode : allModes())
        EXPECT_FLOAT_EQ(mode.fps, 30.0F);
}

TEST(ModeTable, AFrameRateWithinTheBoundsIsTakenOver)
{
    VYRResolutionInfo mode = {};
    ASSERT_EQ(enumerateModes(&mode, 1, 752, 480, 0, 17.25F), 1);
    EXPECT_FLOAT_EQ(mode.fps, 17.25F);
    EXPECT_FLOAT_EQ(mode.minFps, 0.5F);
    EXPECT_FLOAT_EQ(mode.maxFps, 60.0F);
    EXPECT_EQ(enumerateModes(&mode, 1, 752, 480, 0, 0.5F), 1);
    EXPECT_EQ(enumerateModes(&mode, 1, 752, 480, 0, 60.0F), 1);
}

TEST(ModeTable, AFrameRateOutsideTheBoundsMatchesNothing)
{
    VYRResolutionInfo mode = {};
    mode.width = 77;
    for (const float fps :
         {0.0F, 0.49F, 60.1F, -2.0F, std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity()})
        EXPECT_EQ(enumerateModes(&mode, 1, 752, 480, 0, fps), 0) << fps;
    EXPECT_EQ(mode.width, 77) << "the record stays unwritten";
}

TEST(ModeTable, TheUsualFirstModeMatches)
{
    VYRResolutionInfo mode = {};
    ASSERT_EQ(enumerateModes(&mode, 1, 320, 240, 5, 30.0F), 1);
    EXPECT_EQ(mode.width, 320);
    EXPECT_EQ(mode.height, 240);
    EXPECT_EQ(mode.binning, 5);
    EXPECT_FLOAT_EQ(mode.fps, 30.0F);
}

TEST(ModeTable, ExactValuesGiveOneOrNone)
{
    VYRResolutionInfo modes[4] = {};
    EXPECT_EQ(enumerateModes(modes, 4, 640, 480, 0, 30.0F), 1);
    EXPECT_EQ(enumerateModes(modes, 4, 641, 480, 0, 30.0F), 0);
    EXPECT_EQ(enumerateModes(modes, 4, 640, 484, 0, 30.0F), 0);
    EXPECT_EQ(enumerateModes(modes, 4, 640, 480, 5, 30.0F), 0);
    EXPECT_EQ(enumerateModes(modes, 4, 0, 0, 0, 30.0F), 0);
}

TEST(ModeTable, CriteriaCombine)
{
    std::vector<VYRResolutionInfo> modes(32768);
    const int count = enumerateModes(modes.data(), 32768, 320, -1, -1, -1.0F);
    ASSERT_GT(count, 0);
    std::map<int, int> perBinning;
    for (int i = 0; i < count; ++i) {
        EXPECT_EQ(modes[static_cast<std::size_t>(i)].width, 320);
        ++perBinning[modes[static_cast<std::size_t>(i)].binning];
    }
    EXPECT_EQ(perBinning.size(), 6U) << "320 columns are too many for groups of four";
}

TEST(ModeTable, CapacityLimitsWhatIsWritten)
{
    VYRResolutionInfo modes[3] = {};
    EXPECT_EQ(enumerateModes(modes, 2, -1, -1, -1, -1.0F), 2);
    EXPECT_EQ(modes[1].width, 752);
    EXPECT_EQ(modes[2].width, 0);
    EXPECT_EQ(enumerateModes(modes, 0, -1, -1, -1, -1.0F), 0);
    EXPECT_EQ(enumerateModes(modes, -5, -1, -1, -1, -1.0F), 0);
    EXPECT_EQ(enumerateModes(nullptr, 100, -1, -1, -1, -1.0F), 0);
}

TEST(ModeTable, SupportedMeansListed)
{
    EXPECT_TRUE(isSupported({320, 240, 5, 30.0F, 0.0F, 0.0F}));
    EXPECT_TRUE(isSupported({192, 120, 0, 250.0F, 0.0F, 0.0F}));
    EXPECT_FALSE(isSupported({192, 120, 0, 251.0F, 0.0F, 0.0F}));
    EXPECT_FALSE(isSupported({320, 240, 3, 30.0F, 0.0F, 0.0F}));
    EXPECT_FALSE(isSupported({-1, 240, 5, 30.0F, 0.0F, 0.0F})) << "any is a criterion, not a mode";
    EXPECT_FALSE(isSupported({320, 240, 5, -1.0F, 0.0F, 0.0F}));
    EXPECT_FALSE(isSupported({}));
}

TEST(SensorGeometry, WindowsAreCentred)
{
    const SensorWindow window = sensorWindow({320, 240, 5, 30.0F, 0.5F, 60.0F});
    EXPECT_EQ(window.x, 56);
    EXPECT_EQ(window.y, 0);
    EXPECT_EQ(window.width, 640);
    EXPECT_EQ(window.height, 480);
}
