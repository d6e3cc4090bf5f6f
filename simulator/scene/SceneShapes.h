// SPDX-License-Identifier: Apache-2.0
// What stands, hangs and rolls in the synthetic scene: shapes, and where a line of sight meets them.

#pragma once

#include "Texture.h"
#include "Vector3.h"

#include <optional>

namespace simulator {

/// A line of sight. The direction has z = 1, so that the way along it is the depth.
struct Ray
{
    Vector3 origin;
    Vector3 direction;
};

/// Where a line of sight ends: all that its grey value depends on.
struct SurfacePoint
{
    float depth = 0.0F; ///< metres
    const Texture* texture = nullptr;
    float u = 0.0F; ///< in texels of the finest level
    float v = 0.0F;
    float shade = 0.0F; ///< how much light it gets, 0 to 1
    float texelsPerPixel = 1.0F;
};

/// The light that a surface gets, by its normal (of length 1).
float shadeOf(Vector3 normal);

/// How many texels fall on a pixel: more with distance, and more on surfaces seen at a slant.
float texelsPerPixel(float texelsPerMetre, float depth, Vector3 direction, Vector3 normal);

/// Sine and cosine of a turn about the vertical.
struct Turn
{
    explicit Turn(float angle);

    /// From the world's directions to those of a thing turned so.
    Vector3 into(Vector3 v) const { return {v.x * cosine - v.z * sine, v.y, v.x * sine + v.z * cosine}; }

    /// And back.
    Vector3 outOf(Vector3 v) const { return {v.x * cosine + v.z * sine, v.y, v.z * cosine - v.x * sine}; }

    float sine;
    float cosine;
};

/// An upright box, seen from outside. Upright faces bear their texture as one who looks at them sees it: from the upper
/// left corner.
struct Box
{
    Vector3 centre;
    Vector3 half; ///< half its extent along its own axes
    Turn turn;
    const Texture* texture;
    float texelsPerMetre;

    std::optional<SurfacePoint> meet(const Ray& ray) const;
};

/// A ball that spins about the vertical. Each half of it bears the texture once.
struct Ball
{
    Vector3 centre;
    float radius;
    Turn turn;
    const Texture* texture;

    std::optional<SurfacePoint> meet(const Ray& ray) const;
};

/// A room, seen from inside, with its middle line ahead of the camera.
struct Room
{
    float halfWidth;
    float ceiling; ///< y, above the camera: negative
    float floor;   ///< y
    float back;    ///< z
    const Texture* wallTexture;
    const Texture* sideTexture;
    const Texture* floorTexture;
    const Texture* ceilingTexture;
    float texelsPerMetre;

    SurfacePoint meet(const Ray& ray) const;
};

} // namespace simulator
