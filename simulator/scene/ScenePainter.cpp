// SPDX-License-Identifier: Apache-2.0
// Draws what moves in the scene into the picture of one eye, fast enough for every frame.

#include "ScenePainter.h"

#include "../CameraModel.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace simulator {

namespace {

constexpr float fixedOne = 65536.0F;
constexpr float darkest = 8.0F; // a shadow leaves room for noise below

float projectX(Vector3 point)
{
    return centreX + focalLength * point.x / point.z;
}

float projectY(float y, float z)
{
    return centreY + focalLength * y / z;
}

/// Rows and columns whose middle lies at `from` or beyond, kept inside the sensor.
int firstFrom(float from, int lowest, int highest)
{
    return std::clamp(static_cast<int>(std::ceil(from)), lowest, highest);
}

/// Where a convex outline on a level plane is cut by a depth: from where to where sideways. Empty when left > right.
struct Cut
{
    float left = 1e9F;
    float right = -1e9F;
};

Cut cutAt(const std::array<Vector3, 4>& outline, float depth)
{
    Cut cut;
    for (std::size_t i = 0; i < outline.size(); ++i) {
        const Vector3 from = outline[i];
        const Vector3 to = outline[(i + 1) % outline.size()];
        if ((from.z <= depth) != (to.z <= depth)) {
            const float x = from.x + (to.x - from.x) * (depth - from.z) / (to.z - from.z);
            cut.left = std::min(cut.left, x);
            cut.right = std::max(cut.right, x);
        }
    }
    return cut;
}

} // namespace

/// One of the four upright sides of a box, by its edges: where its texture starts and where it ends.
struct ScenePainter::UprightFace
{
    Vector3 from; ///< in the box's own directions, from its centre
    Vector3 to;
    Vector3 normal;
    float width;
};

ScenePainter::ScenePainter(std::uint8_t* picture, int eye, int firstRow, int endRow)
    : _picture(picture)
    , _eye{static_cast<float>(eye) * baseline, 0.0F, 0.0F}
    , _firstRow(firstRow)
    , _endRow(endRow)
{
}

void ScenePainter::paint(const Box& box)
{
    const Vector3 eye = box.turn.into(_eye - box.centre);
    const Vector3 half = box.half;
    for (const float side : {-1.0F, 1.0F}) {
        if (side * eye.x > half.x) {
            paintUprightFace(box, {{side * half.x, 0.0F, -side * half.z},
                                   {side * half.x, 0.0F, side * half.z},
                                   {side, 0.0F, 0.0F},
                                   2.0F * half.z});
        }
        if (side * eye.z > half.z) {
            paintUprightFace(box, {{side * half.x, 0.0F, side * half.z},
                                   {-side * half.x, 0.0F, side * half.z},
                                   {0.0F, 0.0F, side},
                                   2.0F * half.x});
        }
        if (side * eye.y > half.y)
            paintLevelFace(box, side);
    }
}

/// Every column of an upright face has one depth: along it the texture runs in equal steps.
void ScenePainter::paintUprightFace(const Box& box, const UprightFace& face)
{
    const Vector3 centre = box.centre - _eye;
    const Vector3 from = centre + box.turn.outOf(face.from);
    const Vector3 to = centre + box.turn.outOf(face.to);
    const Vector3 normal = box.turn.outOf(face.normal);
    const Vector3 middle = 0.5F * (from + to);
    const int level =
        Texture::nearestLevel(texelsPerPixel(box.texelsPerMetre, middle.z, (1.0F / middle.z) * middle, normal));
    const float texelsPerMetre = box.texelsPerMetre / static_cast<float>(1 << level);
    const int textureSide = Texture::sizeOf(level);
    const int textureMask = textureSide - 1;

    const int left = firstFrom(std::min(projectX(from), projectX(to)), 0, sensorWidth);
    const int right = firstFrom(std::max(projectX(from), projectX(to)), 0, sensorWidth);
    const Vector3 along = to - from;
    for (int x = left; x < right; ++x) {
        const float slope = (static_cast<float>(x) - centreX) / focalLength;
        const float share = (slope * from.z - from.x) / (along.x - slope * along.z);
        const float depth = from.z + share * along.z;
        const auto column = static_cast<std::size_t>(x);
        _columnTexel[column] = static_cast<int>(share * face.width * texelsPerMetre) & textureMask;
        _columnStep[column] = static_cast<int>(depth / focalLength * texelsPerMetre * 0.5F * fixedOne);
    }

    const float nearest = std::min(from.z, to.z);
    const float furthest = std::max(from.z, to.z);
    const float top = centre.y - box.half.y;
    const float bottom = centre.y + box.half.y;
    const int firstRow = rowFrom(projectY(top, top < 0.0F ? nearest : furthest));
    const int endRow = rowFrom(projectY(bottom, bottom < 0.0F ? furthest : nearest));
    const int start = static_cast<int>(top * texelsPerMetre * fixedOne);
    const auto end = static_cast<unsigned>(2.0F * box.half.y * texelsPerMetre * fixedOne);
    const auto shade = static_cast<int>(256.0F * shadeOf(normal));
    const std::uint8_t* const texels = box.texture->level(level);
    for (int y = firstRow; y < endRow; ++y) {
        const int twiceFromAxis = 2 * y - static_cast<int>(2.0F * centreY);
        std::uint8_t* const out = row(y);
        for (int x = left; x < right; ++x) {
            const auto column = static_cast<std::size_t>(x);
            const auto v = static_cast<unsigned>(twiceFromAxis * _columnStep[column] - start);
            if (v < end) {
                const int texelRow = static_cast<int>(v >> 16U) & textureMask;
                const int texel = texels[texelRow * textureSide + _columnTexel[column]];
                out[x] = static_cast<std::uint8_t>((texel * shade) >> 8);
            }
        }
    }
}

