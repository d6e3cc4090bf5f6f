// SPDX-License-Identifier: Apache-2.0
// The camera node's pool of frames.

#include "StereoFrameCache.h"

namespace {

constexpr std::uint32_t frameCount = 32;

} // namespace

StereoFrameCache::StereoFrameCache()
    : ObjectCache<StereoFrame>(frameCount)
{
}

void StereoFrameCache::InitCacheObjects()
{
    Fill([] { return new StereoFrame; });
}

void StereoFrameCache::ReleaseCacheObjects()
{
    Clear([](StereoFrame* frame) { delete frame; });
}
