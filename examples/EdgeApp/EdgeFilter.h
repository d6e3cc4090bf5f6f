// SPDX-License-Identifier: Apache-2.0
// Finds edges in a grey picture.

#pragma once

#include <cstddef>
#include <vector>

/// A picture in somebody else's memory: 8 bits a pixel, 0 black, 255 white.
struct GreyPicture
{
    const unsigned char* pixels = nullptr; ///< the top row's first
    int width = 0;                         ///< pixels
    int height = 0;                        ///< pixels
    std::size_t bytesPerRow = 0;           ///< from one row to the next, at least `width`
};

/// Edges: 0 where there is none, up to 255 where it is strongest. Its memory is kept from one picture to the next, so
/// that pictures of the same size allocate nothing.
struct EdgePicture
{
    std::vector<unsigned char> pixels; ///< row by row
    int width = 0;                     ///< pixels
    int height = 0;                    ///< pixels
    int bytesPerRow = 0;               ///< a multiple of 4, as QImage wants it
    double edgeShare = 0.0;            ///< the pixels on an edge, 0 to 1 of all
    float framesPerSecond = 0.0F;      ///< of the camera, when the picture was taken
};

/// Sobel's filter: how much the grey values change across a pixel, both ways added up. A straight step by 100 grey
/// values is an edge of strength 100, and what is weaker than `threshold` (0 to 255) is none. The outermost pixels have
/// no neighbours on one side, and so no edge.
/// Thread: any thread.
void findEdges(const GreyPicture& picture, int threshold, EdgePicture& edges);
