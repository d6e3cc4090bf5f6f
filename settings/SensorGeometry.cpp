// SPDX-License-Identifier: Apache-2.0
// The arithmetic behind the picture of the sensor.

#include "SensorGeometry.h"

#include "ResolutionTable.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>

namespace {

constexpr int grabDistance = 8; // widget pixels

int factor(int exponentBits)
{
    if ((exponentBits & 2) != 0)
        return 4;
    return (exponentBits & 1) != 0 ? 2 : 1;
}

float scale(int exponentBits)
{
    return ((exponentBits & 1) != 0 ? 0.5F : 1.0F) * ((exponentBits & 2) != 0 ? 0.25F : 1.0F);
}

int horizontalBits(int binning)
{
    return binning & 3;
}

int verticalBits(int binning)
{
    return (binning >> 2) & 3;
}

int shifted(int extent, int exponent)
{
    // cppcheck-suppress redundantAssignment ; it takes the condition for a variable
    const std::int64_t wide =
        exponent >= 0 ? std::int64_t{extent} * (std::int64_t{1} << exponent) : std::int64_t{extent} >> -exponent;
    return static_cast<int>(
        std::clamp<std::int64_t>(wide, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
}

int within(int position, int extent)
{
    return std::max(0, std::min(position, extent - 1));
}

// How far the dragged edge has moved away from the centre.
int outward(int press, int cursor, int extent)
{
    const int offset = cursor - press;
    return 2 * press < extent ? -offset : offset;
}

} // namespace

BinningFactors binningFactors(int binning)
{
    return {factor(horizontalBits(binning)), factor(verticalBits(binning))};
}

int truncated(float value)
{
    if (std::isnan(value))
        return 0;
    constexpr float limit = 16777216.0F;
    return static_cast<int>(std::clamp(value, -limit, limit));
}

QSize sensorSize(const ResolutionTable& table)
{
    const QSize sensor(752, 480);
    const auto largest = table.largest(0);
    if (largest && std::int64_t{largest->width} * largest->height > std::int64_t{sensor.width()} * sensor.height())
        return {largest->width, largest->height};
    return sensor;
}

QRect captureWindow(QSize widget, QSize sensor, const VYRResolutionInfo& mode)
{
    const BinningFactors factors = binningFactors(mode.binning);
    const float binnedWidth = static_cast<float>(sensor.width()) / static_cast<float>(factors.horizontal);
    const float binnedHeight = static_cast<float>(sensor.height()) / static_cast<float>(factors.vertical);
    const float shareOfWidth = static_cast<float>(mode.width) / binnedWidth;
    const float shareOfHeight = static_cast<float>(mode.height) / binnedHeight;
    const auto width = static_cast<float>(widget.width());
    const auto height = static_cast<float>(widget.height());
    return {truncated(width * 0.5F * (1.0F - shareOfWidth)), truncated(height * 0.5F * (1.0F - shareOfHeight)),
            truncated(shareOfWidth * width), truncated(shareOfHeight * height)};
}

QVector<QRect> bandsOutside(QSize widget, QRect window)
{
    const int below = window.bottom() + 1;
    const int rightOf = window.right() + 1;
    const QRect area(QPoint(0, 0), widget);
    QVector<QRect> bands;
    for (const QRect& band :
         {QRect(0, 0, widget.width(), window.top()), QRect(0, below, widget.width(), widget.height() - below),
          QRect(0, window.top(), window.left(), window.height()),
          QRect(rightOf, window.top(), widget.width() - rightOf, window.height())})
        if (band.isValid())
            bands.append(band & area);
    return bands;
}

QVector<int> cellStarts(float cellSize, int extent)
{
    QVector<int> starts;
    if (!(cellSize >= 1.0F))
        return starts;
    for (float start = 0.0F; truncated(start) < extent; start += cellSize)
        starts.append(truncated(start));
    return starts;
}

int cellColour(int column, int row)
{
    return column % 2 + row % 2;
}

DragMode dragModeAt(QPoint cursor, QRect window)
{
    const int dx = std::min(std::abs(cursor.x() - window.left()), std::abs(cursor.x() - window.right()));
    const int dy = std::min(std::abs(cursor.y() - window.top()), std::abs(cursor.y() - window.bottom()));
    if (dx < grabDistance && dy < grabDistance)
        return DragMode::Both;
    if (dx < dy)
        return dx < grabDistance ? DragMode::Width : DragMode::None;
    return dy < grabDistance ? DragMode::Height : DragMode::None;
}

QRect draggedWindow(QRect start, DragMode mode, QPoint press, QPoint cursor, QSize widget)
{
    QRect window = start;
    if (mode == DragMode::Width || mode == DragMode::Both) {
        const int offset = outward(press.x(), cursor.x(), widget.width());
        window.setLeft(within(window.left() - offset, widget.width()));
        window.setRight(within(window.right() + offset, widget.width()));
    }
    if (mode == DragMode::Height || mode == DragMode::Both) {
        const int offset = outward(press.y(), cursor.y(), widget.height());
        window.setTop(within(window.top() - offset, widget.height()));
        window.setBottom(within(window.bottom() + offset, widget.height()));
    }
    return window;
}

QSize sensorPixels(QRect window, QSize widget, QSize sensor, int binning)
{
    const float shareOfWidth = static_cast<float>(window.width()) / static_cast<float>(widget.width());
    const float shareOfHeight = static_cast<float>(window.height()) / static_cast<float>(widget.height());
    return {truncated(shareOfWidth * static_cast<float>(sensor.width()) * scale(horizontalBits(binning))),
            truncated(shareOfHeight * static_cast<float>(sensor.height()) * scale(verticalBits(binning)))};
}

QSize rebinned(QSize size, int from, int to)
{
    return {shifted(size.width(), horizontalBits(from) - horizontalBits(to)),
            shifted(size.height(), verticalBits(from) - verticalBits(to))};
}
