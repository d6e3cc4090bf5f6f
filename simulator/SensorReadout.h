// SPDX-License-Identifier: Apache-2.0
// From what a sensor sees to the picture of a frame: window, binning, brightness, flips.

#pragma once

#include "Controls.h"
#include "SensorGeometry.h"

#include <array>
#include <cstdint>

namespace simulator {

/// Bytes from one row of a picture to the next: its width, rounded up to a multiple of 16.
constexpr int bytesPerRow(int width)
{
    return (width + 15) / 16 * 16;
}

/// Reads pictures out of sensors in one mode. Works row by row in memory of its own, and allocates nothing.
///
/// Thread: one thread at a time.
class SensorReadout
{
public:
    /// The mode must be a supported one.
    explicit SensorReadout(const VYRResolutionInfo& mode);

    /// Writes the mode's picture of a whole sensor (sensorWidth x sensorHeight) to `picture`.
    void read(const std::uint8_t* sensor, const Controls& controls, std::uint8_t* picture);

private:
    using Row = std::array<std::uint8_t, sensorWidth>;

    const std::uint8_t* binnedRow(const std::uint8_t* sensor, int row);
    const std::uint8_t* litRow(const std::uint8_t* pixels, const Controls& controls, int row);

    VYRResolutionInfo _mode;
    SensorWindow _window;
    int _columns;                                     ///< sensor columns per pixel
    int _rows;                                        ///< sensor rows per pixel
    std::array<float, sensorWidth> _lampColumns = {}; ///< what the lamp adds, across the picture
    std::array<float, sensorHeight> _lampRows = {};   ///< and down it
    std::array<std::uint16_t, sensorWidth> _sums = {};
    std::array<std::uint16_t, sensorWidth> _factors = {};
    Row _binned = {};
    Row _lit = {};
};

} // namespace simulator
