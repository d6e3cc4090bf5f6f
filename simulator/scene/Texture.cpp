// SPDX-License-Identifier: Apache-2.0
// A surface's grey values, at several finenesses.

#include "Texture.h"

#include <algorithm>
#include <cmath>

namespace simulator {

namespace {

using Square = std::vector<float>;

/// In the weakest light there is still room for noise below, and in the strongest above.
constexpr float darkest = 24.0F;
constexpr float brightest = 240.0F;

std::size_t at(int x, int y, int size)
{
    const int mask = size - 1;
    return static_cast<std::size_t>(y & mask) * static_cast<std::size_t>(size) + static_cast<std::size_t>(x & mask);
}

Square blurred(const Square& in, int size)
{
    Square across(in.size());
    Square out(in.size());
    for (int y = 0; y < size; ++y) {
        for (int x = 0; x < size; ++x) {
            across[at(x, y, size)] =
                0.25F * in[at(x - 1, y, size)] + 0.5F * in[at(x, y, size)] + 0.25F * in[at(x + 1, y, size)];
        }
    }
    for (int y = 0; y < size; ++y) {
        for (int x = 0; x < size; ++x) {
            out[at(x, y, size)] =
                0.25F * across[at(x, y - 1, size)] + 0.5F * across[at(x, y, size)] + 0.25F * across[at(x, y + 1, size)];
        }
    }
    return out;
}

Square halved(const Square& in, int size)
{
    const int half = size / 2;
    Square out(in.size() / 4);
    for (int y = 0; y < half; ++y) {
        for (int x = 0; x < half; ++x) {
            out[at(x, y, half)] = 0.25F
                                * (in[at(2 * x, 2 * y, size)] + in[at(2 * x + 1, 2 * y, size)]
                                   + in[at(2 * x, 2 * y + 1, size)] + in[at(2 * x + 1, 2 * y + 1, size)]);
        }
    }
    return out;
}

std::vector<std::uint8_t> bytes(const Square& in)
{
    std::vector<std::uint8_t> out;
    out.reserve(in.size());
    for (const float value : in)
        out.push_back(static_cast<std::uint8_t>(std::clamp(value + 0.5F, darkest, brightest)));
    return out;
}

/// The next whole number below. Without a call: older processors have no instruction for it.
int wholeBelow(float value)
{
    const int whole = static_cast<int>(value);
    return static_cast<float>(whole) > value ? whole - 1 : whole;
}

int levelOfPower(float power)
{
    return std::clamp(wholeBelow(power), 0, Texture::levels - 1);
}

} // namespace

Texture::Texture(const std::function<float(int x, int y)>& grey)
{
    Square square;
    square.reserve(static_cast<std::size_t>(size) * size);
    for (int y = 0; y < size; ++y)
        for (int x = 0; x < size; ++x)
            square.push_back(grey(x, y));
    for (int index = 0; index < levels; ++index) {
        square = blurred(square, sizeOf(index));
        _levels.push_back(bytes(square));
        square = halved(square, sizeOf(index));
    }
}

int Texture::nearestLevel(float texelsPerPixel)
{
    return levelOfPower(std::log2(texelsPerPixel) - 1.0F);
}

float Texture::sample(float x, float y, float texelsPerPixel) const
{
    const int index = levelOfPower(std::log2(texelsPerPixel));
    const std::uint8_t* const texels = level(index);
    const int side = sizeOf(index);
    // Halving puts a coarse texel in the middle between the two finer ones it is made of.
    const float scale = 1.0F / static_cast<float>(1 << index);
    const float scaledX = (x + 0.5F) * scale - 0.5F;
    const float scaledY = (y + 0.5F) * scale - 0.5F;
    const int column = wholeBelow(scaledX);
    const int row = wholeBelow(scaledY);
    const float right = scaledX - static_cast<float>(column);
    const float lower = scaledY - static_cast<float>(row);
    const auto texel = [=](int dx, int dy) { return static_cast<float>(texels[at(column + dx, row + dy, side)]); };
    const float above = texel(0, 0) + (texel(1, 0) - texel(0, 0)) * right;
    const float below = texel(0, 1) + (texel(1, 1) - texel(0, 1)) * right;
    return above + (below - above) * lower;
}

} // namespace simulator
