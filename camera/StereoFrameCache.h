// SPDX-License-Identifier: Apache-2.0
// The camera node's pool of frames.

#pragma once

#include "StereoFrame.h"
#include "VYRCameraExport.h"

#include <libs/IPPCoreLib/ObjectCache.h>

/// The pool of 32 frames that the camera node lends from. Apps have no need of it: ImageProcessingNodeWithThread gives
/// frames back by itself. See ObjectCache for locking, order and limits.
class VYRCAMERA_EXPORT StereoFrameCache : public ObjectCache<StereoFrame>
{
public:
    /// A pool of 32 slots, without frames yet.
    StereoFrameCache();

    /// Makes a frame for every slot. Once, right after construction.
    void InitCacheObjects();

    /// Deletes every frame. Once, after streaming has stopped and before destruction.
    void ReleaseCacheObjects();
};
