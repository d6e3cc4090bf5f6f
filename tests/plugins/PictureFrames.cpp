// SPDX-License-Identifier: Apache-2.0
// Frame records with pictures, for a camera library that has none.

#include "PictureFrames.h"

#include <algorithm>

PictureFrame::PictureFrame(int width, int height, unsigned char leftGrey, unsigned char rightGrey)
{
    record.width = width;
    record.height = height;
    record.bytesPerRow = static_cast<std::uint32_t>((width + 15) / 16 * 16);
    const std::size_t bytes = std::size_t{record.bytesPerRow} * static_cast<std::size_t>(height);
    _left.assign(bytes, 255);
    _right.assign(bytes, 255);
    for (int y = 0; y < height; ++y) {
        const auto row = static_cast<std::ptrdiff_t>(indexOf(0, y));
        std::fill_n(_left.begin() + row, width, leftGrey);
        std::fill_n(_right.begin() + row, width, rightGrey);
    }
    record.left = reinterpret_cast<std::uintptr_t>(_left.data());
    record.right = reinterpret_cast<std::uintptr_t>(_right.data());
}

void PictureFrame::setLeftPixel(int x, int y, unsigned char grey)
{
    _left[indexOf(x, y)] = grey;
}

void PictureFrame::setRightPixel(int x, int y, unsigned char grey)
{
    _right[indexOf(x, y)] = grey;
}

std::size_t PictureFrame::indexOf(int x, int y) const
{
    return static_cast<std::size_t>(y) * record.bytesPerRow + static_cast<std::size_t>(x);
}
