// SPDX-License-Identifier: Apache-2.0
// How often each grey value occurs in a picture.

#include "GreyHistogram.h"

#include <algorithm>
#include <numeric>

namespace {

constexpr int enoughPixels = 20000;

} // namespace

std::uint64_t GreyHistogram::total() const
{
    return std::accumulate(counts.begin(), counts.end(), std::uint64_t{0});
}

double GreyHistogram::mean() const
{
    const std::uint64_t pixels = total();
    if (pixels == 0)
        return 0.0;
    double sum = 0.0;
    for (std::size_t grey = 0; grey < counts.size(); ++grey)
        sum += static_cast<double>(grey) * counts[grey];
    return sum / static_cast<double>(pixels);
}

double GreyHistogram::whiteShare() const
{
    const std::uint64_t pixels = total();
    return pixels == 0 ? 0.0 : counts.back() / static_cast<double>(pixels);
}

std::uint32_t GreyHistogram::fullHeight() const
{
    return std::max(1U, *std::max_element(counts.begin() + 1, counts.end() - 1));
}

GreyHistogram histogramOf(const QImage& picture)
{
    GreyHistogram histogram;
    const int step = std::max(1, picture.width() * picture.height() / enoughPixels);
    for (int y = 0; y < picture.height(); y += step) {
        const unsigned char* const row = picture.constScanLine(y);
        for (int x = 0; x < picture.width(); ++x)
            ++histogram.counts[row[x]];
    }
    return histogram;
}
