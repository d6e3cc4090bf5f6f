// SPDX-License-Identifier: Apache-2.0
// Tests of the synthetic scene: what is drawn agrees with the geometry, and stereo matching works on it.

#include <simulator/CameraModel.h>
#include <simulator/SensorGeometry.h>
#include <simulator/SyntheticSource.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

using namespace simulator;

namespace {

constexpr int patch = 5; // pixels from the middle of a patch to its edge
const double times[] = {0.0, 3.7, 12.4, 100.9};

class SceneTest : public testing::Test
{
protected:
    void SetUp() override { _source.prepare(); }

    void look(double seconds)
    {
        StereoPicture picture;
        ASSERT_TRUE(_source.next({seconds, 0, sensorHeight, false}, picture));
        _left.assign(picture.left, picture.left + sensorArea);
        _right.assign(picture.right, picture.right + sensorArea);
    }

    /// The mean square difference of a patch of the left picture and one of the right picture.
    double difference(int leftX, int rightX, int leftY, int rightY) const
    {
        double sum = 0.0;
        for (int dy = -patch; dy <= patch; ++dy) {
            for (int dx = -patch; dx <= patch; ++dx) {
                const int a = _left[static_cast<std::size_t>((leftY + dy) * sensorWidth + leftX + dx)];
                const int b = _right[static_cast<std::size_t>((rightY + dy) * sensorWidth + rightX + dx)];
                sum += (a - b) * (a - b);
            }
        }
        return sum;
    }

    /// Whether a patch lies on one surface, without a step in depth, and both eyes see it.
    bool isMatchable(double seconds, int x, int y, float disparity) const
    {
        for (const int dx : {-patch - 1, 0, patch + 1}) {
            for (const int dy : {-patch - 1, 0, patch + 1}) {
                const auto px = static_cast<float>(x + dx);
                const auto py = static_cast<float>(y + dy);
                const float here = _source.scene().trueDisparity(seconds, px, py);
                if (std::abs(here - disparity) > 0.7F)
                    return false;
                const float rightDepth = _source.scene().meet(Scene::sight(1, px - here, py), seconds).depth;
                if (std::abs(focalLength * baseline / rightDepth - here) > 0.3F)
                    return false;
            }
        }
        return true;
    }

    SyntheticSource _source;
    std::vector<std::uint8_t> _left;
    std::vector<std::uint8_t> _right;
};

/// Where a parabola through three neighbouring costs has its lowest point, from the middle one.
double lowestPoint(double before, double here, double after)
{
    const double bend = before - 2.0 * here + after;
    return bend > 0.0 ? 0.5 * (before - after) / bend : 0.0;
}

} // namespace

TEST_F(SceneTest, TrueDisparityAgreesWithThePictures)
{
    for (const double seconds : times) {
        look(seconds);
        int matchable = 0;
        int right = 0;
        for (int y = 12; y < sensorHeight - 12; y += 9) {
            for (int x = 80; x < sensorWidth - 12; x += 9) {
                const float truth =
                    _source.scene().trueDisparity(seconds, static_cast<float>(x), static_cast<float>(y));
                if (!isMatchable(seconds, x, y, truth))
                    continue;
                ++matchable;
                int best = 0;
                for (int d = 1; d <= 64; ++d) // the whole range: nothing is known beforehand
                    best = difference(x, x - d, y, y) < difference(x, x - best, y, y) ? d : best;
                const double fine = best
                                  + lowestPoint(difference(x, x - best + 1, y, y), difference(x, x - best, y, y),
                                                difference(x, x - best - 1, y, y));
                right += std::abs(fine - static_cast<double>(truth)) < 0.75 ? 1 : 0;
            }
        }
        EXPECT_GT(matchable, 2000) << seconds;
        EXPECT_GT(right, matchable * 97 / 100) << seconds << ": of " << matchable;
    }
}

TEST_F(SceneTest, RowsMatchWithinHalfAPixel)
{
    for (const double seconds : times) {
        look(seconds);
        std::vector<double> offsets;
        for (int y = 12; y < sensorHeight - 12; y += 11) {
            for (int x = 80; x < sensorWidth - 12; x += 11) {
                const float truth =
                    _source.scene().trueDisparity(seconds, static_cast<float>(x), static_cast<float>(y));
                if (!isMatchable(seconds, x, y, truth))
                    continue;
                const int rightX = x - static_cast<int>(std::lround(truth));
                offsets.push_back(lowestPoint(difference(x, rightX, y, y - 1), difference(x, rightX, y, y),
                                              difference(x, rightX, y, y + 1)));
            }
        }
        ASSERT_GT(offsets.size(), 1000U);
        const auto off =
            std::count_if(offsets.begin(), offsets.end(), [](double offset) { return std::abs(offset) > 0.5; });
        EXPECT_LT(off, static_cast<std::ptrdiff_t>(offsets.size() / 50)) << seconds;
    }
}

