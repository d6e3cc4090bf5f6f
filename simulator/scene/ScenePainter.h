// SPDX-License-Identifier: Apache-2.0
// Draws what moves in the scene into the picture of one eye, fast enough for every frame.

#pragma once

#include "../SensorGeometry.h"
#include "SceneShapes.h"

#include <array>
#include <cstdint>

namespace simulator {

/// Draws shapes over a picture, in the given order: from the furthest to the nearest.
///
/// Shows the same as following each pixel's line of sight does, but works along rows and columns, where most of that
/// arithmetic is the same from pixel to pixel. Allocates nothing.
/// Thread: one thread at a time.
class ScenePainter
{
public:
    /// Draws to rows `firstRow` up to `endRow` (not included) of a sensor's picture. The eye is 0 or 1.
    ScenePainter(std::uint8_t* picture, int eye, int firstRow, int endRow);

    void paint(const Box& box);
    void paint(const Ball& ball);

    /// Darkens the floor around `place`, softly to the edge, by at most `strength` (0 to 1).
    void paintShadow(Vector3 place, float radius, float strength);

private:
    struct UprightFace;

    void paintUprightFace(const Box& box, const UprightFace& face);
    void paintLevelFace(const Box& box, float side);
    int rowFrom(float y) const;
    std::uint8_t* row(int y);

    std::uint8_t* _picture;
    Vector3 _eye;
    int _firstRow;
    int _endRow;
    std::array<int, sensorWidth> _columnTexel = {}; ///< of the current face or ball, by column
    std::array<int, sensorWidth> _columnStep = {};
};

} // namespace simulator
