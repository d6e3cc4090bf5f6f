// SPDX-License-Identifier: Apache-2.0
// One camera frame on its way through the processing nodes.

#pragma once

#include "VYRCameraExport.h"

#include <libs/IPPCoreLib/NodeData.h>

class VYRCameraDevice;
struct VYRFrameRecord;

/// One camera frame as a processing item: points at the camera library's record, pixels included, and copies nothing.
///
/// Apps receive it as NodeData* in their node's Process() and read the two public fields that follow the owner: the
/// order of the fields is fixed. A new frame's fields are unset; the camera node fills them before it pushes.
///
/// Ownership: belongs to the owner's frame pool; the record belongs to the camera library, which may use its memory
/// again some frames later, so a consumer copies what it needs in Process() and keeps no pointer.
class VYRCAMERA_EXPORT StereoFrame final : public NodeData
{
public:
    /// Gives the frame back to its owner's pool. A frame that is free already changes nothing.
    /// Thread: worker thread.
    void Release() override;

    VYRCameraDevice* owner;       ///< whose pool lent the frame
    const VYRFrameRecord* record; ///< the camera library's record; read-only, never null, good during Process()
    float fps; ///< frames per second as measured when the frame came; 0 in the first second after a start
};

static_assert(sizeof(StereoFrame) == (sizeof(void*) == 4 ? 16 : 32), "apps read the fields by their place");
