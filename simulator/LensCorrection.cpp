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

} // namespace

LensCorrection::LensCorrection()
    : _left(sensorArea)
    , _right(sensorArea)
{
    _taps.reserve(sensorArea);
    for (int y = 0; y < sensorHeight; ++y) {
        for (int x = 0; x < sensorWidth; ++x) {
            const float dx = static_cast<float>(x) - centreX;
            const float dy = static_cast<float>(y) - centreY;
            const float scale = 1.0F + distortion * (dx * dx + dy * dy) / (focalLength * focalLength);
            const float fromX = centreX + dx * scale;
            const float fromY = centreY + dy * scale;
            const int left = std::min(static_cast<int>(fromX), sensorWidth - 2);
            const int top = std::min(static_cast<int>(fromY), sensorHeight - 2);
            _taps.push_back({top * sensorWidth + left,
                             static_cast<std::uint16_t>((fromX - static_cast<float>(left)) * weightOne),
                             static_cast<std::uint16_t>((fromY - static_cast<float>(top)) * weightOne)});
        }
    }
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
    const auto begin = static_cast<std::size_t>(firstRow) * sensorWidth;
    const auto end = begin + static_cast<std::size_t>(rowCount) * sensorWidth;
    for (std::size_t i = begin; i < end; ++i) {
        const Tap tap = _taps[i];
        const std::uint8_t* const upper = sensor + tap.offset;
        const std::uint8_t* const lower = upper + sensorWidth;
        const int above = upper[0] * 128 + (upper[1] - upper[0]) * tap.right;
        const int below = lower[0] * 128 + (lower[1] - lower[0]) * tap.right;
        out[i] = static_cast<std::uint8_t>((above * 128 + (below - above) * tap.lower + 8192) >> 14);
    }
}

} // namespace simulator
