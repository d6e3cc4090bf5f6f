// SPDX-License-Identifier: Apache-2.0
// The camera that looks at the synthetic scene.

#pragma once

#include "Source.h"
#include "scene/Scene.h"

#include <array>
#include <cstdint>
#include <vector>

namespace simulator {

/// Looks at the synthetic scene with both eyes. What never moves is drawn once, at construction (some hundredths of a
/// second); for a frame it is copied, what moves is drawn over it, and noise is added.
class SyntheticSource : public Source
{
public:
    SyntheticSource();

    std::string deviceName() const override;

    /// False: what the scene shows has no distortion of its own.
    bool undistorts() const override;

    bool next(const PictureRequest& request, StereoPicture& picture) override;

    /// The scene, whose geometry tells the true disparities.
    const Scene& scene() const { return _scene; }

private:
    void addNoise(std::uint8_t* row);

    Scene _scene;
    std::array<std::vector<std::uint8_t>, 2> _still;
    std::array<std::vector<std::uint8_t>, 2> _pictures;
    std::vector<std::uint8_t> _noise;
    std::uint32_t _random = 362436069U;
};

} // namespace simulator
