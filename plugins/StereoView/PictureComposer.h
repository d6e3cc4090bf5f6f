// SPDX-License-Identifier: Apache-2.0
// Makes the picture that a cell of the view shows.

#pragma once

#include "PictureArrangement.h"

#include <QImage>

class PicturePair;

/// Makes `target` what a cell shows of `pair`: one of its pictures, or a coloured mix of both. In the screen's own
/// pixel format, also what is grey: drawn as 8-bit grey, Qt would convert the picture itself, each time and in new
/// memory, which takes more than twice as long. `target` keeps its memory while the size stays the same. Does nothing
/// for a pair without pictures.
void composePicture(QImage& target, CellContent content, const PicturePair& pair);

/// A grey value as a colour. By shifts, of which a processor does several at once, unlike multiplications.
constexpr quint32 greyPixel(unsigned char grey)
{
    const quint32 value = grey;
    return 0xFF000000U | value << 16U | value << 8U | value;
}

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
