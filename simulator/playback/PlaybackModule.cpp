// SPDX-License-Identifier: Apache-2.0
// The module's one exported function.

#include "PlaybackModule.h"

#include "PlaybackSource.h"

#include <opencv2/core/utility.hpp>

#include <exception>
#include <type_traits>

namespace {

simulator::Source* makePlaybackSource(const char* path, std::string* error)
{
    try {
        // The pictures are small, and the processors belong to the receiver.
        cv::setNumThreads(1);
        return new simulator::PlaybackSource(path);
    } catch (const std::exception& problem) {
        *error = problem.what();
        return nullptr;
    }
}

} // namespace

extern "C" __attribute__((visibility("default"))) simulator::Source* VYRMakePlaybackSource(const char* path,
                                                                                           std::string* error)
{
    static_assert(std::is_same_v<simulator::PlaybackEntry, decltype(&VYRMakePlaybackSource)>);
    return makePlaybackSource(path, error);
}
