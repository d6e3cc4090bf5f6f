// SPDX-License-Identifier: Apache-2.0
// A recording kept as one picture file per frame and eye.

#pragma once

#include "Recording.h"

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

namespace simulator {

/// Reads the pictures of the folders `left` and `right` that have the same name in both, in the order of their names.
/// PNG, JPEG and PGM; other files, and pictures without a partner, are passed over.
class PictureFolder : public Recording
{
public:
    /// Throws UnreadableRecording when there are no such folders or no pairs in them.
    explicit PictureFolder(const std::filesystem::path& folder);

    RecordedPair read() override;
    bool isExhausted() const override;

private:
    std::filesystem::path _folder;
    std::vector<std::string> _names;
    std::size_t _next = 0;
};

} // namespace simulator
