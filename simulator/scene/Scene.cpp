// SPDX-License-Identifier: Apache-2.0
// The synthetic scene: what is in it, where, and when.

#include "Scene.h"

#include "../CameraModel.h"

#include <cmath>

namespace simulator {

namespace {

constexpr float floorHeight = 1.15F;

/// A value that swings about a middle, once in so many seconds.
float swing(double seconds, float middle, float amplitude, double period, double phase = 0.0)
{
    constexpr double fullTurn = 6.283185307179586;
    return middle + amplitude * static_cast<float>(std::sin(fullTurn * (seconds / period + phase)));
}

/// An angle that grows by a full turn in so many seconds.
float spin(double seconds, double period)
{
    constexpr double fullTurn = 6.283185307179586;
    return static_cast<float>(fullTurn * std::fmod(seconds / period, 1.0));
}

/// The height above the floor of something that bounces, once in so many seconds.
float bounce(double seconds, float height, double period)
{
    const auto phase = static_cast<float>(std::fmod(seconds / period, 1.0));
    return 4.0F * height * phase * (1.0F - phase);
}

void keepNearer(SurfacePoint& nearest, const std::optional<SurfacePoint>& other)
{
    if (other && other->depth < nearest.depth)
        nearest = *other;
}

constexpr float wholeTexture(float side)
{
    return static_cast<float>(Texture::size) / side;
}

} // namespace

Scene::Scene()
    : _room{3.5F,
            -1.75F,
            floorHeight,
            6.5F,
            &_textures.bricks,
            &_textures.plaster,
            &_textures.planks,
            &_textures.plaster,
            190.0F}
    , _stillBoxes{Box{{0.0F, -0.55F, 6.45F}, {0.62F, 0.62F, 0.05F}, Turn(0.0F), &_textures.marker, wholeTexture(1.24F)},
                  Box{{-2.75F, -0.3F, 5.9F}, {0.22F, 1.45F, 0.22F}, Turn(0.0F), &_textures.plaster, 240.0F},
                  Box{{2.75F, -0.3F, 5.9F}, {0.22F, 1.45F, 0.22F}, Turn(0.0F), &_textures.plaster, 240.0F},
                  Box{{2.55F, 0.7F, 4.3F}, {0.45F, 0.45F, 0.45F}, Turn(0.5F), &_textures.crate, wholeTexture(0.9F)}}
{
}

MovingThings Scene::movingThings(double seconds) const
{
    constexpr float crateHalf = 0.36F;
    constexpr float cubeHalf = 0.17F;
    constexpr float bouncerRadius = 0.26F;
    return {{Box{{swing(seconds, -1.5F, 0.35F, 13.0), floorHeight - crateHalf, swing(seconds, 3.2F, 0.35F, 17.0)},
                 {crateHalf, crateHalf, crateHalf},
                 Turn(spin(seconds, 24.0)),
                 &_textures.crate,
                 wholeTexture(2.0F * crateHalf)},
             Box{{swing(seconds, 0.75F, 0.1F, 9.0), swing(seconds, 0.0F, 0.1F, 7.0), swing(seconds, 1.95F, 0.2F, 11.0)},
                 {cubeHalf, cubeHalf, cubeHalf},
                 Turn(spin(seconds, 15.0)),
                 &_textures.marker,
                 wholeTexture(2.0F * cubeHalf)}},
            {Ball{{swing(seconds, 0.1F, 1.5F, 21.0), swing(seconds, -0.62F, 0.22F, 8.0),
                   swing(seconds, 4.2F, 0.8F, 21.0, 0.25)},
                  0.36F,
                  Turn(spin(seconds, 12.0)),
                  &_textures.patches},
             Ball{{swing(seconds, -0.1F, 0.25F, 10.0), floorHeight - bouncerRadius - bounce(seconds, 0.75F, 1.6),
                   swing(seconds, 2.55F, 0.2F, 14.0)},
                  bouncerRadius,
                  Turn(spin(seconds, -6.0)),
                  &_textures.rings}}};
}

SurfacePoint Scene::meet(const Ray& ray, double seconds) const
{
    SurfacePoint nearest = _room.meet(ray);
    for (const Box& box : _stillBoxes)
        keepNearer(nearest, box.meet(ray));
    const MovingThings moving = movingThings(seconds);
    for (const Box& box : moving.boxes)
        keepNearer(nearest, box.meet(ray));
    for (const Ball& ball : moving.balls)
        keepNearer(nearest, ball.meet(ray));
    return nearest;
}

Ray Scene::sight(int eye, float x, float y)
{
    return {{static_cast<float>(eye) * baseline, 0.0F, 0.0F},
            {(x - centreX) / focalLength, (y - centreY) / focalLength, 1.0F}};
}

float Scene::trueDisparity(double seconds, float x, float y) const
{
    return focalLength * baseline / meet(sight(0, x, y), seconds).depth;
}

float Scene::grey(const SurfacePoint& point)
{
    return point.texture->sample(point.u, point.v, point.texelsPerPixel) * point.shade;
}

} // namespace simulator
