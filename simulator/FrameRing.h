// SPDX-License-Identifier: Apache-2.0
// The memory of the frames: records and pictures, reused in turn.

#pragma once

#include "include/VYRFrame1.h"

#include <cstddef>
#include <cstdint>
#include <memory>

namespace simulator {

/// A frame under construction: its record, and its two pictures to write to.
struct FrameSlot
{
    VYRFrame1* record;
    std::uint8_t* left;
    std::uint8_t* right;
};

/// Owns 64 frames of the largest size and lends them out in turn.
///
/// A frame is overwritten when 64 later ones were asked for, over all starts and stops: a receiver that holds the last
/// 32 frames, as the host's frame pool does, always finds them whole. The memory is reserved at once and never moved;
/// the system provides a page when it is first written to, so that small modes use little.
/// Thread: the streaming thread asks; receivers read.
class FrameRing
{
public:
    static constexpr std::size_t capacity = 64;

    FrameRing();

    /// The next frame, its record zeroed but for its size and the addresses of the pictures.
    FrameSlot next();

private:
    struct Release
    {
        void operator()(void* memory) const;
    };

    std::unique_ptr<void, Release> _memory;
    std::size_t _next = 0;
};

} // namespace simulator
