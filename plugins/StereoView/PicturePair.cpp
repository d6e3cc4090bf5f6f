// SPDX-License-Identifier: Apache-2.0
// A stereo pair of pictures of our own.

#include "PicturePair.h"

#include "FrameLayout.h"

#include <cstddef>
#include <cstring>

namespace {

/// Qt reads rows that begin on a multiple of 4 bytes.
int paddedTo4(int bytes)
{
    return (bytes + 3) / 4 * 4;
}

void copyRows(unsigned char* target, std::size_t targetStep, const unsigned char* source, std::size_t sourceStep,
              std::size_t width, std::size_t height)
{
    for (std::size_t row = 0; row < height; ++row)
        std::memcpy(target + row * targetStep, source + row * sourceStep, width);
}

} // namespace

void PicturePair::CopyFrom(const RecordPictures& pictures)
{
    _width = pictures.width;
    _height = pictures.height;
    _bytesPerRow = paddedTo4(_width);

    const auto width = static_cast<std::size_t>(_width);
    const auto height = static_cast<std::size_t>(_height);
    const auto step = static_cast<std::size_t>(_bytesPerRow);
    _left.resize(step * height);
    _right.resize(step * height);
    copyRows(_left.data(), step, pictures.left, pictures.bytesPerRow, width, height);
    copyRows(_right.data(), step, pictures.right, pictures.bytesPerRow, width, height);
}

QImage PicturePair::ImageOn(const Pixels& pixels) const
{
    if (pixels.empty())
        return QImage();
    return QImage(pixels.data(), _width, _height, _bytesPerRow, QImage::Format_Grayscale8);
}
