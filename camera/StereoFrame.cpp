// SPDX-License-Identifier: Apache-2.0
// One camera frame on its way through the processing nodes.

#include "StereoFrame.h"

#include "VYRCameraDevice.h"

void StereoFrame::Release()
{
    owner->FrameCache().Release(this);
}
