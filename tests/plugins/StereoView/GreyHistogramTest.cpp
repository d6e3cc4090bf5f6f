// SPDX-License-Identifier: Apache-2.0
// Counting grey values.

#include <GreyHistogram.h>

#include <gtest/gtest.h>

namespace {

QImage greyPicture(int width, int height, int grey)
{
    QImage picture(width, height, QImage::Format_Grayscale8);
    picture.fill(static_cast<unsigned>(grey));
    return picture;
}

TEST(GreyHistogram, CountsEveryPixelOfASmallPicture)
{
    QImage picture = greyPicture(30, 20, 40);
    picture.scanLine(3)[29] = 255;
    picture.scanLine(19)[0] = 255;
    const GreyHistogram histogram = histogramOf(picture);
    EXPECT_EQ(histogram.counts[40], 598U);
    EXPECT_EQ(histogram.counts[255], 2U);
    EXPECT_EQ(histogram.total(), 600U);
    EXPECT_NEAR(histogram.mean(), (598 * 40 + 2 * 255) / 600.0, 1e-9);
    EXPECT_NEAR(histogram.whiteShare(), 2 / 600.0, 1e-9);
}

TEST(GreyHistogram, LargePicturesAreCountedInSomeOfTheirRows)
{
    const GreyHistogram histogram = histogramOf(greyPicture(752, 480, 7));
    EXPECT_EQ(histogram.counts[7], histogram.total());
    EXPECT_EQ(histogram.total(), 752U * 27U);
}

TEST(GreyHistogram, NoPictureGivesAnEmptyOne)
{
    const GreyHistogram histogram = histogramOf(QImage());
    EXPECT_EQ(histogram.total(), 0U);
    EXPECT_EQ(histogram.mean(), 0.0);
    EXPECT_EQ(histogram.whiteShare(), 0.0);
    EXPECT_EQ(histogram.fullHeight(), 1U);
}

TEST(GreyHistogram, BlackAndWhiteDoNotFlattenTheRest)
{
    GreyHistogram histogram;
    histogram.counts[0] = 100000;
    histogram.counts[255] = 50000;
    histogram.counts[128] = 300;
    EXPECT_EQ(histogram.fullHeight(), 300U);
}

} // namespace
