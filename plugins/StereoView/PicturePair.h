// SPDX-License-Identifier: Apache-2.0
// A stereo pair of pictures of our own.

#pragma once

#include <QImage>

#include <vector>

struct RecordPictures;

/// A copy of a frame's two pictures, 8-bit grey. Its memory is kept from one copy to the next: copying pictures of the
/// same size allocates nothing.
/// Thread: one thread at a time; see PictureMailbox.
class PicturePair
{
public:
    /// Copies both pictures, row by row when their rows are padded.
    void CopyFrom(const RecordPictures& pictures);

    /// Width and height in pixels; 0 × 0 before the first copy.
    QSize Size() const { return {_width, _height}; }

    /// The pictures as they lie in this object's memory: good until the next CopyFrom(). A null image before the first
    /// copy.
    QImage Left() const { return ImageOn(_left); }
    QImage Right() const { return ImageOn(_right); }

private:
    using Pixels = std::vector<unsigned char>;

    QImage ImageOn(const Pixels& pixels) const;

    int _width = 0;
    int _height = 0;
    int _bytesPerRow = 0;
    Pixels _left;
    Pixels _right;
};
