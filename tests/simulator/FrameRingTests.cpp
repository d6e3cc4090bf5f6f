// SPDX-License-Identifier: Apache-2.0
// Tests of the memory of the frames, and of the record's layout.

#include <simulator/FrameRing.h>
#include <simulator/SensorGeometry.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <set>
#include <vector>

using namespace simulator;

TEST(FrameRing, SixtyFourFramesAreApartFromEachOther)
{
    FrameRing ring;
    std::vector<FrameSlot> slots;
    for (std::size_t i = 0; i < FrameRing::capacity; ++i) {
        const FrameSlot slot = ring.next();
        std::memset(slot.left, static_cast<int>(2 * i), sensorArea);
        std::memset(slot.right, static_cast<int>(2 * i + 1), sensorArea);
        slot.record->frameCounter = static_cast<std::uint32_t>(i);
        slots.push_back(slot);
    }
    for (std::size_t i = 0; i < slots.size(); ++i) {
        const FrameSlot& slot = slots[i];
        EXPECT_EQ(slot.record->frameCounter, i);
        EXPECT_TRUE(std::all_of(slot.left, slot.left + sensorArea,
                                [&](int pixel) { return pixel == static_cast<int>(2 * i); }));
        EXPECT_TRUE(std::all_of(slot.right, slot.right + sensorArea,
                                [&](int pixel) { return pixel == static_cast<int>(2 * i + 1); }));
    }
}

TEST(FrameRing, TheSixtyFifthFrameReusesTheFirst)
{
    FrameRing ring;
    const FrameSlot first = ring.next();
    for (std::size_t i = 1; i < FrameRing::capacity; ++i)
        EXPECT_NE(ring.next().record, first.record);
    EXPECT_EQ(ring.next().record, first.record);
}

TEST(FrameRing, ARecordStartsClearedWithItsSizeAndPictures)
{
    FrameRing ring;
    for (std::size_t i = 0; i <= FrameRing::capacity; ++i) {
        const FrameSlot slot = ring.next();
        EXPECT_EQ(slot.record->recordSize, 80U);
        EXPECT_EQ(slot.record->left.pixels, slot.left);
        EXPECT_EQ(slot.record->right.pixels, slot.right);
        EXPECT_EQ(slot.record->hasSensorData, 0);
        slot.record->hasSensorData = 1;
    }
}

TEST(VYRFrame1, FieldsLieAtTheirDocumentedOffsets)
{
    VYRFrame1 frame = {};
    frame.width = 752;
    frame.height = 480;
    frame.timestamp = 0x01020304;
    frame.frameCounter = 9;
    frame.bytesPerRow = 752;
    frame.hasSensorData = 1;
    frame.bitsPerPixel = 8;
    frame.left.place = 0x1122334455667788;
    frame.right.place = 0x99;
    frame.acceleration[2] = 0.5F;
    frame.temperature = 36.5F;
    frame.rotation[0] = 1.5F;
    unsigned char bytes[sizeof(frame)];
    std::memcpy(bytes, &frame, sizeof(frame));
    const auto at = [&](std::size_t offset, auto value) {
        std::memcpy(&value, bytes + offset, sizeof(value));
        return value;
    };
    EXPECT_EQ(sizeof(frame), 80U);
    EXPECT_EQ(at(4, std::int32_t()), 752);
    EXPECT_EQ(at(8, std::int32_t()), 480);
    EXPECT_EQ(at(12, std::uint32_t()), 0x01020304U);
    EXPECT_EQ(at(16, std::uint32_t()), 9U);
    EXPECT_EQ(at(20, std::uint32_t()), 752U);
    EXPECT_EQ(bytes[24], 1);
    EXPECT_EQ(bytes[25], 8);
    EXPECT_EQ(at(32, std::uint64_t()), 0x1122334455667788U);
    EXPECT_EQ(at(40, std::uint64_t()), 0x99U);
    EXPECT_EQ(at(56, float()), 0.5F);
    EXPECT_EQ(at(64, float()), 36.5F);
    EXPECT_EQ(at(68, float()), 1.5F);
}
