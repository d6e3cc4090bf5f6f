// SPDX-License-Identifier: Apache-2.0
// Undistortion by the nominal lens, for sources that know no better one.

#pragma once

#include <cstdint>
#include <vector>

namespace simulator {

/// Removes the distortion that the camera's lenses have by their data sheet: a pixel at the radius r from the middle of
/// the sensor, in focal lengths, is taken from the radius r (1 + k r²), with k = -0.015. The same for both pictures.
///
/// The middle of the picture stays as it is; towards the corners it is stretched, by 6 pixels there.
/// Thread: one thread at a time.
class LensCorrection
{
public:
    LensCorrection();

    /// Corrects `rowCount` rows around the middle of a whole sensor, from `firstRow` on. They are taken from the same
    /// rows: pixels come from nearer to the middle. The result has the size of a sensor, is borrowed, and is valid
    /// until the next call for the same sensor.
    const std::uint8_t* correctLeft(const std::uint8_t* sensor, int firstRow, int rowCount);
    const std::uint8_t* correctRight(const std::uint8_t* sensor, int firstRow, int rowCount);

private:
    /// Where a pixel is taken from: the upper left of four neighbours, and the weights of the right and the lower ones,
    /// in 1/128.
    struct Tap
    {
        std::int32_t offset;
        std::uint16_t right;
        std::uint16_t lower;
    };

    void correct(const std::uint8_t* sensor, int firstRow, int rowCount, std::vector<std::uint8_t>& out) const;

    std::vector<Tap> _taps;
    std::vector<std::uint8_t> _left;
    std::vector<std::uint8_t> _right;
};

} // namespace simulator
