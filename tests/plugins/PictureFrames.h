// SPDX-License-Identifier: Apache-2.0
// Frame records with pictures, for a camera library that has none.

#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

struct VYRFrameRecord;

/// A frame record of the layout "VYR-frame-1".
struct PictureRecord
{
    std::uint32_t recordSize = 80;
    std::int32_t width = 0;
    std::int32_t height = 0;
    std::uint32_t timestamp = 0;
    std::uint32_t frameCounter = 0;
    std::uint32_t bytesPerRow = 0;
    std::uint8_t hasSensorData = 0;
    std::uint8_t bitsPerPixel = 8;
    std::uint8_t reserved[6] = {};
    std::uint64_t left = 0;
    std::uint64_t right = 0;
    float acceleration[3] = {};
    std::uint8_t reserved60[4] = {};
    float temperature = 0.0F;
    float rotation[3] = {};

    const VYRFrameRecord* asLibraryRecord() const { return reinterpret_cast<const VYRFrameRecord*>(this); }
};

static_assert(sizeof(PictureRecord) == 80, "as laid out by the camera library");
static_assert(offsetof(PictureRecord, left) == 32, "as laid out by the camera library");
static_assert(offsetof(PictureRecord, rotation) == 68, "as laid out by the camera library");

/// A frame with a left picture of one grey value and a right picture of another, which it owns. Rows are padded to a
/// multiple of 16 bytes, and the padding is white, so that it shows when somebody takes it for picture.
class PictureFrame
{
public:
    PictureFrame(int width, int height, unsigned char leftGrey, unsigned char rightGrey);

    PictureFrame(const PictureFrame&) = delete;
    PictureFrame& operator=(const PictureFrame&) = delete;

    void setLeftPixel(int x, int y, unsigned char grey);
    void setRightPixel(int x, int y, unsigned char grey);

    PictureRecord record;

private:
    std::size_t indexOf(int x, int y) const;

    std::vector<unsigned char> _left;
    std::vector<unsigned char> _right;
};
