// SPDX-License-Identifier: Apache-2.0
// A surface's grey values, at several finenesses.

#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

namespace simulator {

/// A square of grey values that repeats itself, with ever coarser copies of half the size each.
///
/// Each copy is a little blurred: taking the nearest texel, two to four of which fall on a pixel, then shows neither
/// flicker nor steps, and is one memory access.
/// Thread: any thread, once made.
class Texture
{
public:
    static constexpr int size = 512; ///< texels along a side of the finest copy
    static constexpr int levels = 5;

    /// Paints the finest copy: `grey` is asked for each texel, x first. Values are kept between 24 and 240.
    explicit Texture(const std::function<float(int x, int y)>& grey);

    /// The copy of a level, row after row.
    const std::uint8_t* level(int index) const { return _levels[static_cast<std::size_t>(index)].data(); }

    /// Texels along a side of a level; a power of two.
    static constexpr int sizeOf(int index) { return size >> index; }

    /// The level for taking nearest texels, when so many of the finest fall on a pixel.
    static int nearestLevel(float texelsPerPixel);

    /// The grey value between the texels around a point, given in texels of the finest copy.
    float sample(float x, float y, float texelsPerPixel) const;

private:
    std::vector<std::vector<std::uint8_t>> _levels;
};

} // namespace simulator
