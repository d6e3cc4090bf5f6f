// SPDX-License-Identifier: Apache-2.0
// From what a sensor sees to the picture of a frame: window, binning, brightness, flips.

#include "SensorReadout.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstring>

namespace simulator {

namespace {

/// The lamp's light falls off from the middle of the picture as a bell curve of this width, in sensor pixels.
constexpr float lampSpread = 190.0F;

/// How much brighter the lamp at 100 % makes the middle of the picture.
constexpr float lampStrength = 1.6F;

float lampFalloff(float distance)
{
    return std::exp(-0.5F * distance * distance / (lampSpread * lampSpread));
}

/// Adds groups of `columns` neighbours up and divides by the number of pixels in each block, rounding to nearest.
template<int columns>
void averageColumns(const std::uint16_t* sums, int width, int shift, std::uint8_t* out)
{
    const unsigned half = (1U << shift) / 2U;
    for (int x = 0; x < width; ++x) {
        unsigned sum = half;
        for (int i = 0; i < columns; ++i)
            sum += sums[columns * x + i];
        out[x] = static_cast<std::uint8_t>(sum >> shift);
    }
}

/// Multiplies by factors of 8 fractional bits; what is too bright for the sensor becomes white.
void multiply(const std::uint8_t* in, const std::uint16_t* factors, int width, std::uint8_t* out)
{
    for (int x = 0; x < width; ++x) {
        // The upper half of a product of 16-bit numbers: one instruction for eight pixels.
        const auto shifted = static_cast<std::uint16_t>(in[x] << 8U);
        // Signed, since processors without an instruction for the lesser of two unsigned ones are common; the brightest
        // light of exposure, gain and lamp together is 21 times white.
        const auto value = static_cast<std::int16_t>((static_cast<std::uint32_t>(shifted) * factors[x]) >> 16U);
        out[x] = static_cast<std::uint8_t>(std::min<std::int16_t>(value, 255));
    }
}

/// Writes a row from its end to its begin, eight pixels at a time.
void mirror(const std::uint8_t* in, std::size_t width, std::uint8_t* out)
{
    std::size_t x = 0;
    for (; x + 8 <= width; x += 8) {
        std::uint64_t pixels = 0;
        std::memcpy(&pixels, in + width - 8 - x, 8);
        pixels = __builtin_bswap64(pixels);
        std::memcpy(out + x, &pixels, 8);
    }
    std::reverse_copy(in, in + width - x, out + x);
}

} // namespace

SensorReadout::SensorReadout(const VYRResolutionInfo& mode)
    : _mode(mode)
    , _window(sensorWindow(mode))
    , _columns(horizontalBinning(mode.binning))
    , _rows(verticalBinning(mode.binning))
{
    const auto columns = static_cast<float>(_columns);
    for (int x = 0; x < mode.width; ++x) {
        const float sensorX = static_cast<float>(_window.x) + (static_cast<float>(x) + 0.5F) * columns;
        _lampColumns[static_cast<std::size_t>(x)] = lampFalloff(sensorX - 0.5F * sensorWidth);
    }
    const auto rows = static_cast<float>(_rows);
    for (int y = 0; y < mode.height; ++y) {
        const float sensorY = static_cast<float>(_window.y) + (static_cast<float>(y) + 0.5F) * rows;
        _lampRows[static_cast<std::size_t>(y)] = lampFalloff(sensorY - 0.5F * sensorHeight);
    }
}

void SensorReadout::read(const std::uint8_t* sensor, const Controls& controls, std::uint8_t* picture)
{
    const auto stride = static_cast<std::size_t>(bytesPerRow(_mode.width));
    const auto width = static_cast<std::size_t>(_mode.width);
    for (int y = 0; y < _mode.height; ++y) {
        const std::uint8_t* const pixels = litRow(binnedRow(sensor, y), controls, y);
        const int target = controls.verticalFlip ? _mode.height - 1 - y : y;
        std::uint8_t* const out = picture + static_cast<std::size_t>(target) * stride;
        if (controls.horizontalFlip)
            mirror(pixels, width, out);
        else
            std::memcpy(out, pixels, width);
    }
}

const std::uint8_t* SensorReadout::binnedRow(const std::uint8_t* sensor, int row)
{
    const std::uint8_t* const top = sensor + (_window.y + row * _rows) * sensorWidth + _window.x;
    if (_columns == 1 && _rows == 1)
        return top;
    const auto width = static_cast<std::size_t>(_window.width);
    for (std::size_t x = 0; x < width; ++x)
        _sums[x] = top[x];
    for (int i = 1; i < _rows; ++i) {
        const std::uint8_t* const next = top + i * sensorWidth;
        for (std::size_t x = 0; x < width; ++x)
            _sums[x] = static_cast<std::uint16_t>(_sums[x] + next[x]);
    }
    const int shift = (_columns == 4 ? 2 : _columns - 1) + (_rows == 4 ? 2 : _rows - 1);
    switch (_columns) {
    case 1:
        averageColumns<1>(_sums.data(), _mode.width, shift, _binned.data());
        break;
    case 2:
        averageColumns<2>(_sums.data(), _mode.width, shift, _binned.data());
        break;
    default:
        averageColumns<4>(_sums.data(), _mode.width, shift, _binned.data());
        break;
    }
    return _binned.data();
}

const std::uint8_t* SensorReadout::litRow(const std::uint8_t* pixels, const Controls& controls, int row)
{
    const auto factor = static_cast<float>(256.0 * brightnessFactor(controls));
    if (factor == 256.0F && controls.led == 0.0)
        return pixels;
    const auto width = static_cast<std::size_t>(_mode.width);
    const float lamp =
        static_cast<float>(controls.led) / 100.0F * lampStrength * _lampRows[static_cast<std::size_t>(row)] * factor;
    for (std::size_t x = 0; x < width; ++x)
        // NOLINTNEXTLINE(bugprone-incorrect-roundings): never negative, and lround() would be a call for each column
        _factors[x] = static_cast<std::uint16_t>(static_cast<std::int32_t>(factor + lamp * _lampColumns[x] + 0.5F));
    multiply(pixels, _factors.data(), _mode.width, _lit.data());
    return _lit.data();
}

} // namespace simulator
