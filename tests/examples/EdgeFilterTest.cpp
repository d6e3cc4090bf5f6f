// SPDX-License-Identifier: Apache-2.0
// The arithmetic of the edge filter.

#include <EdgeFilter.h>

#include <gtest/gtest.h>

#include <algorithm>

namespace {

/// A picture whose rows are padded with white, so that it shows when the padding is taken for picture.
class PaddedPicture
{
public:
    PaddedPicture(int width, int height, unsigned char grey)
        : _step(static_cast<std::size_t>(width) + 5)
        , _pixels(_step * static_cast<std::size_t>(height), 255)
        , _width(width)
        , _height(height)
    {
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x)
                at(x, y) = grey;
    }

    unsigned char& at(int x, int y)
    {
        return _pixels[static_cast<std::size_t>(y) * _step + static_cast<std::size_t>(x)];
    }

    GreyPicture picture() const { return {_pixels.data(), _width, _height, _step}; }

private:
    std::size_t _step;
    std::vector<unsigned char> _pixels;
    int _width;
    int _height;
};

int strengthAt(const EdgePicture& edges, int x, int y)
{
    return edges.pixels[static_cast<std::size_t>(y * edges.bytesPerRow + x)];
}

bool isEmpty(const EdgePicture& edges)
{
    return std::all_of(edges.pixels.begin(), edges.pixels.end(), [](unsigned char strength) { return strength == 0; });
}

TEST(EdgeFilter, AFlatPictureHasNoEdges)
{
    const PaddedPicture flat(9, 7, 130);
    EdgePicture edges;
    findEdges(flat.picture(), 0, edges);
    EXPECT_EQ(edges.width, 9);
    EXPECT_EQ(edges.height, 7);
    EXPECT_TRUE(isEmpty(edges));
    EXPECT_EQ(edges.edgeShare, 0.0);
}

TEST(EdgeFilter, AStraightStepIsAsStrongAsItIsHighAndTwoPixelsWide)
{
    PaddedPicture step(8, 8, 50);
    for (int y = 0; y < 8; ++y)
        for (int x = 4; x < 8; ++x)
            step.at(x, y) = 150;
    EdgePicture edges;
    findEdges(step.picture(), 0, edges);
    EXPECT_EQ(strengthAt(edges, 2, 4), 0);
    EXPECT_EQ(strengthAt(edges, 3, 4), 100);
    EXPECT_EQ(strengthAt(edges, 4, 4), 100);
    EXPECT_EQ(strengthAt(edges, 5, 4), 0);
    EXPECT_DOUBLE_EQ(edges.edgeShare, 2.0 * 6.0 / 64.0) << "the outermost rows have none";
}

TEST(EdgeFilter, ALyingStepIsAsStrongAsAStandingOne)
{
    PaddedPicture step(8, 8, 150);
    for (int y = 4; y < 8; ++y)
        for (int x = 0; x < 8; ++x)
            step.at(x, y) = 50;
    EdgePicture edges;
    findEdges(step.picture(), 0, edges);
    EXPECT_EQ(strengthAt(edges, 4, 3), 100);
    EXPECT_EQ(strengthAt(edges, 4, 4), 100);
    EXPECT_EQ(strengthAt(edges, 4, 5), 0);
}

TEST(EdgeFilter, BothDirectionsAddUpToWhiteAndNoFurther)
{
    PaddedPicture corner(6, 6, 0);
    for (int y = 3; y < 6; ++y)
        for (int x = 3; x < 6; ++x)
            corner.at(x, y) = 255;
    EdgePicture edges;
    findEdges(corner.picture(), 0, edges);
    EXPECT_EQ(strengthAt(edges, 3, 3), 255);
    EXPECT_EQ(strengthAt(edges, 2, 2), 127) << "one of four weights across, one of four down";
}

TEST(EdgeFilter, WhatIsWeakerThanTheThresholdIsNoEdge)
{
    PaddedPicture step(8, 8, 50);
    for (int y = 0; y < 8; ++y)
        for (int x = 4; x < 8; ++x)
            step.at(x, y) = 90;
    EdgePicture edges;
    findEdges(step.picture(), 40, edges);
    EXPECT_EQ(strengthAt(edges, 4, 4), 40);
    findEdges(step.picture(), 41, edges);
    EXPECT_TRUE(isEmpty(edges));
    EXPECT_EQ(edges.edgeShare, 0.0);
}

TEST(EdgeFilter, TheOutermostPixelsHaveNone)
{
    PaddedPicture noise(7, 7, 0);
    for (int y = 0; y < 7; ++y)
        for (int x = 0; x < 7; ++x)
            noise.at(x, y) = static_cast<unsigned char>((x * 91 + y * 57) % 256);
    EdgePicture edges;
    findEdges(noise.picture(), 0, edges);
    for (int i = 0; i < 7; ++i) {
        EXPECT_EQ(strengthAt(edges, i, 0), 0);
        EXPECT_EQ(strengthAt(edges, i, 6), 0);
        EXPECT_EQ(strengthAt(edges, 0, i), 0);
        EXPECT_EQ(strengthAt(edges, 6, i), 0);
    }
    EXPECT_FALSE(isEmpty(edges));
}

TEST(EdgeFilter, APictureWithoutAnInsideHasNone)
{
    for (const int side : {1, 2}) {
        const PaddedPicture small(side, side, 77);
        EdgePicture edges;
        findEdges(small.picture(), 0, edges);
        EXPECT_EQ(edges.height, side);
        EXPECT_TRUE(isEmpty(edges));
    }
}

TEST(EdgeFilter, RowsBeginWhereAnImageWantsThem)
{
    for (const int width : {4, 5, 8}) {
        EdgePicture edges;
        findEdges(PaddedPicture(width, 3, 0).picture(), 0, edges);
        EXPECT_EQ(edges.bytesPerRow, width == 4 ? 4 : 8);
        EXPECT_EQ(edges.pixels.size(), static_cast<std::size_t>(edges.bytesPerRow) * 3);
    }
}

TEST(EdgeFilter, NothingOfTheLastPictureStays)
{
    PaddedPicture step(8, 8, 0);
    step.at(4, 4) = 255;
    EdgePicture edges;
    findEdges(step.picture(), 0, edges);
    EXPECT_FALSE(isEmpty(edges));
    findEdges(PaddedPicture(7, 8, 0).picture(), 0, edges);
    EXPECT_EQ(edges.width, 7);
    EXPECT_TRUE(isEmpty(edges));
}

TEST(EdgeFilter, PicturesOfOneSizeUseOneMemory)
{
    const PaddedPicture flat(64, 48, 10);
    EdgePicture edges;
    findEdges(flat.picture(), 0, edges);
    const unsigned char* const memory = edges.pixels.data();
    findEdges(flat.picture(), 0, edges);
    EXPECT_EQ(edges.pixels.data(), memory);
}

} // namespace
