// SPDX-License-Identifier: Apache-2.0
// What the surfaces of the synthetic scene look like.

#include "SceneTextures.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <vector>

namespace simulator {

namespace {

constexpr int size = Texture::size;

/// A number between -1 and 1 that belongs to a cell.
float random(int x, int y, unsigned seed)
{
    std::uint32_t hash =
        static_cast<std::uint32_t>(x) * 374761393U + static_cast<std::uint32_t>(y) * 668265263U + seed * 2246822519U;
    hash = (hash ^ (hash >> 13U)) * 1274126177U;
    hash ^= hash >> 16U;
    return static_cast<float>(hash & 0xFFFFU) / 32767.5F - 1.0F;
}

float smooth(float t)
{
    return t * t * (3.0F - 2.0F * t);
}

/// 0 below `from`, 1 above `to`, and a soft step in between.
float softStep(float from, float to, float value)
{
    return smooth(std::clamp((value - from) / (to - from), 0.0F, 1.0F));
}

/// Adds random hills, one a cell, that repeat with the texture.
void addHills(std::vector<float>& heights, int cells, float amplitude)
{
    const int cell = size / cells;
    for (int y = 0; y < size; ++y) {
        const int top = y / cell;
        const int bottom = (top + 1) % cells;
        const float lower = smooth(static_cast<float>(y % cell) / static_cast<float>(cell));
        for (int x = 0; x < size; ++x) {
            const int left = x / cell;
            const int next = (left + 1) % cells;
            const float right = smooth(static_cast<float>(x % cell) / static_cast<float>(cell));
            const auto seed = static_cast<unsigned>(cells);
            const float above = random(left, top, seed) * (1.0F - right) + random(next, top, seed) * right;
            const float below = random(left, bottom, seed) * (1.0F - right) + random(next, bottom, seed) * right;
            heights[static_cast<std::size_t>(y) * size + static_cast<std::size_t>(x)] +=
                amplitude * (above * (1.0F - lower) + below * lower);
        }
    }
}

} // namespace

/// Irregularity at all scales, which every texture takes its own cut of.
struct SceneTextures::Grain
{
    Grain()
        : coarse(static_cast<std::size_t>(size) * size)
        , fine(coarse.size())
    {
        addHills(coarse, 8, 0.5F);
        addHills(coarse, 16, 0.35F);
        addHills(coarse, 32, 0.25F);
        addHills(fine, 64, 0.6F);
        addHills(fine, 128, 0.6F);
    }

    static std::size_t index(int x, int y)
    {
        return static_cast<std::size_t>(y & (size - 1)) * size + static_cast<std::size_t>(x & (size - 1));
    }

    /// Hills of a sixteenth to a quarter of the texture, about -1 to 1.
    float large(int x, int y) const { return coarse[index(x, y)]; }

    /// Hills of 4 to 8 texels, about -1 to 1.
    float small(int x, int y) const { return fine[index(x, y)]; }

    std::vector<float> coarse;
    std::vector<float> fine;
};

SceneTextures::SceneTextures()
    : SceneTextures(Grain())
{
}

SceneTextures::SceneTextures(const Grain& grain)
    : bricks([&](int x, int y) {
        const int row = y / 32;
        const int shifted = x + (row % 2) * 32;
        const int brick = (shifted / 64) % (size / 64);
        const int edge = std::min({shifted % 64, 63 - shifted % 64, y % 32, 31 - y % 32});
        const float stone =
            124.0F + 40.0F * random(brick, row, 1) + 20.0F * grain.large(x, y) + 30.0F * grain.small(x, y);
        const float mortar = 196.0F + 26.0F * grain.small(y, x);
        return mortar + (stone - mortar) * softStep(0.5F, 4.5F, static_cast<float>(edge));
    })
    , planks([&](int x, int y) {
        const int board = x / 64;
        const int length = (y + static_cast<int>(200.0F * random(board, 0, 2)) + size) % size;
        const int edge = std::min({x % 64, 63 - x % 64, length});
        const float tone = 144.0F + 26.0F * random(board, length / 256, 3);
        const float fibre = 22.0F * grain.small(x * 2, y / 4 + 31 * board)
                          + 26.0F * grain.large(x * 3, y / 2 + 77 * board) + 12.0F * grain.small(y, x);
        return (tone + fibre) * (0.45F + 0.55F * softStep(0.0F, 4.0F, static_cast<float>(edge)));
    })
    , plaster([&](int x, int y) {
        return 158.0F + 16.0F * grain.large(x, y) + 34.0F * grain.small(x, y) + 16.0F * grain.large(4 * x, 4 * y);
    })
    , crate([&](int x, int y) {
        const int border = std::min({x, y, size - 1 - x, size - 1 - y});
        const int diagonal = std::abs(x - y);
        const bool frame = border < 72 || diagonal < 48;
        const int along = frame ? (border == y || border == size - 1 - y ? y : x) : x;
        const float board = frame ? 205.0F : 132.0F + 26.0F * random(along / 74, 7, 4);
        const float gap =
            frame ? 1.0F : softStep(0.0F, 6.0F, static_cast<float>(std::min(along % 74, 73 - along % 74)));
        const int frameEdge = std::min(std::abs(border - 72), border < 72 ? size : std::abs(diagonal - 48));
        const float shadow = 0.5F + 0.5F * softStep(0.0F, 9.0F, static_cast<float>(frameEdge));
        const float fibre = 26.0F * grain.small(x, y / 2) + 22.0F * grain.large(x * 2, y);
        return (board + fibre) * shadow * (0.45F + 0.55F * gap);
    })
    , marker([&](int x, int y) {
        const int cell = size / 8;
        const int column = x / cell;
        const int row = y / cell;
        const bool rim = column == 0 || row == 0 || column == 7 || row == 7;
        const bool dark =
            !rim && (column == 1 || row == 1 || column == 6 || row == 6 || random(column, row, 23) > 0.1F);
        return (dark ? 46.0F : 222.0F) + 24.0F * grain.small(x, y) + 14.0F * grain.large(x, y);
    })
    , patches([&](int x, int y) {
        const float height = grain.large(x, y) + 0.25F * grain.large(3 * x, 3 * y);
        return 62.0F + 158.0F * softStep(-0.12F, 0.12F, height) + 30.0F * grain.small(x, y);
    })
    , rings([&](int x, int y) {
        const float band = std::sin(static_cast<float>(y) * 0.0736F + 1.6F * grain.large(x, y));
        return 128.0F + 84.0F * std::clamp(3.0F * band, -1.0F, 1.0F) + 30.0F * grain.small(x, y);
    })
{
}

} // namespace simulator
