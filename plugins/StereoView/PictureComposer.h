// SPDX-License-Identifier: Apache-2.0
// Makes the picture that a cell of the view shows.

#pragma once

#include "PictureArrangement.h"

#include <QImage>

class PicturePair;

/// Writes what a cell shows of `pair` into `target`, in the format that Qt scales fastest. `target` keeps its memory
/// while the size stays the same. Does nothing for a pair without pictures.
///
/// Grey pictures are spread to 32 bits here rather than drawn as they are: scaling is what costs, and Qt scales 8-bit
/// grey about three times more slowly than spreading and then scaling takes together.
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

constexpr quint32 greyPixel(unsigned char grey)
{
    return 0xFF000000U | static_cast<quint32>(grey) * 0x010101U;
}
