// SPDX-License-Identifier: Apache-2.0
// The capture modes that the camera supports.

#include "ModeTable.h"

#include "SensorGeometry.h"

#include <algorithm>
#include <array>

namespace simulator {

namespace {

constexpr float slowestFps = 0.5F;
constexpr float rowsPerSecond = 30000.0F;
constexpr int darkRows = 20; // beside the picture, and read only with the whole sensor
constexpr float usualFps = 30.0F;
constexpr int any = -1;
constexpr float anyFps = -1.0F;

constexpr std::array<int, 9> binningCodes = {0, 4, 8, 1, 5, 9, 2, 6, 10};

/// The sizes along one side of the picture: the whole binned side, and the multiples of a step from a quarter of it.
struct Sizes
{
    int whole; ///< the binned side
    int step;

    int largest() const { return whole / 4 * 4; }

    int smallest() const { return (whole / 4 + step - 1) / step * step; }

    /// The next smaller size, or 0 when there is none.
    int after(int size) const
    {
        const int next = (size - 1) / step * step;
        return next >= smallest() ? next : 0;
    }
};

bool matches(int criterion, int value)
{
    return criterion == any || criterion == value;
}

} // namespace

float maximumFps(int rowsRead)
{
    const int rows = rowsRead == sensorHeight ? rowsRead + darkRows : rowsRead;
    return rowsPerSecond / static_cast<float>(rows);
}

int enumerateModes(VYRResolutionInfo* list, int capacity, int width, int height, int binning, float fps)
{
    if (list == nullptr)
        return 0;
    int count = 0;
    for (const int code : binningCodes) {
        if (!matches(binning, code))
            continue;
        const Sizes widths = {sensorWidth / horizontalBinning(code), 16};
        const Sizes heights = {sensorHeight / verticalBinning(code), 8};
        for (int w = widths.largest(); w > 0; w = widths.after(w)) {
            if (!matches(width, w))
                continue;
            for (int h = heights.largest(); h > 0; h = heights.after(h)) {
                if (!matches(height, h))
                    continue;
                const float fastest = maximumFps(h * verticalBinning(code));
                const float rate = fps == anyFps ? std::min(usualFps, fastest) : fps;
                if (!(rate >= slowestFps && rate <= fastest)) // a rate that is no number matches nothing
                    continue;
                if (count >= capacity)
                    return count;
                list[count++] = {w, h, code, rate, slowestFps, fastest};
            }
        }
    }
    return count;
}

bool isSupported(const VYRResolutionInfo& mode)
{
    if (mode.width == any || mode.height == any || mode.binning == any || mode.fps == anyFps)
        return false;
    VYRResolutionInfo found = {};
    return enumerateModes(&found, 1, mode.width, mode.height, mode.binning, mode.fps) == 1;
}

} // namespace simulator
