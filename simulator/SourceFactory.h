// SPDX-License-Identifier: Apache-2.0
// Chooses where the pictures come from.

#pragma once

#include "Source.h"

#include <memory>
#include <string>

namespace simulator {

/// What came of making a source: a source, or a reason, or neither where no camera is wanted.
struct SourceResult
{
    std::unique_ptr<Source> source;
    std::string error; ///< one line for the user; empty when there is nothing to tell
};

/// Makes the source that the text of VYR_SOURCE names; null stands for a variable that is not set.
SourceResult makeSource(const char* text);

} // namespace simulator
