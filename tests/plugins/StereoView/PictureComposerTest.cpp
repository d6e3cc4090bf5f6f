// SPDX-License-Identifier: Apache-2.0
// Making the pictures that are shown.

#include "PictureFrames.h"

#include <FrameLayout.h>
#include <PictureComposer.h>
#include <PicturePair.h>

#include <gtest/gtest.h>

namespace {

class PictureComposer : public testing::Test
{
protected:
    PictureComposer()
    {
        PictureFrame frame(37, 5, 100, 60);
        frame.setLeftPixel(36, 4, 20);
        pair.CopyFrom(*picturesOf(frame.record.asLibraryRecord()));
    }

    QRgb composedAt(CellContent content, int x, int y)
    {
        composePicture(target, content, pair);
        return target.pixel(x, y);
    }

    PicturePair pair;
    QImage target;
};

TEST_F(PictureComposer, LeftAndRightAreGrey)
{
    EXPECT_EQ(composedAt(CellContent::Left, 0, 0), qRgb(100, 100, 100));
    EXPECT_EQ(composedAt(CellContent::Left, 36, 4), qRgb(20, 20, 20));
    EXPECT_EQ(composedAt(CellContent::Right, 36, 4), qRgb(60, 60, 60));
    EXPECT_EQ(target.size(), QSize(37, 5));
}

TEST_F(PictureComposer, AnaglyphIsLeftInRedAndRightInCyan)
{
    EXPECT_EQ(composedAt(CellContent::Anaglyph, 0, 0), qRgb(100, 60, 60));
    EXPECT_EQ(composedAt(CellContent::Anaglyph, 36, 4), qRgb(20, 60, 60));
}

TEST_F(PictureComposer, DifferenceIsTheDistanceEitherWay)
{
    EXPECT_EQ(composedAt(CellContent::Difference, 0, 0), qRgb(40, 40, 40));
    EXPECT_EQ(composedAt(CellContent::Difference, 36, 4), qRgb(40, 40, 40));
    EXPECT_EQ(differencePixel(7, 7), qRgb(0, 0, 0));
    EXPECT_EQ(differencePixel(0, 255), qRgb(255, 255, 255));
}

TEST_F(PictureComposer, EveryPictureIsInTheFormatOfScreens)
{
    for (const CellContent content :
         {CellContent::Left, CellContent::Right, CellContent::Anaglyph, CellContent::Difference}) {
        composePicture(target, content, pair);
        EXPECT_EQ(target.format(), QImage::Format_RGB32);
    }
}

TEST_F(PictureComposer, PicturesKeepTheirMemoryForTheSameSize)
{
    composePicture(target, CellContent::Anaglyph, pair);
    const unsigned char* const memory = target.constBits();
    for (const CellContent content : {CellContent::Difference, CellContent::Left, CellContent::Right}) {
        composePicture(target, content, pair);
        EXPECT_EQ(target.constBits(), memory);
    }
}

TEST_F(PictureComposer, LeavesTheTargetAloneWithoutPictures)
{
    composePicture(target, CellContent::Left, PicturePair());
    EXPECT_TRUE(target.isNull());
}

} // namespace
