// SPDX-License-Identifier: Apache-2.0
// Reading the camera library's frame record.

#include "PictureFrames.h"

#include <FrameLayout.h>
#include <PicturePair.h>

#include <gtest/gtest.h>

namespace {

class FrameLayout : public testing::Test
{
protected:
    bool isReadable() const { return picturesOf(frame.record.asLibraryRecord()).has_value(); }

    PictureFrame frame{100, 50, 10, 20};
};

TEST_F(FrameLayout, ReadsSizesCounterAndPictures)
{
    frame.record.frameCounter = 77;
    const auto pictures = picturesOf(frame.record.asLibraryRecord());
    ASSERT_TRUE(pictures.has_value());
    EXPECT_EQ(pictures->width, 100);
    EXPECT_EQ(pictures->height, 50);
    EXPECT_EQ(pictures->bytesPerRow, 112U);
    EXPECT_EQ(pictures->frameCounter, 77U);
    EXPECT_EQ(pictures->left[0], 10);
    EXPECT_EQ(pictures->right[0], 20);
}

TEST_F(FrameLayout, OnlyItsOwnNameIsKnown)
{
    EXPECT_TRUE(isFrameLayoutKnown("VYR-frame-1"));
    EXPECT_FALSE(isFrameLayoutKnown("VYR-frame-2"));
    EXPECT_FALSE(isFrameLayoutKnown("VYR-frame-10"));
    EXPECT_FALSE(isFrameLayoutKnown(""));
    EXPECT_FALSE(isFrameLayoutKnown(nullptr));
}

TEST_F(FrameLayout, ALibraryWithoutTheSymbolNamesNone)
{
    EXPECT_EQ(frameLayoutName(), nullptr);
}

TEST_F(FrameLayout, NoRecordIsNotRead)
{
    EXPECT_FALSE(picturesOf(nullptr).has_value());
}

TEST_F(FrameLayout, AShortRecordIsNotReadBeyondItsSize)
{
    // As large as it says, so that a tool which watches over memory sees a step too far.
    const auto size = std::make_unique<std::uint32_t>(4);
    EXPECT_FALSE(picturesOf(reinterpret_cast<const VYRFrameRecord*>(size.get())).has_value());
    frame.record.recordSize = 79;
    EXPECT_FALSE(isReadable());
    frame.record.recordSize = 81;
    EXPECT_TRUE(isReadable());
}

TEST_F(FrameLayout, AbsurdSizesAreRefused)
{
    for (const int size : {0, -1, -100, 16385, 2147483647}) {
        frame.record.width = size;
        frame.record.bytesPerRow = size > 0 ? static_cast<std::uint32_t>(size) : 112;
        EXPECT_FALSE(isReadable()) << size;
        frame.record.width = 100;
        frame.record.bytesPerRow = 112;
        frame.record.height = size;
        EXPECT_FALSE(isReadable()) << size;
        frame.record.height = 50;
    }
    frame.record.width = frame.record.height = 16384;
    frame.record.bytesPerRow = 16384;
    EXPECT_TRUE(isReadable());
}

TEST_F(FrameLayout, RowsShorterThanThePictureOrAbsurdlyLongAreRefused)
{
    frame.record.bytesPerRow = 99;
    EXPECT_FALSE(isReadable());
    frame.record.bytesPerRow = 100;
    EXPECT_TRUE(isReadable());
    frame.record.bytesPerRow = 0xFFFFFFFFU;
    EXPECT_FALSE(isReadable());
}

TEST_F(FrameLayout, OtherThanEightBitsAPixelIsRefused)
{
    for (const int bits : {0, 1, 7, 10, 16, 24, 255}) {
        frame.record.bitsPerPixel = static_cast<std::uint8_t>(bits);
        EXPECT_FALSE(isReadable()) << bits;
    }
}

TEST_F(FrameLayout, AMissingPictureIsRefused)
{
    const std::uint64_t right = std::exchange(frame.record.right, 0);
    EXPECT_FALSE(isReadable());
    frame.record.right = right;
    frame.record.left = 0;
    EXPECT_FALSE(isReadable());
}

TEST_F(FrameLayout, CopiesRowsWithoutTheirPadding)
{
    PictureFrame odd(37, 3, 10, 20);
    odd.setLeftPixel(36, 2, 99);
    odd.setRightPixel(0, 1, 98);
    PicturePair pair;
    pair.CopyFrom(*picturesOf(odd.record.asLibraryRecord()));
    EXPECT_EQ(pair.Size(), QSize(37, 3));
    EXPECT_EQ(pair.Left().pixelColor(36, 2).red(), 99);
    EXPECT_EQ(pair.Left().pixelColor(35, 2).red(), 10);
    EXPECT_EQ(pair.Right().pixelColor(0, 1).red(), 98);
    EXPECT_EQ(pair.Right().pixelColor(36, 0).red(), 20);
}

TEST_F(FrameLayout, CopyingTheSameSizeAgainKeepsTheMemory)
{
    PicturePair pair;
    EXPECT_TRUE(pair.Left().isNull());
    pair.CopyFrom(*picturesOf(frame.record.asLibraryRecord()));
    const unsigned char* const memory = pair.Left().constBits();
    pair.CopyFrom(*picturesOf(frame.record.asLibraryRecord()));
    EXPECT_EQ(pair.Left().constBits(), memory);
}

TEST_F(FrameLayout, GapsInTheCounterAreMissedFrames)
{
    EXPECT_EQ(framesMissed(5, 6), 0U);
    EXPECT_EQ(framesMissed(5, 9), 3U);
    EXPECT_EQ(framesMissed(0xFFFFFFFEU, 1), 2U);
    EXPECT_EQ(framesMissed(5, 5), 0U);
    EXPECT_EQ(framesMissed(1000, 0), 0U) << "started again";
}

} // namespace