/// Every row of a level face has one depth: along it the texture runs in equal steps.
void ScenePainter::paintLevelFace(const Box& box, float side)
{
    const Vector3 centre = box.centre - _eye;
    const Vector3 half = box.half;
    const float height = centre.y + side * half.y;
    const std::array<Vector3, 4> outline = {
        centre + box.turn.outOf({-half.x, 0.0F, -half.z}), centre + box.turn.outOf({half.x, 0.0F, -half.z}),
        centre + box.turn.outOf({half.x, 0.0F, half.z}), centre + box.turn.outOf({-half.x, 0.0F, half.z})};
    // cppcheck-suppress duplicateAssignExpression ; both begin there
    float nearest = outline[0].z;
    float furthest = outline[0].z;
    for (const Vector3& corner : outline) {
        nearest = std::min(nearest, corner.z);
        furthest = std::max(furthest, corner.z);
    }
    const Vector3 normal = {0.0F, side, 0.0F};
    const Vector3 direction = {centre.x / centre.z, height / centre.z, 1.0F};
    const int level = Texture::nearestLevel(texelsPerPixel(box.texelsPerMetre, centre.z, direction, normal));
    const float texelsPerMetre = box.texelsPerMetre / static_cast<float>(1 << level);
    const int textureSide = Texture::sizeOf(level);
    const int textureMask = textureSide - 1;
    const auto shade = static_cast<int>(256.0F * shadeOf(normal));
    const std::uint8_t* const texels = box.texture->level(level);

    const int firstRow = rowFrom(projectY(height, height < 0.0F ? nearest : furthest));
    const int endRow = rowFrom(projectY(height, height < 0.0F ? furthest : nearest));
    for (int y = firstRow; y < endRow; ++y) {
        const float depth = focalLength * height / (static_cast<float>(y) - centreY);
        const Cut cut = cutAt(outline, depth);
        const int left = firstFrom(projectX({cut.left, 0.0F, depth}), 0, sensorWidth);
        const int right = firstFrom(projectX({cut.right, 0.0F, depth}), 0, sensorWidth);
        const float perPixel = depth / focalLength;
        const Vector3 first = {(static_cast<float>(left) - centreX) * perPixel - centre.x, 0.0F, depth - centre.z};
        const Vector3 start = texelsPerMetre * (box.turn.into(first) + half);
        const Vector3 step = texelsPerMetre * box.turn.into({perPixel, 0.0F, 0.0F});
        auto u = static_cast<int>(start.x * fixedOne);
        auto v = static_cast<int>(start.z * fixedOne);
        const auto uStep = static_cast<int>(step.x * fixedOne);
        const auto vStep = static_cast<int>(step.z * fixedOne);
        std::uint8_t* const out = row(y);
        for (int x = left; x < right; ++x) {
            const int texel = texels[((v >> 16) & textureMask) * textureSide + ((u >> 16) & textureMask)];
            out[x] = static_cast<std::uint8_t>((texel * shade) >> 8);
            u += uStep;
            v += vStep;
        }
    }
}

