// SPDX-License-Identifier: Apache-2.0
// Hands edge pictures from the worker to the GUI.

#include "EdgeMailbox.h"

#include <utility>

void EdgeMailbox::Put(EdgePicture& picture)
{
    const std::lock_guard<std::mutex> guard(_mutex);
    std::swap(_picture, picture);
    _isNew = true;
}

bool EdgeMailbox::Fetch(EdgePicture& picture)
{
    const std::lock_guard<std::mutex> guard(_mutex);
    if (!_isNew)
        return false;
    std::swap(_picture, picture);
    _isNew = false;
    return true;
}

bool EdgeMailbox::HasNews() const
{
    const std::lock_guard<std::mutex> guard(_mutex);
    return _isNew;
}

void EdgeMailbox::Clear()
{
    const std::lock_guard<std::mutex> guard(_mutex);
    _isNew = false;
}
