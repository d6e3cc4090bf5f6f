// SPDX-License-Identifier: Apache-2.0
// Reaches the module that plays recordings.

#pragma once

#include "SourceFactory.h"

#include <string>

namespace simulator {

/// Makes the source that plays a recording: a folder or a video file.
///
/// The module libVYRPlayback.so is looked for beside this library, and is loaded when it is first needed: it brings
/// OpenCV into the process, which the synthetic camera does without. It stays loaded.
SourceResult makePlaybackSource(const std::string& path);

} // namespace simulator
