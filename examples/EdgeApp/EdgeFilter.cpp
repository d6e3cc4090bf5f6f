// SPDX-License-Identifier: Apache-2.0
// Finds edges in a grey picture.

#include "EdgeFilter.h"

#include <algorithm>
#include <cstdlib>

namespace {

/// The strength at `here[0]`, a pixel with neighbours in the rows above and below.
int strengthAt(const unsigned char* above, const unsigned char* here, const unsigned char* below)
{
    const int across = (above[1] + 2 * here[1] + below[1]) - (above[-1] + 2 * here[-1] + below[-1]);
    const int down = (below[-1] + 2 * below[0] + below[1]) - (above[-1] + 2 * above[0] + above[1]);
    return std::min((std::abs(across) + std::abs(down)) / 4, 255);
}

/// Makes room for the edges of a picture of this size, with none in it yet.
void clear(EdgePicture& edges, int width, int height)
{
    edges.width = width;
    edges.height = height;
    edges.bytesPerRow = (width + 3) / 4 * 4;
    edges.pixels.assign(static_cast<std::size_t>(edges.bytesPerRow) * static_cast<std::size_t>(height), 0);
}

} // namespace

void findEdges(const GreyPicture& picture, int threshold, EdgePicture& edges)
{
    clear(edges, picture.width, picture.height);
    int found = 0;
    for (int y = 1; y + 1 < picture.height; ++y) {
        const unsigned char* const here = picture.pixels + static_cast<std::size_t>(y) * picture.bytesPerRow;
        const unsigned char* const above = here - picture.bytesPerRow;
        const unsigned char* const below = here + picture.bytesPerRow;
        unsigned char* const target = edges.pixels.data() + y * edges.bytesPerRow;
        for (int x = 1; x + 1 < picture.width; ++x) {
            const int strength = strengthAt(above + x, here + x, below + x);
            const bool isEdge = strength > 0 && strength >= threshold;
            target[x] = static_cast<unsigned char>(isEdge ? strength : 0);
            found += isEdge ? 1 : 0;
        }
    }
    const double all = static_cast<double>(picture.width) * picture.height;
    edges.edgeShare = all > 0.0 ? found / all : 0.0;
}
