// SPDX-License-Identifier: Apache-2.0
// Tests of window, binning, brightness, flips, undistortion, and of the inertial sensors.

#include <simulator/Controls.h>
#include <simulator/InertialUnit.h>
#include <simulator/LensCorrection.h>
#include <simulator/SensorReadout.h>
#include <simulator/include/VYR.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

using namespace simulator;

namespace {

using Picture = std::vector<std::uint8_t>;

/// Grey values that tell their place apart from most others.
Picture sensorPattern()
{
    Picture sensor;
    for (int y = 0; y < sensorHeight; ++y)
        for (int x = 0; x < sensorWidth; ++x)
            sensor.push_back(static_cast<std::uint8_t>((x * 7 + y * 13 + x * y / 50) % 200 + 20));
    return sensor;
}

Picture read(const Picture& sensor, int width, int height, int binning, const Controls& controls = {})
{
    SensorReadout readout({width, height, binning, 30.0F, 0.5F, 60.0F});
    Picture picture(static_cast<std::size_t>(bytesPerRow(width) * height), 0xEE);
    readout.read(sensor.data(), controls, picture.data());
    return picture;
}

double meanAround(const Picture& picture, int stride, int x, int y)
{
    double sum = 0.0;
    for (int dy = -8; dy < 8; ++dy)
        for (int dx = -8; dx < 8; ++dx)
            sum += picture[static_cast<std::size_t>((y + dy) * stride + x + dx)];
    return sum / 256.0;
}

} // namespace

TEST(SensorReadout, TheWholeSensorComesUnchanged)
{
    const Picture sensor = sensorPattern();
    EXPECT_EQ(read(sensor, 752, 480, 0), sensor);
}

TEST(SensorReadout, AWindowIsCutFromTheMiddle)
{
    const Picture sensor = sensorPattern();
    const Picture picture = read(sensor, 320, 128, 0);
    for (int y = 0; y < 128; ++y) {
        for (int x = 0; x < 320; ++x) {
            ASSERT_EQ(picture[static_cast<std::size_t>(y * 320 + x)],
                      sensor[static_cast<std::size_t>((y + 176) * sensorWidth + x + 216)]);
        }
    }
}

TEST(SensorReadout, BinningIsTheMeanOfEachBlock)
{
    const Picture sensor = sensorPattern();
    for (const int code : {0, 1, 2, 4, 5, 6, 8, 9, 10}) {
        const int columns = horizontalBinning(code);
        const int rows = verticalBinning(code);
        const int width = 752 / columns;
        const int height = 480 / rows;
        const Picture picture = read(sensor, width, height, code);
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                int sum = 0;
                for (int dy = 0; dy < rows; ++dy)
                    for (int dx = 0; dx < columns; ++dx)
                        sum += sensor[static_cast<std::size_t>((y * rows + dy) * sensorWidth + x * columns + dx)];
                const int pixels = columns * rows;
                ASSERT_EQ(picture[static_cast<std::size_t>(y * bytesPerRow(width) + x)], (sum + pixels / 2) / pixels)
                    << code << ": " << x << ", " << y;
            }
        }
    }
}

TEST(SensorReadout, NothingIsWrittenBetweenTheRows)
{
    const Picture picture = read(sensorPattern(), 188, 120, 10);
    ASSERT_EQ(bytesPerRow(188), 192);
    for (int y = 0; y < 120; ++y)
        for (int x = 188; x < 192; ++x)
            EXPECT_EQ(picture[static_cast<std::size_t>(y * 192 + x)], 0xEE);
}

