// SPDX-License-Identifier: Apache-2.0
// Chooses where the pictures come from.

#include "SourceFactory.h"

#include "PlaybackLibrary.h"
#include "SyntheticSource.h"

#include <string_view>

namespace simulator {

namespace {

constexpr std::string_view noCamera = "none";
constexpr std::string_view playback = "playback:";

} // namespace

SourceResult makeSource(const char* text)
{
    const std::string_view wanted = text != nullptr ? text : "";
    if (wanted.empty())
        return {std::make_unique<SyntheticSource>(), {}};
    if (wanted == noCamera)
        return {};
    if (wanted.substr(0, playback.size()) == playback)
        return makePlaybackSource(std::string(wanted.substr(playback.size())));
    return {nullptr, "unknown source, expected none, playback:FOLDER or playback:FILE"};
}

} // namespace simulator
