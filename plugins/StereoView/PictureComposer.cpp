// SPDX-License-Identifier: Apache-2.0
// Makes the picture that a cell of the view shows.

#include "PictureComposer.h"

#include "PicturePair.h"

namespace {

template<typename Pixel>
void composeRows(QImage& target, const QImage& left, const QImage& right, Pixel pixel)
{
    if (target.size() != left.size() || target.format() != QImage::Format_RGB32)
        target = QImage(left.size(), QImage::Format_RGB32);
    const int width = target.width();
    for (int y = 0; y < target.height(); ++y) {
        const unsigned char* const fromLeft = left.constScanLine(y);
        const unsigned char* const fromRight = right.constScanLine(y);
        auto* const to = reinterpret_cast<quint32*>(target.scanLine(y));
        for (int x = 0; x < width; ++x)
            to[x] = pixel(fromLeft[x], fromRight[x]);
    }
}

} // namespace

void composePicture(QImage& target, CellContent content, const PicturePair& pair)
{
    const QImage left = pair.Left();
    const QImage right = pair.Right();
    if (left.isNull())
        return;

    switch (content) {
    case CellContent::Left:
        composeRows(target, left, right, [](unsigned char grey, unsigned char) { return greyPixel(grey); });
        break;
    case CellContent::Right:
        composeRows(target, left, right, [](unsigned char, unsigned char grey) { return greyPixel(grey); });
        break;
    case CellContent::Anaglyph:
        composeRows(target, left, right, anaglyphPixel);
        break;
    case CellContent::Difference:
        composeRows(target, left, right, differencePixel);
        break;
    }
}
