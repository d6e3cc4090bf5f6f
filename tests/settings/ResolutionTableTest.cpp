// SPDX-License-Identifier: Apache-2.0
// Looking up capture modes.

#include "TestModes.h"

#include <settings/ResolutionTable.h>

#include <FakeVYR.h>
#include <gtest/gtest.h>

#include <climits>

namespace {

VYRResolutionInfo mode(int width, int height, int binning, float fps = 30.0F)
{
    return {width, height, binning, fps, 1.0F, 60.0F};
}

TEST(ResolutionTableTest, LimitsNarrowOverTheModesOfTheBinning)
{
    const auto limits = ResolutionTable(testModes()).limits(0);
    ASSERT_TRUE(limits);
    EXPECT_EQ(limits->minWidth, 320);
    EXPECT_EQ(limits->minHeight, 240);
    EXPECT_EQ(limits->maxWidth, 752);
    EXPECT_EQ(limits->maxHeight, 480);
}

TEST(ResolutionTableTest, LimitsOfABinningWithoutModesAreTheStartValues)
{
    const auto limits = ResolutionTable(testModes()).limits(9);
    ASSERT_TRUE(limits);
    EXPECT_EQ(limits->minWidth, 16777215);
    EXPECT_EQ(limits->minHeight, 16777215);
    EXPECT_EQ(limits->maxWidth, 0);
    EXPECT_EQ(limits->maxHeight, 0);
}

TEST(ResolutionTableTest, EveryLookupFailsForAnUnknownBinning)
{
    const ResolutionTable table({mode(640, 480, 3), mode(640, 480, 0)});
    for (const int unknown : {3, 7, 11, 12, 16, -1}) {
        EXPECT_FALSE(table.limits(unknown));
        EXPECT_FALSE(table.largest(unknown));
        EXPECT_FALSE(table.nearest(640, 480, unknown));
        EXPECT_FALSE(table.nearestInRow(640, 480, unknown, false));
        EXPECT_FALSE(table.nextInRow(mode(640, 480, unknown), 644, false));
    }
}

TEST(ResolutionTableTest, AllNineBinningsHaveASlot)
{
    for (const int binning : {0, 1, 2, 4, 8, 5, 9, 6, 10}) {
        const ResolutionTable table({mode(100 + binning, 100, binning)});
        ASSERT_TRUE(table.largest(binning)) << binning;
        EXPECT_EQ(table.largest(binning)->width, 100 + binning);
    }
}

TEST(ResolutionTableTest, LargestHasTheMostPixels)
{
    const ResolutionTable table({mode(320, 240, 0), mode(400, 400, 0), mode(752, 100, 0)});
    EXPECT_EQ(table.largest(0), mode(400, 400, 0));
}

TEST(ResolutionTableTest, OfEqualAreasLargestIsTheOneEnumeratedFirst)
{
    const ResolutionTable table({mode(100, 100, 0), mode(640, 480, 0, 10), mode(480, 640, 0), mode(640, 480, 0, 20)});
    EXPECT_EQ(table.largest(0), mode(640, 480, 0, 10));
}

TEST(ResolutionTableTest, NearestHasTheSmallestSquaredDistance)
{
    const ResolutionTable table({mode(100, 100, 0), mode(130, 130, 0), mode(100, 145, 0)});
    // 30² + 30² = 1800 and 45² = 2025: the sum of the plain distances would choose the other one.
    EXPECT_EQ(ResolutionTable({mode(130, 130, 0), mode(100, 145, 0)}).nearest(100, 100, 0), mode(130, 130, 0));
    EXPECT_EQ(table.nearest(101, 99, 0), mode(100, 100, 0));
    EXPECT_EQ(table.nearest(-5000, -5000, 0), mode(100, 100, 0));
}

TEST(ResolutionTableTest, NearestKeepsTheFirstOnATie)
{
    const ResolutionTable table({mode(90, 100, 0), mode(110, 100, 0), mode(100, 90, 0)});
    EXPECT_EQ(table.nearest(100, 100, 0), mode(90, 100, 0));
}

TEST(ResolutionTableTest, NearestLooksOnlyAtItsBinning)
{
    EXPECT_EQ(ResolutionTable(testModes()).nearest(640, 480, 10)->width, 188);
    EXPECT_FALSE(ResolutionTable(testModes()).nearest(640, 480, 9));
}

TEST(ResolutionTableTest, NearestInRowKeepsTheHeight)
{
    const ResolutionTable table({mode(640, 360, 0), mode(320, 480, 0), mode(700, 480, 0)});
    EXPECT_EQ(table.nearestInRow(640, 480, 0, false), mode(700, 480, 0));
    EXPECT_FALSE(table.nearestInRow(640, 479, 0, false));
}

TEST(ResolutionTableTest, NearestInRowByHeightKeepsTheWidth)
{
    const ResolutionTable table({mode(640, 100, 0), mode(320, 470, 0), mode(640, 400, 0)});
    EXPECT_EQ(table.nearestInRow(640, 480, 0, true), mode(640, 400, 0));
    EXPECT_FALSE(table.nearestInRow(641, 400, 0, true));
}

TEST(ResolutionTableTest, NearestInRowKeepsTheFirstOnATie)
{
    const ResolutionTable table({mode(90, 100, 0), mode(110, 100, 0), mode(110, 120, 0)});
    EXPECT_EQ(table.nearestInRow(100, 100, 0, false), mode(90, 100, 0));
    EXPECT_EQ(table.nearestInRow(110, 110, 0, true), mode(110, 100, 0));
}

TEST(ResolutionTableTest, NextInRowGoesOnInTheDirectionOfTheChange)
{
    const ResolutionTable table({mode(320, 240, 0), mode(400, 240, 0), mode(640, 240, 0), mode(404, 480, 0)});
    EXPECT_EQ(table.nextInRow(mode(400, 240, 0), 404, false), mode(640, 240, 0));
    EXPECT_EQ(table.nextInRow(mode(400, 240, 0), 396, false), mode(320, 240, 0));
    EXPECT_EQ(table.nextInRow(mode(320, 240, 0), 400, false), mode(400, 240, 0));
}

TEST(ResolutionTableTest, NextInRowByHeightKeepsTheWidth)
{
    const ResolutionTable table({mode(320, 120, 0), mode(320, 240, 0), mode(320, 480, 0), mode(400, 250, 0)});
    EXPECT_EQ(table.nextInRow(mode(320, 240, 0), 244, true), mode(320, 480, 0));
    EXPECT_EQ(table.nextInRow(mode(320, 240, 0), 236, true), mode(320, 120, 0));
}

// Halfway between two modes the nearest is the one behind, which the search must not take.
TEST(ResolutionTableTest, NextInRowIsNotDrawnBackByATie)
{
    const ResolutionTable table({mode(90, 100, 0), mode(110, 100, 0)});
    EXPECT_EQ(table.nextInRow(mode(90, 100, 0), 100, false), mode(110, 100, 0));
    EXPECT_EQ(table.nextInRow(mode(110, 100, 0), 100, false), mode(90, 100, 0));
}

// The search must not go through all the widths between, which would take seconds.
TEST(ResolutionTableTest, NextInRowCrossesAHugeGap)
{
    const ResolutionTable table({mode(4, 240, 0), mode(2000000000, 240, 0)});
    EXPECT_EQ(table.nextInRow(mode(4, 240, 0), 8, false), mode(2000000000, 240, 0));
    EXPECT_EQ(table.nextInRow(mode(2000000000, 240, 0), 1999999996, false), mode(4, 240, 0));
}

TEST(ResolutionTableTest, NextInRowKeepsTheFirstOnATie)
{
    const ResolutionTable table({mode(90, 100, 0), mode(110, 100, 0, 10), mode(110, 100, 0, 20)});
    EXPECT_EQ(table.nextInRow(mode(90, 100, 0), 94, false), mode(110, 100, 0, 10));
}

TEST(ResolutionTableTest, NextInRowGivesUpPastTheLimits)
{
    const ResolutionTable table(testModes());
    EXPECT_FALSE(table.nextInRow(mode(640, 360, 0), 644, false));
    EXPECT_FALSE(table.nextInRow(mode(320, 240, 0), 316, false));
    EXPECT_FALSE(table.nextInRow(mode(640, 480, 0), 484, true));
    EXPECT_FALSE(table.nextInRow(mode(500, 500, 0), 504, false));
    EXPECT_FALSE(table.nextInRow(mode(500, 500, 9), 504, false));
    EXPECT_FALSE(table.nextInRow(mode(500, 500, 9), 496, true));
}

TEST(ResolutionTableTest, EmptyTableHasLimitsAndNothingElse)
{
    const ResolutionTable table({});
    EXPECT_TRUE(table.limits(0));
    EXPECT_FALSE(table.largest(0));
    EXPECT_FALSE(table.nearest(0, 0, 0));
    EXPECT_FALSE(table.nearestInRow(0, 0, 0, true));
    EXPECT_FALSE(table.nextInRow(mode(0, 0, 0), 1, true));
}

TEST(ResolutionTableTest, ModesBeyondAnySensorAreHarmless)
{
    const ResolutionTable table({mode(INT_MAX, INT_MAX, 0), mode(INT_MIN, INT_MIN, 0)});
    EXPECT_EQ(table.nearest(INT_MIN, INT_MIN, 0), mode(INT_MIN, INT_MIN, 0));
    EXPECT_EQ(table.limits(0)->maxWidth, INT_MAX);
    EXPECT_EQ(table.limits(0)->minWidth, INT_MIN);
    EXPECT_FALSE(table.nextInRow(mode(INT_MAX, 5, 0), INT_MAX, false));
    EXPECT_EQ(table.nextInRow(mode(INT_MIN, INT_MAX, 0), INT_MAX, false), mode(INT_MAX, INT_MAX, 0));
}

// The library has more modes than are asked for.
TEST(ResolutionTableTest, SupportedTableIsAskedOfTheLibraryOnceFor32768Modes)
{
    FakeVYR::reset();
    std::vector<VYRResolutionInfo> modes;
    for (int width = 1; width <= 40000; ++width)
        modes.push_back(mode(width, 480, 0));
    FakeVYR::setModes(modes);

    const ResolutionTable& table = ResolutionTable::supported();

    EXPECT_EQ(table.limits(0)->maxWidth, 32768);
    EXPECT_EQ(table.nearest(40000, 480, 0), mode(32768, 480, 0));
    EXPECT_EQ(&ResolutionTable::supported(), &table);
    EXPECT_EQ(FakeVYR::calls(), std::vector<std::string>({"Enumerate 32768 -1 -1 -1 -1"}));
}

} // namespace