TEST_F(SceneTest, WhatIsDrawnIsWhatTheLinesOfSightMeet)
{
    for (const double seconds : times) {
        look(seconds);
        double sum = 0.0;
        int wrong = 0;
        int checked = 0;
        for (int eye = 0; eye < 2; ++eye) {
            const std::vector<std::uint8_t>& picture = eye == 0 ? _left : _right;
            for (int y = 0; y < sensorHeight; y += 2) {
                for (int x = 0; x < sensorWidth; x += 2) {
                    const SurfacePoint point =
                        _source.scene().meet(Scene::sight(eye, static_cast<float>(x), static_cast<float>(y)), seconds);
                    // Shadows are drawn only; they fall on the floor.
                    if (point.texture == _source.scene().room().floorTexture)
                        continue;
                    const int drawn = picture[static_cast<std::size_t>(y * sensorWidth + x)];
                    const double difference = std::abs(static_cast<double>(Scene::grey(point)) - drawn);
                    sum += difference;
                    wrong += difference > 50.0 ? 1 : 0;
                    ++checked;
                }
            }
        }
        EXPECT_LT(sum / checked, 5.0) << seconds;
        EXPECT_LT(wrong, checked / 200) << seconds;
    }
}

TEST_F(SceneTest, ThingsMoveAndStandAtSeveralDepths)
{
    const Scene& scene = _source.scene();
    std::vector<int> seen(64);
    for (int y = 0; y < sensorHeight; y += 4) {
        for (int x = 0; x < sensorWidth; x += 4) {
            const auto disparity =
                static_cast<std::size_t>(scene.trueDisparity(0.0, static_cast<float>(x), static_cast<float>(y)));
            ASSERT_LT(disparity, seen.size());
            ++seen[disparity];
        }
    }
    EXPECT_GT(std::count_if(seen.begin(), seen.end(), [](int count) { return count > 20; }), 15);
    EXPECT_EQ(seen[0], 0) << "nothing is infinitely far";

    const MovingThings before = scene.movingThings(0.0);
    const MovingThings after = scene.movingThings(1.0);
    for (std::size_t i = 0; i < 2; ++i) {
        const Vector3 box = after.boxes[i].centre - before.boxes[i].centre;
        const Vector3 ball = after.balls[i].centre - before.balls[i].centre;
        EXPECT_GT(dot(box, box), 1e-4F);
        EXPECT_GT(dot(ball, ball), 1e-4F);
    }
}

TEST_F(SceneTest, MovingThingsStayApart)
{
    for (double seconds = 0.0; seconds < 2000.0; seconds += 0.21) {
        const MovingThings things = _source.scene().movingThings(seconds);
        std::vector<std::pair<Vector3, float>> spheres;
        for (const Box& box : things.boxes)
            spheres.emplace_back(box.centre, 1.42F * box.half.x);
        for (const Ball& ball : things.balls)
            spheres.emplace_back(ball.centre, ball.radius);
        for (std::size_t i = 0; i < spheres.size(); ++i) {
            for (std::size_t j = 0; j < i; ++j) {
                const Vector3 gap = spheres[i].first - spheres[j].first;
                ASSERT_GT(std::sqrt(dot(gap, gap)), spheres[i].second + spheres[j].second) << seconds << ": " << i << j;
            }
        }
    }
}

TEST_F(SceneTest, ThereIsTextureEverywhere)
{
    look(0.0);
    for (int y = 0; y < sensorHeight; y += 16) {
        for (int x = 0; x < sensorWidth; x += 16) {
            double sum = 0.0;
            double squares = 0.0;
            for (int dy = 0; dy < 16; ++dy) {
                for (int dx = 0; dx < 16; ++dx) {
                    const double pixel = _left[static_cast<std::size_t>((y + dy) * sensorWidth + x + dx)];
                    sum += pixel;
                    squares += pixel * pixel;
                }
            }
            const double deviation = std::sqrt(squares / 256.0 - sum * sum / 65536.0);
            EXPECT_GT(deviation, 4.5) << "twice the noise, at " << x << ", " << y;
        }
    }
}

TEST_F(SceneTest, ThePictureIsWellExposed)
{
    look(0.0);
    double sum = 0.0;
    for (const std::uint8_t pixel : _left)
        sum += pixel;
    EXPECT_NEAR(sum / sensorArea, 120.0, 30.0);
    EXPECT_GT(*std::min_element(_left.begin(), _left.end()), 0);
    EXPECT_LT(*std::max_element(_left.begin(), _left.end()), 255);
}

TEST_F(SceneTest, NoiseIsSubtleAndNeverTheSame)
{
    look(5.0);
    const std::vector<std::uint8_t> first = _left;
    look(5.0);
    double sum = 0.0;
    int largest = 0;
    for (std::size_t i = 0; i < first.size(); ++i) {
        const int difference = std::abs(first[i] - _left[i]);
        sum += difference;
        largest = std::max(largest, difference);
    }
    EXPECT_GT(sum / sensorArea, 0.5);
    EXPECT_LT(sum / sensorArea, 4.0);
    EXPECT_LE(largest, 8) << "noise never wraps round";
}

TEST_F(SceneTest, OnlyTheRowsAskedForAreNeeded)
{
    look(7.0);
    const std::vector<std::uint8_t> whole = _left;
    SyntheticSource other;
    StereoPicture picture;
    ASSERT_TRUE(other.next({7.0, 200, 80, false}, picture));
    for (int i = 200 * sensorWidth; i < 280 * sensorWidth; ++i)
        ASSERT_NEAR(picture.left[i], whole[static_cast<std::size_t>(i)], 8) << "but for the noise";
}