TEST(SensorReadout, FlipsMirrorThePicture)
{
    const Picture sensor = sensorPattern();
    const Picture plain = read(sensor, 320, 240, 5);
    Controls controls;
    controls.horizontalFlip = true;
    const Picture mirrored = read(sensor, 320, 240, 5, controls);
    controls.verticalFlip = true;
    const Picture turned = read(sensor, 320, 240, 5, controls);
    controls.horizontalFlip = false;
    const Picture upsideDown = read(sensor, 320, 240, 5, controls);
    for (int y = 0; y < 240; ++y) {
        for (int x = 0; x < 320; ++x) {
            const auto at = [](int column, int row) { return static_cast<std::size_t>(row * 320 + column); };
            ASSERT_EQ(mirrored[at(x, y)], plain[at(319 - x, y)]);
            ASSERT_EQ(upsideDown[at(x, y)], plain[at(x, 239 - y)]);
            ASSERT_EQ(turned[at(x, y)], plain[at(319 - x, 239 - y)]);
        }
    }
}

TEST(SensorReadout, FlipsMirrorAWidthThatIsNoMultipleOfEight)
{
    const Picture sensor = sensorPattern();
    const Picture plain = read(sensor, 188, 120, 10);
    Controls controls;
    controls.horizontalFlip = true;
    const Picture mirrored = read(sensor, 188, 120, 10, controls);
    for (int y = 0; y < 120; ++y) {
        for (int x = 0; x < 188; ++x) {
            const auto at = [](int column, int row) { return static_cast<std::size_t>(row * 192 + column); };
            ASSERT_EQ(mirrored[at(x, y)], plain[at(187 - x, y)]);
        }
    }
}

TEST(SensorReadout, ExposureAndGainScaleTheGreyValues)
{
    const Picture sensor(sensorArea, 60);
    Controls controls;
    controls.exposure = 100.0;
    EXPECT_EQ(read(sensor, 752, 480, 0, controls)[1000], 120);
    controls.exposure = 25.0;
    EXPECT_EQ(read(sensor, 752, 480, 0, controls)[1000], 30);
    controls.gain = 75.0;
    EXPECT_EQ(read(sensor, 752, 480, 0, controls)[1000], 60);
}

TEST(SensorReadout, TooMuchLightIsWhite)
{
    const Picture sensor = sensorPattern();
    Controls controls;
    controls.exposure = 100.0;
    controls.gain = 100.0;
    controls.led = 100.0;
    const Picture picture = read(sensor, 752, 480, 0, controls);
    const std::size_t middle = 240U * sensorWidth + 376U;
    for (std::size_t x = 0; x < 100; ++x)
        EXPECT_EQ(picture[middle + x], 255) << "none may wrap round to dark";
    EXPECT_GE(*std::min_element(picture.begin(), picture.end()), 160) << "20 grey values times 8";
}

TEST(SensorReadout, TheLampLightsTheMiddleMost)
{
    const Picture sensor(sensorArea, 60);
    Controls controls;
    controls.led = 100.0;
    const Picture picture = read(sensor, 752, 480, 0, controls);
    EXPECT_NEAR(meanAround(picture, 752, 376, 240), 60.0 * 2.6, 2.0);
    EXPECT_LT(meanAround(picture, 752, 20, 20), 70.0);
    controls.led = 50.0;
    EXPECT_NEAR(meanAround(read(sensor, 752, 480, 0, controls), 752, 376, 240), 60.0 * 1.8, 2.0);
    EXPECT_NEAR(meanAround(read(sensor, 320, 240, 5, controls), 320, 160, 120), 60.0 * 1.8, 2.0)
        << "the lamp stands still when the mode changes";
}

TEST(Controls, UnsetMeansAutomatic)
{
    EXPECT_DOUBLE_EQ(brightnessFactor(Controls()), 1.0);
}

TEST(Controls, FiftyIsTheAutomaticValue)
{
    Controls controls;
    controls.exposure = 50.0;
    controls.gain = 50.0;
    EXPECT_DOUBLE_EQ(brightnessFactor(controls), 1.0);
    controls.gain = 75.0;
    EXPECT_DOUBLE_EQ(brightnessFactor(controls), 2.0);
    controls.exposure = 5.0;
    EXPECT_DOUBLE_EQ(brightnessFactor(controls), 0.2);
}

