// SPDX-License-Identifier: Apache-2.0
// The camera node's pool of frames.

#pragma once

#include "StereoFrame.h"
#include "VYRCameraExport.h"

#include <libs/IPPCoreLib/ObjectCache.h>

/// The pool of 32 frames that the camera node lends from. See ObjectCache for locking and order.
class VYRCAMERA_EXPORT StereoFrameCache : public ObjectCache<StereoFrame>
{
public:
    StereoFrameCache();

    /// Makes a frame for every slot. Once, right after construction.
    void InitCacheObjects();

    /// Deletes every frame. Once, after streaming has stopped and before destruction.
    void ReleaseCacheObjects();
};
