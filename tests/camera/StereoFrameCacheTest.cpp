// SPDX-License-Identifier: Apache-2.0
// StereoFrame and StereoFrameCache: the pool of the camera node.

#include <FakeVYR.h>
#include <camera/StereoFrameCache.h>
#include <camera/VYRCameraDevice.h>

#include <gtest/gtest.h>

#include <set>
#include <type_traits>
#include <vector>

namespace {

static_assert(std::is_polymorphic<StereoFrame>::value, "Release() is called by slot");
static_assert(!std::has_virtual_destructor<StereoFrame>::value, "Release() is the one virtual operation");

std::vector<StereoFrame*> acquireAll(StereoFrameCache& cache)
{
    std::vector<StereoFrame*> frames;
    while (StereoFrame* const frame = cache.Acquire())
        frames.push_back(frame);
    return frames;
}

TEST(StereoFrameCache, HoldsThirtyTwoDistinctFreeFrames)
{
    StereoFrameCache cache;
    cache.InitCacheObjects();
    const std::vector<StereoFrame*> frames = acquireAll(cache);
    EXPECT_EQ(frames.size(), 32U);
    EXPECT_EQ(std::set<StereoFrame*>(frames.begin(), frames.end()).size(), 32U);
    EXPECT_EQ(cache.Acquire(), nullptr) << "the 33rd yields nothing";
    cache.ReleaseCacheObjects();
}

TEST(StereoFrameCache, HasNoFramesAfterReleaseCacheObjectsAndCanBeDestroyed)
{
    StereoFrameCache cache;
    cache.InitCacheObjects();
    cache.ReleaseCacheObjects();
    cache.ReleaseAll();
    EXPECT_EQ(cache.Acquire(), nullptr);
}

TEST(StereoFrameCache, ReleaseCacheObjectsTakesAnUnfilledCache)
{
    StereoFrameCache cache;
    cache.ReleaseCacheObjects();
    EXPECT_EQ(cache.Acquire(), nullptr);
}

TEST(StereoFrame, ReleaseGoesToTheOwnersPoolInRotatingOrder)
{
    FakeVYR::reset();
    VYRCameraDevice camera(5, 320, 240, 30.0F);
    StereoFrame* const first = camera.FrameCache().Acquire();
    first->owner = &camera;
    first->Release();
    const std::vector<StereoFrame*> frames = acquireAll(camera.FrameCache());
    ASSERT_EQ(frames.size(), 32U) << "the frame came back";
    EXPECT_NE(frames.front(), first) << "but is not lent again at once";
    EXPECT_EQ(frames.back(), first);
}

TEST(StereoFrame, ReleasingTwiceChangesNothing)
{
    FakeVYR::reset();
    VYRCameraDevice camera(5, 320, 240, 30.0F);
    StereoFrame* const frame = camera.FrameCache().Acquire();
    frame->owner = &camera;
    frame->Release();
    frame->Release();
    EXPECT_EQ(acquireAll(camera.FrameCache()).size(), 32U);
}

} // namespace