TEST(Controls, NumbersAreKeptInTheirRange)
{
    EXPECT_DOUBLE_EQ(percentOf(-3.0), 0.0);
    EXPECT_DOUBLE_EQ(percentOf(33.5), 33.5);
    EXPECT_DOUBLE_EQ(percentOf(1e9), 100.0);
    EXPECT_DOUBLE_EQ(percentOf(std::numeric_limits<double>::quiet_NaN()), 0.0);
}

TEST(LensCorrection, TheMiddleStaysAndTheCornersAreStretched)
{
    Picture sensor;
    for (int y = 0; y < sensorHeight; ++y)
        for (int x = 0; x < sensorWidth; ++x)
            sensor.push_back(static_cast<std::uint8_t>(x / 4));
    LensCorrection correction;
    const std::uint8_t* const corrected = correction.correctLeft(sensor.data(), 0, sensorHeight);
    EXPECT_EQ(corrected[240 * sensorWidth + 376], 94);
    // k = -0.015 at the corner's radius of 0.97 focal lengths: 1.4 % of 375 columns nearer to the middle, 5 of them.
    EXPECT_NEAR(corrected[0], 5.3 / 4.0, 1.0);
    EXPECT_NEAR(corrected[sensorWidth - 1], (751.0 - 5.3) / 4.0, 1.0);
    EXPECT_GE(corrected[0], 1);
}

TEST(LensCorrection, AWindowNeedsNoRowsBeyondIt)
{
    const Picture sensor = sensorPattern();
    LensCorrection correction;
    const std::uint8_t* const whole = correction.correctLeft(sensor.data(), 0, sensorHeight);
    const Picture expected(whole + 180 * sensorWidth, whole + 300 * sensorWidth);

    Picture window(sensorArea, 0);
    std::copy(sensor.begin() + 180 * sensorWidth, sensor.begin() + 300 * sensorWidth,
              window.begin() + 180 * sensorWidth);
    const std::uint8_t* const part = correction.correctRight(window.data(), 180, 120);
    EXPECT_EQ(Picture(part + 180 * sensorWidth, part + 300 * sensorWidth), expected);
}

TEST(InertialUnit, RestsOnItsDesk)
{
    InertialUnit unit;
    VYRFrame1 record = {};
    unit.measure(0.0, 0, 0, record);
    EXPECT_NE(record.hasSensorData, 0);
    EXPECT_NEAR(record.acceleration[0], 0.0F, 0.02F);
    EXPECT_NEAR(record.acceleration[1], -1.0F, 0.02F);
    EXPECT_NEAR(record.acceleration[2], 0.0F, 0.02F);
    for (const float rotation : record.rotation)
        EXPECT_NEAR(rotation, 0.0F, 0.2F);
}

TEST(InertialUnit, AWiderRangeIsCoarser)
{
    InertialUnit unit;
    for (int range = 0; range < 4; ++range) {
        VYRFrame1 record = {};
        unit.measure(0.0, range, range, record);
        const float step = accelFullScale(range) / 32768.0F;
        EXPECT_FLOAT_EQ(std::remainder(record.acceleration[1], step), 0.0F);
        const float gyroStep = gyroFullScale(range) / 32768.0F;
        EXPECT_NEAR(std::remainder(record.rotation[1], gyroStep), 0.0F, 1e-6F);
    }
    EXPECT_FLOAT_EQ(accelFullScale(VYR_ACCEL_RANGE_16G), 16.0F);
    EXPECT_FLOAT_EQ(gyroFullScale(VYR_GYRO_RANGE_2000), 2000.0F);
}

TEST(InertialUnit, WarmsUp)
{
    EXPECT_FLOAT_EQ(sensorTemperature(0.0), 24.0F);
    EXPECT_GT(sensorTemperature(60.0), sensorTemperature(30.0));
    EXPECT_NEAR(sensorTemperature(170.0), 32.5F, 0.5F) << "half of the way";
    EXPECT_NEAR(sensorTemperature(3600.0), 41.0F, 0.1F);
}
