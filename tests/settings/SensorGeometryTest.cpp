// SPDX-License-Identifier: Apache-2.0
// Capture window, mosaic, drag and binning change as plain numbers.

#include "TestModes.h"

#include <settings/ResolutionTable.h>
#include <settings/SensorGeometry.h>

#include <gtest/gtest.h>

#include <climits>
#include <cmath>

namespace {

const QSize sensor(752, 480);

VYRResolutionInfo mode(int width, int height, int binning)
{
    return {width, height, binning, 30.0F, 1.0F, 60.0F};
}

TEST(SensorGeometryTest, BinningFactorsComeFromTheBitsOfTheCode)
{
    const auto is = [](int code, int horizontal, int vertical) {
        const BinningFactors factors = binningFactors(code);
        return factors.horizontal == horizontal && factors.vertical == vertical;
    };
    EXPECT_TRUE(is(0, 1, 1));
    EXPECT_TRUE(is(1, 2, 1));
    EXPECT_TRUE(is(2, 4, 1));
    EXPECT_TRUE(is(4, 1, 2));
    EXPECT_TRUE(is(8, 1, 4));
    EXPECT_TRUE(is(5, 2, 2));
    EXPECT_TRUE(is(9, 2, 4));
    EXPECT_TRUE(is(6, 4, 2));
    EXPECT_TRUE(is(10, 4, 4));
    EXPECT_TRUE(is(3, 4, 1));
}

TEST(SensorGeometryTest, TruncationGoesTowardZeroAndStaysInRange)
{
    EXPECT_EQ(truncated(29.9F), 29);
    EXPECT_EQ(truncated(-0.9F), 0);
    EXPECT_EQ(truncated(-2.5F), -2);
    EXPECT_EQ(truncated(NAN), 0);
    EXPECT_EQ(truncated(INFINITY), 16777216);
    EXPECT_EQ(truncated(-INFINITY), -16777216);
}

TEST(SensorGeometryTest, SensorIsThatOfTheCameraUnlessAModeIsLarger)
{
    EXPECT_EQ(sensorSize(ResolutionTable(testModes())), sensor);
    EXPECT_EQ(sensorSize(ResolutionTable({})), sensor);
    EXPECT_EQ(sensorSize(ResolutionTable({mode(640, 480, 0), mode(1280, 960, 0)})), QSize(1280, 960));
    EXPECT_EQ(sensorSize(ResolutionTable({mode(1280, 960, 5)})), sensor);
}

TEST(SensorGeometryTest, CaptureWindowIsCentred)
{
    EXPECT_EQ(captureWindow({752, 480}, sensor, mode(376, 240, 0)), QRect(188, 120, 376, 240));
    EXPECT_EQ(captureWindow({376, 240}, sensor, mode(376, 120, 0)), QRect(94, 90, 188, 60));
}

TEST(SensorGeometryTest, CaptureWindowTruncates)
{
    // 1/3 of 100 and of 50 pixels, and half of the rest.
    EXPECT_EQ(captureWindow({100, 50}, {300, 300}, mode(100, 100, 0)), QRect(33, 16, 33, 16));
}

TEST(SensorGeometryTest, ModeAsLargeAsTheBinnedSensorFillsTheWidget)
{
    EXPECT_EQ(captureWindow({500, 300}, sensor, mode(752, 480, 0)), QRect(0, 0, 500, 300));
    EXPECT_EQ(captureWindow({500, 300}, sensor, mode(376, 240, 5)), QRect(0, 0, 500, 300));
    EXPECT_EQ(captureWindow({500, 300}, sensor, mode(188, 480, 2)), QRect(0, 0, 500, 300));
    EXPECT_EQ(captureWindow({500, 300}, sensor, mode(752, 120, 8)), QRect(0, 0, 500, 300));
    EXPECT_TRUE(bandsOutside({500, 300}, QRect(0, 0, 500, 300)).isEmpty());
}

TEST(SensorGeometryTest, BandsCoverEverythingOutsideTheWindowOnce)
{
    EXPECT_EQ(
        bandsOutside({100, 60}, QRect(30, 10, 40, 20)),
        QVector<QRect>({QRect(0, 0, 100, 10), QRect(0, 30, 100, 30), QRect(0, 10, 30, 20), QRect(70, 10, 30, 20)}));
    EXPECT_EQ(bandsOutside({100, 60}, QRect(30, 0, 40, 60)),
              QVector<QRect>({QRect(0, 0, 30, 60), QRect(70, 0, 30, 60)}));
    EXPECT_TRUE(bandsOutside({100, 60}, QRect(-50, -50, 200, 200)).isEmpty());
}

TEST(SensorGeometryTest, CellsBeginWhereTheAccumulatedSizeHasCome)
{
    EXPECT_EQ(cellStarts(10.0F, 30), QVector<int>({0, 10, 20}));
    EXPECT_EQ(cellStarts(10.0F, 31), QVector<int>({0, 10, 20, 30}));
    EXPECT_EQ(cellStarts(2.5F, 10), QVector<int>({0, 2, 5, 7}));
    EXPECT_EQ(cellStarts(100.0F, 30), QVector<int>({0}));
    EXPECT_TRUE(cellStarts(10.0F, 0).isEmpty());
}

TEST(SensorGeometryTest, CellsOfLessThanAPixelAreLeftOut)
{
    for (const float size : {0.99F, 1e-30F, 0.0F, -5.0F, NAN})
        EXPECT_TRUE(cellStarts(size, 100).isEmpty()) << size;
}

TEST(SensorGeometryTest, CellColoursFormABayerPattern)
{
    EXPECT_EQ(cellColour(0, 0), 0);
    EXPECT_EQ(cellColour(1, 0), 1);
    EXPECT_EQ(cellColour(0, 1), 1);
    EXPECT_EQ(cellColour(1, 1), 2);
    EXPECT_EQ(cellColour(2, 4), 0);
    EXPECT_EQ(cellColour(7, 3), 2);
}

TEST(SensorGeometryTest, PressLessThanEightPixelsFromAnEdgeDragsIt)
{
    const QRect window(100, 50, 301, 201); // right edge 400, bottom edge 250
    EXPECT_EQ(dragModeAt({107, 150}, window), DragMode::Width);
    EXPECT_EQ(dragModeAt({93, 150}, window), DragMode::Width);
    EXPECT_EQ(dragModeAt({407, 150}, window), DragMode::Width);
    EXPECT_EQ(dragModeAt({250, 57}, window), DragMode::Height);
    EXPECT_EQ(dragModeAt({250, 243}, window), DragMode::Height);
    EXPECT_EQ(dragModeAt({107, 57}, window), DragMode::Both);
    EXPECT_EQ(dragModeAt({400, 250}, window), DragMode::Both);
}

TEST(SensorGeometryTest, PressExactlyEightPixelsFromAnEdgeDragsNothing)
{
    const QRect window(100, 50, 301, 201);
    EXPECT_EQ(dragModeAt({108, 150}, window), DragMode::None);
    EXPECT_EQ(dragModeAt({92, 150}, window), DragMode::None);
    EXPECT_EQ(dragModeAt({250, 58}, window), DragMode::None);
    EXPECT_EQ(dragModeAt({250, 258}, window), DragMode::None);
    EXPECT_EQ(dragModeAt({108, 58}, window), DragMode::None);
    EXPECT_EQ(dragModeAt({250, 150}, window), DragMode::None);
}

TEST(SensorGeometryTest, NearerOfTwoEdgesIsDragged)
{
    const QRect window(100, 50, 301, 201);
    EXPECT_EQ(dragModeAt({107, 58}, window), DragMode::Width);
    EXPECT_EQ(dragModeAt({108, 57}, window), DragMode::Height);
}

TEST(SensorGeometryTest, WindowGrowsOnBothSidesAwayFromTheCentre)
{
    const QRect start(100, 50, 200, 100);
    const QSize widget(400, 200);
    EXPECT_EQ(draggedWindow(start, DragMode::Width, {299, 100}, {309, 199}, widget), QRect(90, 50, 220, 100));
    EXPECT_EQ(draggedWindow(start, DragMode::Width, {100, 100}, {90, 0}, widget), QRect(90, 50, 220, 100));
    EXPECT_EQ(draggedWindow(start, DragMode::Width, {100, 100}, {110, 0}, widget), QRect(110, 50, 180, 100));
    EXPECT_EQ(draggedWindow(start, DragMode::Height, {200, 149}, {0, 152}, widget), QRect(100, 47, 200, 106));
    EXPECT_EQ(draggedWindow(start, DragMode::Height, {200, 50}, {0, 47}, widget), QRect(100, 47, 200, 106));
    EXPECT_EQ(draggedWindow(start, DragMode::Both, {299, 50}, {300, 49}, widget), QRect(99, 49, 202, 102));
    EXPECT_EQ(draggedWindow(start, DragMode::None, {299, 50}, {0, 0}, widget), start);
}

TEST(SensorGeometryTest, DraggedWindowEndsAtTheWidget)
{
    const QSize widget(400, 200);
    const QRect start(100, 50, 200, 100);
    EXPECT_EQ(draggedWindow(start, DragMode::Both, {299, 149}, {100000, 100000}, widget), QRect(0, 0, 400, 200));
    EXPECT_EQ(draggedWindow(start, DragMode::Both, {100, 50}, {-100000, -100000}, widget), QRect(0, 0, 400, 200));
    const QRect crossed = draggedWindow(start, DragMode::Both, {299, 149}, {-100000, -100000}, widget);
    EXPECT_FALSE(crossed.isValid());
    EXPECT_EQ(crossed.left(), 399);
    EXPECT_EQ(crossed.right(), 0);
}

TEST(SensorGeometryTest, SensorPixelsAreThoseOfTheBinning)
{
    EXPECT_EQ(sensorPixels(QRect(0, 0, 400, 200), {400, 200}, sensor, 0), QSize(752, 480));
    EXPECT_EQ(sensorPixels(QRect(0, 0, 200, 50), {400, 200}, sensor, 0), QSize(376, 120));
    EXPECT_EQ(sensorPixels(QRect(0, 0, 400, 200), {400, 200}, sensor, 5), QSize(376, 240));
    EXPECT_EQ(sensorPixels(QRect(0, 0, 400, 200), {400, 200}, sensor, 2), QSize(188, 480));
    EXPECT_EQ(sensorPixels(QRect(0, 0, 400, 200), {400, 200}, sensor, 8), QSize(752, 120));
    EXPECT_EQ(sensorPixels(QRect(0, 0, 1, 1), {400, 200}, sensor, 10), QSize(0, 0));
    EXPECT_EQ(sensorPixels(QRect(0, 0, 1, 1), {0, 0}, {0, 0}, 0), QSize(0, 0));
}

TEST(SensorGeometryTest, RebinnedSizeCoversTheSameArea)
{
    EXPECT_EQ(rebinned({752, 480}, 0, 5), QSize(376, 240));
    EXPECT_EQ(rebinned({376, 240}, 5, 0), QSize(752, 480));
    EXPECT_EQ(rebinned({752, 480}, 0, 2), QSize(188, 480));
    EXPECT_EQ(rebinned({188, 480}, 2, 8), QSize(752, 120));
    EXPECT_EQ(rebinned({641, 481}, 0, 5), QSize(320, 240));
    EXPECT_EQ(rebinned({640, 480}, 6, 6), QSize(640, 480));
    EXPECT_EQ(rebinned({INT_MAX, INT_MIN}, 10, 0), QSize(INT_MAX, INT_MIN));
}

} // namespace
