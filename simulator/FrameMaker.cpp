// SPDX-License-Identifier: Apache-2.0
// Makes the frames of one stream.

#include "FrameMaker.h"

#include <utility>

namespace simulator {

FrameMaker::FrameMaker(const VYRResolutionInfo& mode, Source& source, FrameRing& ring)
    : _mode(mode)
    , _window(sensorWindow(mode))
    , _readout(mode)
    , _source(source)
    , _ring(ring)
{
}

VYRFrame1* FrameMaker::make(double seconds, const Controls& controls)
{
    StereoPicture picture;
    if (!_source.next({seconds, _window.y, _window.height, controls.undistort}, picture))
        return nullptr;
    if (controls.undistort && !_source.undistorts()) {
        if (!_lensCorrection)
            _lensCorrection.emplace();
        picture.left = _lensCorrection->correctLeft(picture.left, _window.y, _window.height);
        picture.right = _lensCorrection->correctRight(picture.right, _window.y, _window.height);
    }
    if (controls.swapCameras)
        std::swap(picture.left, picture.right);
    const FrameSlot slot = _ring.next();
    slot.record->width = _mode.width;
    slot.record->height = _mode.height;
    slot.record->bytesPerRow = static_cast<std::uint32_t>(bytesPerRow(_mode.width));
    slot.record->bitsPerPixel = 8;
    _readout.read(picture.left, controls, slot.left);
    _readout.read(picture.right, controls, slot.right);
    return slot.record;
}

} // namespace simulator
