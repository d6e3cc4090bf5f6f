// SPDX-License-Identifier: Apache-2.0
// Which frame records the example reads.

#include <LeftPicture.h>
#include <PictureFrames.h>

#include <gtest/gtest.h>

namespace {

TEST(LeftPicture, IsReadWhereItIs)
{
    PictureFrame frame(20, 10, 60, 200);
    frame.setLeftPixel(3, 2, 99);
    const std::optional<GreyPicture> picture = leftPictureOf(frame.record.asLibraryRecord());
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->width, 20);
    EXPECT_EQ(picture->height, 10);
    EXPECT_EQ(picture->bytesPerRow, 32U);
    EXPECT_EQ(picture->pixels[0], 60);
    EXPECT_EQ(picture->pixels[2 * 32 + 3], 99);
}

TEST(LeftPicture, ARecordThatMakesNoSenseHasNone)
{
    const auto isRead = [](auto change) {
        PictureFrame frame(20, 10, 60, 200);
        change(frame.record);
        return leftPictureOf(frame.record.asLibraryRecord()).has_value();
    };
    EXPECT_TRUE(isRead([](PictureRecord&) {}));
    EXPECT_FALSE(isRead([](PictureRecord& record) { record.recordSize = 79; }));
    EXPECT_FALSE(isRead([](PictureRecord& record) { record.bitsPerPixel = 10; }));
    EXPECT_FALSE(isRead([](PictureRecord& record) { record.left = 0; }));
    EXPECT_FALSE(isRead([](PictureRecord& record) { record.width = 0; }));
    EXPECT_FALSE(isRead([](PictureRecord& record) { record.width = 16385; }));
    EXPECT_FALSE(isRead([](PictureRecord& record) { record.height = -1; }));
    EXPECT_FALSE(isRead([](PictureRecord& record) { record.height = 16385; }));
    EXPECT_FALSE(isRead([](PictureRecord& record) { record.bytesPerRow = 19; }));
    EXPECT_FALSE(leftPictureOf(nullptr));
}

TEST(LeftPicture, WithoutALayoutNameNothingIsRead)
{
    EXPECT_FALSE(canReadPictures()) << "no camera library is here";
}

} // namespace
