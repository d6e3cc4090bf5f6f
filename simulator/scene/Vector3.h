// SPDX-License-Identifier: Apache-2.0
// Points and directions of the synthetic scene.

#pragma once

namespace simulator {

/// Metres; x to the right, y down, z ahead of the left lens.
struct Vector3
{
    float x = 0.0F;
    float y = 0.0F;
    float z = 0.0F;
};

constexpr Vector3 operator+(Vector3 a, Vector3 b)
{
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}

constexpr Vector3 operator-(Vector3 a, Vector3 b)
{
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}

constexpr Vector3 operator*(float factor, Vector3 v)
{
    return {factor * v.x, factor * v.y, factor * v.z};
}

constexpr float dot(Vector3 a, Vector3 b)
{
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

} // namespace simulator
