// SPDX-License-Identifier: Apache-2.0
// What stands, hangs and rolls in the synthetic scene: shapes, and where a line of sight meets them.

#include "SceneShapes.h"

#include "../CameraModel.h"

#include <algorithm>
#include <cmath>

namespace simulator {

namespace {

constexpr Vector3 lightFrom = {-0.42F, -0.74F, -0.525F}; // of length 1
constexpr float ambient = 0.48F;
constexpr float steepestView = 0.06F; // beyond it textures would only become coarser

/// Corners of a room get less light.
float cornerShade(float distance)
{
    return 1.0F - 0.45F * std::exp(-distance / 0.5F);
}

} // namespace

float shadeOf(Vector3 normal)
{
    return ambient + (1.0F - ambient) * std::max(0.0F, dot(normal, lightFrom));
}

float texelsPerPixel(float texelsPerMetre, float depth, Vector3 direction, Vector3 normal)
{
    const float slant = std::abs(dot(direction, normal)) / std::sqrt(dot(direction, direction));
    return texelsPerMetre * depth / (focalLength * std::sqrt(std::max(slant, steepestView)));
}

Turn::Turn(float angle)
    : sine(std::sin(angle))
    , cosine(std::cos(angle))
{
}

std::optional<SurfacePoint> Box::meet(const Ray& ray) const
{
    const Vector3 origin = turn.into(ray.origin - centre);
    const Vector3 direction = turn.into(ray.direction);
    const float origins[3] = {origin.x, origin.y, origin.z};
    const float directions[3] = {direction.x, direction.y, direction.z};
    const float halves[3] = {half.x, half.y, half.z};

    float entry = 0.0F;
    float exit = 1e9F;
    int face = -1;
    for (int axis = 0; axis < 3; ++axis) {
        if (std::abs(directions[axis]) < 1e-9F) {
            if (std::abs(origins[axis]) > halves[axis])
                return std::nullopt;
            continue;
        }
        const float towards = directions[axis] > 0.0F ? -halves[axis] : halves[axis];
        const float in = (towards - origins[axis]) / directions[axis];
        const float out = (-towards - origins[axis]) / directions[axis];
        if (in > entry) {
            entry = in;
            face = axis;
        }
        exit = std::min(exit, out);
    }
    if (face < 0 || entry > exit)
        return std::nullopt;

    const Vector3 point = origin + entry * direction;
    SurfacePoint result;
    result.depth = entry;
    result.texture = texture;
    const float side = directions[face] > 0.0F ? -1.0F : 1.0F;
    if (face == 0) {
        result.u = side * point.z + half.z;
        result.v = point.y + half.y;
    } else if (face == 1) {
        result.u = point.x + half.x;
        result.v = point.z + half.z;
    } else {
        result.u = half.x - side * point.x;
        result.v = point.y + half.y;
    }
    result.u *= texelsPerMetre;
    result.v *= texelsPerMetre;
    const Vector3 normal = turn.outOf({face == 0 ? side : 0.0F, face == 1 ? side : 0.0F, face == 2 ? side : 0.0F});
    result.shade = shadeOf(normal);
    result.texelsPerPixel = texelsPerPixel(texelsPerMetre, entry, ray.direction, normal);
    return result;
}

std::optional<SurfacePoint> Ball::meet(const Ray& ray) const
{
    const Vector3 towards = centre - ray.origin;
    const float along = dot(ray.direction, towards);
    const float length = dot(ray.direction, ray.direction);
    const float discriminant = along * along - length * (dot(towards, towards) - radius * radius);
    if (discriminant < 0.0F)
        return std::nullopt;
    const float depth = (along - std::sqrt(discriminant)) / length;
    if (depth <= 0.0F)
        return std::nullopt;
    const Vector3 normal = (1.0F / radius) * (depth * ray.direction - towards);
    const Vector3 turned = turn.into(normal);
    // The map of equal areas: it neither squeezes nor stretches the grain, and both halves fit together.
    const float scale = 1.0F / std::sqrt(1.0F + std::abs(turned.z));
    SurfacePoint result;
    result.depth = depth;
    result.texture = texture;
    result.u = (0.5F + 0.5F * turned.x * scale) * static_cast<float>(Texture::size - 1);
    result.v = (0.5F + 0.5F * turned.y * scale) * static_cast<float>(Texture::size - 1);
    result.shade = shadeOf(normal);
    result.texelsPerPixel =
        texelsPerPixel(0.35F * static_cast<float>(Texture::size) / radius, depth, ray.direction, normal);
    return result;
}

SurfacePoint Room::meet(const Ray& ray) const
{
    const Vector3 direction = ray.direction;
    const float sideDepth =
        direction.x == 0.0F ? back : ((direction.x > 0.0F ? halfWidth : -halfWidth) - ray.origin.x) / direction.x;
    const float heightDepth =
        direction.y == 0.0F ? back : ((direction.y > 0.0F ? floor : ceiling) - ray.origin.y) / direction.y;

    SurfacePoint result;
    result.depth = std::min({sideDepth, heightDepth, back});
    const Vector3 point = ray.origin + result.depth * direction;
    const float fromSide = halfWidth - std::abs(point.x);
    const float fromHeight = std::min(floor - point.y, point.y - ceiling);
    const float fromBack = back - point.z;
    Vector3 normal;
    if (result.depth == back) {
        normal.z = -1.0F;
        result.texture = wallTexture;
        result.u = point.x + halfWidth;
        result.v = point.y - ceiling;
        result.shade = cornerShade(fromSide) * cornerShade(fromHeight);
    } else if (result.depth == heightDepth) {
        normal.y = direction.y > 0.0F ? -1.0F : 1.0F;
        result.texture = direction.y > 0.0F ? floorTexture : ceilingTexture;
        result.u = point.x + halfWidth;
        result.v = point.z;
        result.shade = cornerShade(fromSide) * cornerShade(fromBack);
    } else {
        normal.x = direction.x > 0.0F ? -1.0F : 1.0F;
        result.texture = sideTexture;
        result.u = point.z;
        result.v = point.y - ceiling;
        result.shade = (direction.x > 0.0F ? 0.98F : 0.78F) * cornerShade(fromBack) * cornerShade(fromHeight);
    }
    result.u *= texelsPerMetre;
    result.v *= texelsPerMetre;
    result.texelsPerPixel = texelsPerPixel(texelsPerMetre, result.depth, direction, normal);
    return result;
}

} // namespace simulator
