// SPDX-License-Identifier: Apache-2.0
// Undistortion by the nominal lens, for sources that know no better one.

#include "LensCorrection.h"

#include "CameraModel.h"
#include "SensorGeometry.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace simulator {

namespace {

constexpr float distortion = -0.015F;
constexpr float weightOne = 128.0F;

std::int16_t between(std::int16_t from, std::int16_t to, std::int16_t weight)
{
    return static_cast<std::int16_t>((from * 128 + (to - from) * weight + 64) >> 7);
}

/// Takes each pixel from four neighbours. All numbers fit into 16 bits: eight pixels at once.
void blend(const std::uint8_t* upper, const std::uint8_t* rightWeights, const std::uint8_t* lowerWeights, int count,
           std::uint8_t* out)
{
    const std::uint8_t* const lower = upper + sensorWidth;
    for (int i = 0; i < count; ++i) {
        const std::int16_t above = between(upper[i], upper[i + 1], rightWeights[i]);
        const std::int16_t below = between(lower[i], lower[i + 1], rightWeights[i]);
        out[i] = static_cast<std::uint8_t>(between(above, below, lowerWeights[i]));
    }
}

} // namespace

LensCorrection::LensCorrection()
    : _left(sensorArea)
    , _right(sensorArea)
{
    _rightWeights.reserve(sensorArea);
    _lowerWeights.reserve(sensorArea);
    for (int y = 0; y < sensorHeight; ++y) {
        _firstRuns.push_back(_runs.size());
        for (int x = 0; x < sensorWidth; ++x) {
            const float dx = static_cast<float>(x) - centreX;
            const float dy = static_cast<float>(y) - centreY;
            const float scale = 1.0F + distortion * (dx * dx + dy * dy) / (focalLength * focalLength);
            const float fromX = centreX + dx * scale;
            const float fromY = centreY + dy * scale;
            const int left = std::min(static_cast<int>(fromX), sensorWidth - 2);
            const int top = std::min(static_cast<int>(fromY), sensorHeight - 2);
            _rightWeights.push_back(static_cast<std::uint8_t>((fromX - static_cast<float>(left)) * weightOne));
            _lowerWeights.push_back(static_cast<std::uint8_t>((fromY - static_cast<float>(top)) * weightOne));

            const int pixel = y * sensorWidth + x;
            const int shift = top * sensorWidth + left - pixel;
            if (x == 0 || _runs.back().shift != shift)
                _runs.push_back({pixel, pixel, shift});
            _runs.back().end = pixel + 1;
        }
    }
    _firstRuns.push_back(_runs.size());
}

const std::uint8_t* LensCorrection::correctLeft(const std::uint8_t* sensor, int firstRow, int rowCount)
{
    correct(sensor, firstRow, rowCount, _left);
    return _left.data();
}

const std::uint8_t* LensCorrection::correctRight(const std::uint8_t* sensor, int firstRow, int rowCount)
{
    correct(sensor, firstRow, rowCount, _right);
    return _right.data();
}

void LensCorrection::correct(const std::uint8_t* sensor, int firstRow, int rowCount,
                             std::vector<std::uint8_t>& out) const
{
    const std::size_t first = _firstRuns[static_cast<std::size_t>(firstRow)];
    const std::size_t end = _firstRuns[static_cast<std::size_t>(firstRow + rowCount)];
    for (std::size_t i = first; i < end; ++i) {
        const Run run = _runs[i];
        blend(sensor + run.begin + run.shift, _rightWeights.data() + run.begin, _lowerWeights.data() + run.begin,
              run.end - run.begin, out.data() + run.begin);
    }
}

} // namespace simulator
