// SPDX-License-Identifier: Apache-2.0
// Where the pictures are in the camera library's frame record.

#pragma once

#include <cstdint>
#include <optional>

struct VYRFrameRecord;

/// The two pictures of a frame record, where the camera library has them: 8-bit grey, read-only, and good only while
/// the frame is held.
struct RecordPictures
{
    int width = 0;                  ///< pixels, 1 to 16384
    int height = 0;                 ///< pixels, 1 to 16384
    std::uint32_t bytesPerRow = 0;  ///< from one row to the next, at least `width`
    std::uint32_t frameCounter = 0; ///< frames since the camera was started
    const unsigned char* left = nullptr;
    const unsigned char* right = nullptr;
};

/// The name that the camera library in this process gives the layout of its frame records, or null when it names none.
/// Thread: any thread.
const char* frameLayoutName();

/// Whether picturesOf() reads records of the layout of that name; null is no name.
bool isFrameLayoutKnown(const char* name);

/// Reads a record of a known layout. Nothing when the record contradicts itself: too short, sizes that no camera of
/// this kind has, not 8 bits a pixel, rows shorter than the picture is wide, or a picture that is not there.
/// Thread: any thread.
std::optional<RecordPictures> picturesOf(const VYRFrameRecord* record);

/// How many frames are missing between two frame counters that followed each other. A counter that stands still or
/// runs backwards has been started again: none.
std::uint32_t framesMissed(std::uint32_t previousCounter, std::uint32_t counter);