/// Along a row all arithmetic of a ball is a few operations a pixel, done for four pixels at once by the compiler; only
/// then are texels fetched, one by one.
void ScenePainter::paint(const Ball& ball)
{
    const Vector3 centre = ball.centre - _eye;
    const float outside = dot(centre, centre) - ball.radius * ball.radius;
    const int level =
        Texture::nearestLevel(0.35F * static_cast<float>(Texture::size) / ball.radius * centre.z / focalLength);
    const int textureSide = Texture::sizeOf(level);
    const float halfTexture = 0.5F * static_cast<float>(textureSide - 1);
    const std::uint8_t* const texels = ball.texture->level(level);
    const float perRadius = 1.0F / ball.radius;
    const float sine = ball.turn.sine;
    const float cosine = ball.turn.cosine;

    // The highest and the lowest plane of sight that touch the ball.
    const float square = centre.z * centre.z - ball.radius * ball.radius;
    const float reach = ball.radius * std::sqrt(centre.y * centre.y + square);
    const int firstRow = rowFrom(centreY + focalLength * (centre.y * centre.z - reach) / square);
    const int endRow = rowFrom(centreY + focalLength * (centre.y * centre.z + reach) / square);
    for (int y = firstRow; y < endRow; ++y) {
        const float b = (static_cast<float>(y) - centreY) / focalLength;
        const float ahead = b * centre.y + centre.z;
        const float bend = centre.x * centre.x - outside;
        const float rest = ahead * ahead - (b * b + 1.0F) * outside;
        const float discriminant = centre.x * centre.x * ahead * ahead - bend * rest;
        if (discriminant <= 0.0F)
            continue;
        const float root = std::sqrt(discriminant);
        const int left = firstFrom(centreX + focalLength * (-centre.x * ahead + root) / bend, 0, sensorWidth);
        const int right = firstFrom(centreX + focalLength * (-centre.x * ahead - root) / bend, 0, sensorWidth);
        int* const index = _columnTexel.data();
        int* const shade = _columnStep.data();
        for (int x = left; x < right; ++x) {
            const float a = (static_cast<float>(x) - centreX) / focalLength;
            const float length = a * a + b * b + 1.0F;
            const float along = a * centre.x + ahead;
            const float depth = (along - std::sqrt(std::max(along * along - length * outside, 0.0F))) / length;
            const float nx = (depth * a - centre.x) * perRadius;
            const float ny = (depth * b - centre.y) * perRadius;
            const float nz = (depth - centre.z) * perRadius;
            const float turnedX = nx * cosine - nz * sine;
            const float turnedZ = nx * sine + nz * cosine;
            const float scale = halfTexture / std::sqrt(1.0F + std::abs(turnedZ));
            const auto u = static_cast<int>(halfTexture + turnedX * scale);
            const auto v = static_cast<int>(halfTexture + ny * scale);
            index[x] = v * textureSide + u;
            shade[x] = static_cast<int>(256.0F * shadeOf({nx, ny, nz}));
        }
        std::uint8_t* const out = row(y);
        for (int x = left; x < right; ++x)
            out[x] = static_cast<std::uint8_t>((texels[index[x]] * shade[x]) >> 8);
    }
}

void ScenePainter::paintShadow(Vector3 place, float radius, float strength)
{
    const Vector3 centre = place - _eye;
    const int firstRow = rowFrom(projectY(centre.y, centre.z + radius));
    const int endRow = rowFrom(projectY(centre.y, centre.z - radius));
    for (int y = firstRow; y < endRow; ++y) {
        const float depth = focalLength * centre.y / (static_cast<float>(y) - centreY);
        const float ahead = (depth - centre.z) / radius;
        const float inside = 1.0F - ahead * ahead;
        if (inside <= 0.0F)
            continue;
        const float halfWidth = radius * std::sqrt(inside);
        const int left = firstFrom(projectX({centre.x - halfWidth, 0.0F, depth}), 0, sensorWidth);
        const int right = firstFrom(projectX({centre.x + halfWidth, 0.0F, depth}), 0, sensorWidth);
        const float perPixel = depth / (focalLength * radius);
        const float middle = projectX({centre.x, 0.0F, depth});
        std::uint8_t* const out = row(y);
        for (int x = left; x < right; ++x) {
            const float aside = (static_cast<float>(x) - middle) * perPixel;
            const float cover = std::max(inside - aside * aside, 0.0F);
            const float light = 1.0F - strength * cover * (2.0F - cover);
            out[x] = static_cast<std::uint8_t>(std::max(static_cast<float>(out[x]) * light, darkest));
        }
    }
}

int ScenePainter::rowFrom(float y) const
{
    return firstFrom(y, _firstRow, _endRow);
}

std::uint8_t* ScenePainter::row(int y)
{
    return _picture + static_cast<std::ptrdiff_t>(y) * sensorWidth;
}

} // namespace simulator
