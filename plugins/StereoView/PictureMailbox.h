// SPDX-License-Identifier: Apache-2.0
// Hands picture pairs from the worker to the GUI.

#pragma once

#include "PicturePair.h"

#include <array>
#include <atomic>
#include <cstdint>

/// Hands the newest picture pair from the worker thread to the GUI thread. Three pairs change hands: one that the
/// worker writes, one that the GUI shows, and one between them. Nobody waits for anybody, no pair is ever seen half
/// written, and a pair that the GUI was too slow for is written over.
class PictureMailbox
{
public:
    /// The pair to write the next pictures to. Thread: worker thread.
    PicturePair& Back() { return _pairs[_back]; }

    /// Hands over what was written to Back(). Thread: worker thread.
    void Publish();

    /// Whether a pair is there that Take() has not given yet. Thread: any thread.
    bool HasNews() const { return (_between.load(std::memory_order_acquire) & freshMark) != 0; }

    /// The newest pair, good until the next Take(); null when there is nothing new. Thread: GUI thread.
    const PicturePair* Take();

    /// Forgets what was published and not taken. Thread: GUI thread, while no worker runs.
    void Clear();

private:
    static constexpr std::uint8_t freshMark = 4;
    static constexpr std::uint8_t indexMask = 3;

    std::array<PicturePair, 3> _pairs;
    std::uint8_t _back = 0;                ///< the worker's
    std::uint8_t _front = 1;               ///< the GUI's
    std::atomic<std::uint8_t> _between{2}; ///< index of the pair between them, with freshMark while it is news
};
