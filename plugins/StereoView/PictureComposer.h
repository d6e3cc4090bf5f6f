// SPDX-License-Identifier: Apache-2.0
// Makes the picture that a cell of the view shows.

#pragma once

#include "PictureArrangement.h"

#include <QImage>

class PicturePair;

/// Makes `target` what a cell shows of `pair`: a grey picture as it lies in the pair's memory, nothing copied and
/// nothing converted, so that it is good for as long as the pair keeps it; or a coloured mix of both pictures, in
/// memory that `target` keeps while the size stays the same. Does nothing for a pair without pictures.
void composePicture(QImage& target, CellContent content, const PicturePair& pair);

/// Left on red, right on green and blue.
constexpr quint32 anaglyphPixel(unsigned char left, unsigned char right)
{
    return 0xFF000000U | static_cast<quint32>(left) << 16U | static_cast<quint32>(right) * 0x0101U;
}

/// The distance between the two, as grey.
constexpr quint32 differencePixel(unsigned char left, unsigned char right)
{
    return 0xFF000000U | static_cast<quint32>(left > right ? left - right : right - left) * 0x010101U;
}
