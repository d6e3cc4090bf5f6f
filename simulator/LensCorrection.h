// SPDX-License-Identifier: Apache-2.0
// Undistortion by the nominal lens, for sources that know no better one.

#pragma once

#include <cstddef>
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
    /// Neighbouring pixels of a row that are taken from neighbouring pixels. There are few of them in a row, since the
    /// correction changes slowly, and inside of one there is nothing to look up.
    struct Run
    {
        std::int32_t begin; ///< index of the first pixel on the sensor
        std::int32_t end;
        std::int32_t shift; ///< from a pixel to the upper left of the four that it is taken from
    };

    void correct(const std::uint8_t* sensor, int firstRow, int rowCount, std::vector<std::uint8_t>& out) const;

    std::vector<Run> _runs;
    std::vector<std::size_t> _firstRuns;     ///< of each row, and the end
    std::vector<std::uint8_t> _rightWeights; ///< of the two pixels to the right, in 1/128
    std::vector<std::uint8_t> _lowerWeights; ///< of the two pixels below
    std::vector<std::uint8_t> _left;
    std::vector<std::uint8_t> _right;
};

} // namespace simulator
