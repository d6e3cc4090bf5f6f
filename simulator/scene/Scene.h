// SPDX-License-Identifier: Apache-2.0
// The synthetic scene: what is in it, where, and when.

#pragma once

#include "SceneShapes.h"
#include "SceneTextures.h"

#include <array>

namespace simulator {

/// What moves in the scene, at one point in time.
struct MovingThings
{
    std::array<Box, 2> boxes;
    std::array<Ball, 2> balls;
};

/// A room with things in it that never move, and things that do. Everything follows from the geometry and the time:
/// the pictures, and how far away each point of them is.
///
/// The things that move stay clear of each other and in front of those that do not.
/// Thread: any thread, once made.
class Scene
{
public:
    Scene();

    const Room& room() const { return _room; }

    /// What stands in the room and never moves, from the furthest to the nearest.
    const std::array<Box, 4>& stillBoxes() const { return _stillBoxes; }

    MovingThings movingThings(double seconds) const;

    /// What a line of sight meets at a point in time.
    SurfacePoint meet(const Ray& ray, double seconds) const;

    /// The line of sight of a sensor pixel, or of a point between pixels. The eye is 0 for the left, 1 for the right.
    static Ray sight(int eye, float x, float y);

    /// By how many sensor pixels further left the right picture shows what the left picture shows at (x, y).
    float trueDisparity(double seconds, float x, float y) const;

    /// The grey value of a surface point, 0 to 255.
    static float grey(const SurfacePoint& point);

private:
    SceneTextures _textures;
    Room _room;
    std::array<Box, 4> _stillBoxes;
};

} // namespace simulator
