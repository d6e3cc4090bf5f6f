// SPDX-License-Identifier: Apache-2.0
// What the surfaces of the synthetic scene look like.

#pragma once

#include "Texture.h"

namespace simulator {

/// All textures of the scene, painted by rule, and the same every time. Every one is grained all over, so that stereo
/// matching finds something to hold on to everywhere.
///
/// Thread: any thread, once made.
struct SceneTextures
{
    SceneTextures();

    Texture bricks;
    Texture planks; ///< boards along y
    Texture plaster;
    Texture crate;
    Texture marker; ///< black and white cells, as robots steer by
    Texture patches;
    Texture rings;

private:
    struct Grain;
    explicit SceneTextures(const Grain& grain);
};

} // namespace simulator
