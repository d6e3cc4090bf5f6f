// SPDX-License-Identifier: Apache-2.0
// The arithmetic behind the picture of the sensor: capture window, mosaic, drag and binning change.

#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>
#include <QVector>

class ResolutionTable;
struct VYRResolutionInfo;

// Thread: any thread, all of these.

/// How many sensor pixels are read as one, in each direction: 1, 2 or 4.
struct BinningFactors
{
    int horizontal;
    int vertical;
};

/// What the user changes by dragging an edge or a corner of the capture window.
enum class DragMode { None, Width, Height, Both };

BinningFactors binningFactors(int binning);

/// `value` without its fraction. What is beyond ±16777216, more than any sensor or screen has, counts as
/// that, and what is no number as 0, so that positions can be added and subtracted without a second thought.
int truncated(float value);

/// The size of the sensor in pixels: 752 × 480, or the largest unbinned mode when that is larger.
QSize sensorSize(const ResolutionTable& table);

/// The part of the sensor that `mode` reads, centred, in pixels of a widget of size `widget` that shows the
/// whole sensor of `sensor` pixels.
QRect captureWindow(QSize widget, QSize sensor, const VYRResolutionInfo& mode);

/// The areas of a widget outside `window`: above and below it over the full width, left and right of it.
/// Those without any pixels are left out.
QVector<QRect> bandsOutside(QSize widget, QRect window);

/// Where the cells of the mosaic begin along one side of `extent` widget pixels. None for cells of less than
/// a pixel.
QVector<int> cellStarts(float cellSize, int extent);

/// Which of the three cell colours, 0 to 2, a cell of the mosaic has.
int cellColour(int column, int row);

/// What a press at `cursor` drags: an edge, or two that meet, less than 8 pixels away.
DragMode dragModeAt(QPoint cursor, QRect window);

/// The window that was `start` when the drag began at `press`, with the cursor now at `cursor`. It grows as
/// the cursor moves away from the centre of the widget, on both sides alike, up to the edges of the widget.
/// Dragged past the centre it is empty.
QRect draggedWindow(QRect start, DragMode mode, QPoint press, QPoint cursor, QSize widget);

/// The size of a dragged window in sensor pixels of a binning.
QSize sensorPixels(QRect window, QSize widget, QSize sensor, int binning);

/// The size at binning `to` that covers the area of the sensor that `size` covers at binning `from`.
QSize rebinned(QSize size, int from, int to);
