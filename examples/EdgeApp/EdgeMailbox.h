// SPDX-License-Identifier: Apache-2.0
// Hands edge pictures from the worker to the GUI.

#pragma once

#include "EdgeFilter.h"

#include <mutex>

/// Holds one picture for the GUI thread to fetch: the newest. Pictures are swapped, not copied, so that three of them
/// go round, one with the worker, one here, and one on the screen; nobody ever waits for longer than a swap takes.
/// Thread: any thread.
class EdgeMailbox
{
public:
    /// Puts in `picture`, and gives back one whose memory may be used for the next. One that nobody has fetched yet is
    /// lost: the screen is slower than the camera, and only the newest is of interest.
    void Put(EdgePicture& picture);

    /// Swaps the newest picture into `picture`. False, with nothing changed, when there is none since the last call.
    bool Fetch(EdgePicture& picture);

    /// Whether Fetch() would find a picture.
    bool HasNews() const;

    /// Forgets a picture that nobody has fetched.
    void Clear();

private:
    mutable std::mutex _mutex; ///< guards everything below
    EdgePicture _picture;
    bool _isNew = false;
};
