// SPDX-License-Identifier: Apache-2.0
// The way into the playback module, which is loaded at run time.

#pragma once

#include "../Source.h"

#include <string>

namespace simulator {

/// The module's file name; it stands beside the camera library, and both come from one build.
constexpr const char* playbackModuleFile = "libVYRPlayback.so";

/// The one function that the module exports.
constexpr const char* playbackEntryName = "VYRMakePlaybackSource";

/// Makes the source that plays the recording at `path`; the caller owns it. Null, with a reason, when it cannot be
/// read.
using PlaybackEntry = Source* (*)(const char* path, std::string* error);

} // namespace simulator
