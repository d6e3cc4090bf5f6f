// SPDX-License-Identifier: Apache-2.0
// How often each grey value occurs in a picture.

#pragma once

#include <QImage>

#include <array>
#include <cstdint>

/// Counts of the 256 grey values, over all pixels or an even choice of them.
struct GreyHistogram
{
    std::array<std::uint32_t, 256> counts{};

    std::uint64_t total() const;

    /// The mean grey value, 0 to 255; 0 for an empty histogram.
    double mean() const;

    /// The share of pixels that are fully white, 0 to 1.
    double whiteShare() const;

    /// The count that a drawing takes as its full height: that of the most frequent grey between black and white, so
    /// that dark corners and blown-out lights do not flatten everything else. At least 1.
    std::uint32_t fullHeight() const;
};

/// Counts an 8-bit grey picture. Of pictures with more than about 20,000 pixels only every so many rows are looked at,
/// which no eye sees and which keeps the cost far below a millisecond whatever the size.
GreyHistogram histogramOf(const QImage& picture);
