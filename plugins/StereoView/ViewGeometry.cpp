// SPDX-License-Identifier: Apache-2.0
// The arithmetic of placing, zooming and moving pictures.

#include "ViewGeometry.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr int gap = 2; // view pixels between two pictures
constexpr double largestScale = 32.0;

bool isBeside(const ViewScene& scene)
{
    return scene.arrangement == PictureArrangement::SideBySide;
}

bool isAbove(const ViewScene& scene)
{
    return scene.arrangement == PictureArrangement::OneAboveOther;
}

/// The most that a cell can have of the view.
QSize roomOf(const ViewScene& scene)
{
    const int width = isBeside(scene) ? (scene.view.width() - gap) / 2 : scene.view.width();
    const int height = isAbove(scene) ? (scene.view.height() - gap) / 2 : scene.view.height();
    return {width, height};
}

double fittingScale(const ViewScene& scene)
{
    const QSize room = roomOf(scene);
    if (room.isEmpty() || scene.picture.isEmpty())
        return 0.0;
    return std::min(room.width() / static_cast<double>(scene.picture.width()),
                    room.height() / static_cast<double>(scene.picture.height()));
}

QSize cellSizeOf(const ViewScene& scene, double scale)
{
    const QSize room = roomOf(scene);
    const int width = static_cast<int>(std::lround(scene.picture.width() * scale));
    const int height = static_cast<int>(std::lround(scene.picture.height() * scale));
    return {std::clamp(width, 1, room.width()), std::clamp(height, 1, room.height())};
}

/// The share of a picture's side that a cell of so many view pixels shows; the side is `scaled` view pixels long. All
/// of it when nothing but rounding to whole pixels is missing.
double seenShare(int cell, double scaled)
{
    return scaled - cell < 1.0 ? 1.0 : cell / scaled;
}

QSizeF seenShares(const ViewScene& scene, double scale)
{
    const QSize cell = cellSizeOf(scene, scale);
    return {seenShare(cell.width(), scene.picture.width() * scale),
            seenShare(cell.height(), scene.picture.height() * scale)};
}

double boundedCentre(double centre, double share)
{
    return std::clamp(centre, share / 2.0, 1.0 - share / 2.0);
}

/// The cell under the cursor, or the one that is nearest.
std::size_t cellNear(const std::vector<PictureCell>& cells, QPointF cursor)
{
    const auto distance = [cursor](const PictureCell& cell) {
        const QPointF away = cursor - QRectF(cell.target).center();
        return std::hypot(away.x(), away.y());
    };
    const auto nearest = std::min_element(cells.begin(), cells.end(),
                                          [&](const auto& a, const auto& b) { return distance(a) < distance(b); });
    return static_cast<std::size_t>(nearest - cells.begin());
}

} // namespace

double scaleOf(const ViewScene& scene, const ViewPoint& point)
{
    return fittingScale(scene) * bounded(scene, point).zoom;
}

std::vector<PictureCell> cellsOf(const ViewScene& scene, const ViewPoint& wantedPoint)
{
    const ViewPoint point = bounded(scene, wantedPoint);
    const double scale = scaleOf(scene, point);
    if (scale <= 0.0)
        return {};

    const QSize size = cellSizeOf(scene, scale);
    const QPoint step(isBeside(scene) ? size.width() + gap : 0, isAbove(scene) ? size.height() + gap : 0);
    const QSize block = size + QSize(step.x(), step.y());
    const QPoint corner((scene.view.width() - block.width()) / 2, (scene.view.height() - block.height()) / 2);

    const QSizeF seen = seenShares(scene, scale);
    QRectF source(0.0, 0.0, seen.width() * scene.picture.width(), seen.height() * scene.picture.height());
    source.moveCenter({point.centre.x() * scene.picture.width(), point.centre.y() * scene.picture.height()});

    std::vector<PictureCell> cells;
    for (const CellContent content : contentsOf(scene.arrangement)) {
        const QPoint place = corner + step * static_cast<int>(cells.size());
        cells.push_back({content, QRect(place, size), source});
    }
    return cells;
}

ViewPoint bounded(const ViewScene& scene, const ViewPoint& point)
{
    const double fitting = fittingScale(scene);
    if (fitting <= 0.0)
        return point;
    ViewPoint result;
    result.zoom = std::clamp(point.zoom, 1.0, std::max(1.0, largestScale / fitting));
    const QSizeF seen = seenShares(scene, fitting * result.zoom);
    result.centre.setX(boundedCentre(point.centre.x(), seen.width()));
    result.centre.setY(boundedCentre(point.centre.y(), seen.height()));
    return result;
}

ViewPoint zoomedAbout(const ViewScene& scene, const ViewPoint& point, QPointF cursor, double factor)
{
    const std::vector<PictureCell> before = cellsOf(scene, point);
    if (before.empty())
        return point;
    const std::size_t index = cellNear(before, cursor);
    const QPointF fromMiddle = cursor - QRectF(before[index].target).center();
    const QPointF underCursor = before[index].source.center() + fromMiddle / scaleOf(scene, point);

    // The cells may grow with the zoom, so where the cursor is in its cell is looked up again.
    ViewPoint zoomed = point;
    zoomed.zoom *= factor;
    zoomed = bounded(scene, zoomed);
    const std::vector<PictureCell> after = cellsOf(scene, zoomed);
    const QPointF middle = underCursor - (cursor - QRectF(after[index].target).center()) / scaleOf(scene, zoomed);
    zoomed.centre = {middle.x() / scene.picture.width(), middle.y() / scene.picture.height()};
    return bounded(scene, zoomed);
}

ViewPoint movedBy(const ViewScene& scene, const ViewPoint& point, QPointF distance)
{
    const double scale = scaleOf(scene, point);
    if (scale <= 0.0)
        return point;
    ViewPoint moved = point;
    moved.centre -=
        QPointF(distance.x() / scale / scene.picture.width(), distance.y() / scale / scene.picture.height());
    return bounded(scene, moved);
}
