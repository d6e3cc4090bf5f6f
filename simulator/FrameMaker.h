// SPDX-License-Identifier: Apache-2.0
// Makes the frames of one stream.

#pragma once

#include "Controls.h"
#include "FrameRing.h"
#include "LensCorrection.h"
#include "SensorReadout.h"
#include "Source.h"

#include <optional>

namespace simulator {

/// Takes picture pairs from a source and turns them into frames of one mode. Borrows source and ring.
///
/// Thread: one thread at a time.
class FrameMaker
{
public:
    FrameMaker(const VYRResolutionInfo& mode, Source& source, FrameRing& ring);

    /// The frame that is due so many seconds after the camera was opened: everything but its times and sensor data.
    /// Null when the source has no picture for it.
    VYRFrame1* make(double seconds, const Controls& controls);

private:
    VYRResolutionInfo _mode;
    SensorWindow _window;
    SensorReadout _readout;
    Source& _source;
    FrameRing& _ring;
    std::optional<LensCorrection> _lensCorrection; ///< made when first needed
};

} // namespace simulator
