// SPDX-License-Identifier: Apache-2.0
// The camera that looks at the synthetic scene.

#include "SyntheticSource.h"

#include "SensorGeometry.h"
#include "scene/ScenePainter.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <thread>
#include <vector>

namespace simulator {

namespace {

constexpr std::size_t noiseSize = 1U << 15U;
constexpr int noiseLimit = 4; // so little that adding it to any grey value of the scene cannot overflow

std::uint32_t nextRandom(std::uint32_t& state)
{
    state ^= state << 13U;
    state ^= state >> 17U;
    state ^= state << 5U;
    return state;
}

/// A grey value of the empty room: the mean of two lines of sight, which smooths far floor and ceiling.
std::uint8_t roomGrey(const Room& room, int eye, int x, int y)
{
    float sum = 0.0F;
    for (const float part : {-0.25F, 0.25F})
        sum += Scene::grey(room.meet(Scene::sight(eye, static_cast<float>(x) + part, static_cast<float>(y) + part)));
    return static_cast<std::uint8_t>(0.5F * sum + 0.5F); // NOLINT(bugprone-incorrect-roundings): never negative
}

std::vector<std::uint8_t> stillPicture(const Scene& scene, int eye)
{
    std::vector<std::uint8_t> picture;
    picture.reserve(sensorArea);
    for (int y = 0; y < sensorHeight; ++y)
        for (int x = 0; x < sensorWidth; ++x)
            picture.push_back(roomGrey(scene.room(), eye, x, y));
    ScenePainter painter(picture.data(), eye, 0, sensorHeight);
    for (const Box& box : scene.stillBoxes())
        painter.paint(box);
    return picture;
}

void paintShadows(ScenePainter& painter, const MovingThings& things, const Room& room)
{
    for (const Box& box : things.boxes) {
        const float height = room.floor - box.centre.y - box.half.y;
        painter.paintShadow({box.centre.x, room.floor, box.centre.z}, 1.75F * box.half.x + 0.1F * height,
                            0.62F / (1.0F + 1.5F * height));
    }
    for (const Ball& ball : things.balls) {
        const float height = room.floor - ball.centre.y - ball.radius;
        painter.paintShadow({ball.centre.x, room.floor, ball.centre.z}, (1.1F + 0.2F * height) * ball.radius,
                            0.62F / (1.0F + 1.5F * height));
    }
}

/// Draws boxes and balls from the furthest to the nearest.
void paintThings(ScenePainter& painter, const MovingThings& things)
{
    std::array<const Box*, 2> boxes = {&things.boxes.front(), &things.boxes.back()};
    std::array<const Ball*, 2> balls = {&things.balls.front(), &things.balls.back()};
    const auto further = [](const auto* a, const auto* b) { return a->centre.z > b->centre.z; };
    std::sort(boxes.begin(), boxes.end(), further);
    std::sort(balls.begin(), balls.end(), further);
    auto box = boxes.begin();
    auto ball = balls.begin();
    while (box != boxes.end() || ball != balls.end())
        if (ball == balls.end() || (box != boxes.end() && (*box)->centre.z > (*ball)->centre.z))
            painter.paint(**box++);
        else
            painter.paint(**ball++);
}

} // namespace

/// Everything that it takes to make pictures.
struct SyntheticSource::View
{
    View();

    void addNoise(std::uint8_t* row);

    Scene scene;
    std::array<std::vector<std::uint8_t>, 2> still;
    std::array<std::vector<std::uint8_t>, 2> pictures;
    std::vector<std::uint8_t> noise;
    std::uint32_t random = 362436069U;
};

SyntheticSource::View::View()
    : pictures{std::vector<std::uint8_t>(sensorArea), std::vector<std::uint8_t>(sensorArea)}
{
    std::thread rightEye([this] { still[1] = stillPicture(scene, 1); });
    still[0] = stillPicture(scene, 0);
    rightEye.join();

    noise.reserve(noiseSize + sensorWidth);
    for (std::size_t i = 0; i < noiseSize + sensorWidth; ++i) {
        // The sum of four dice is close to the bell curve that a sensor's noise has.
        int sum = -6;
        for (unsigned die = 0; die < 4; ++die)
            sum += static_cast<int>((nextRandom(random) >> 10U) & 3U);
        noise.push_back(static_cast<std::uint8_t>(std::clamp(sum, -noiseLimit, noiseLimit)));
    }
}

SyntheticSource::SyntheticSource() = default;
SyntheticSource::~SyntheticSource() = default;

std::string SyntheticSource::deviceName() const
{
    return "VYR Simulator";
}

bool SyntheticSource::undistorts() const
{
    return false;
}

const Scene& SyntheticSource::scene() const
{
    return _view->scene;
}

void SyntheticSource::prepare()
{
    if (_view == nullptr)
        _view = std::make_unique<View>();
}

bool SyntheticSource::next(const PictureRequest& request, StereoPicture& picture)
{
    prepare();
    View& view = *_view;
    const MovingThings things = view.scene.movingThings(request.seconds);
    const auto begin = static_cast<std::size_t>(request.firstRow) * sensorWidth;
    const auto length = static_cast<std::size_t>(request.rowCount) * sensorWidth;
    const int endRow = request.firstRow + request.rowCount;
    for (int eye = 0; eye < 2; ++eye) {
        std::uint8_t* const pixels = view.pictures[static_cast<std::size_t>(eye)].data();
        std::memcpy(pixels + begin, view.still[static_cast<std::size_t>(eye)].data() + begin, length);
        ScenePainter painter(pixels, eye, request.firstRow, endRow);
        paintShadows(painter, things, view.scene.room());
        paintThings(painter, things);
        for (int y = request.firstRow; y < endRow; ++y)
            view.addNoise(pixels + static_cast<std::ptrdiff_t>(y) * sensorWidth);
    }
    picture = {view.pictures[0].data(), view.pictures[1].data()};
    return true;
}

void SyntheticSource::View::addNoise(std::uint8_t* row)
{
    const std::uint8_t* const grains = noise.data() + (nextRandom(random) >> 5U) % noiseSize;
    for (int x = 0; x < sensorWidth; ++x)
        row[x] = static_cast<std::uint8_t>(row[x] + grains[x]);
}

} // namespace simulator
