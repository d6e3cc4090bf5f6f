// SPDX-License-Identifier: Apache-2.0
// Hands picture pairs from the worker to the GUI.

#include "PictureMailbox.h"

void PictureMailbox::Publish()
{
    const auto mine = static_cast<std::uint8_t>(_back | freshMark);
    _back = _between.exchange(mine, std::memory_order_acq_rel) & indexMask;
}

const PicturePair* PictureMailbox::Take()
{
    if (!HasNews())
        return nullptr;
    _front = _between.exchange(_front, std::memory_order_acq_rel) & indexMask;
    return &_pairs[_front];
}

void PictureMailbox::Clear()
{
    _between.store(_between.load(std::memory_order_relaxed) & indexMask, std::memory_order_relaxed);
}
