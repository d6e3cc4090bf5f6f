// SPDX-License-Identifier: Apache-2.0
// The picture of the sensor with the capture window on it.

#pragma once

#include "ResolutionMetaType.h"
#include "SensorGeometry.h"

#include <QColor>
#include <QPixmap>
#include <QPoint>
#include <QRect>
#include <QSize>
#include <QWidget>

#include <array>

class ResolutionTable;

/// Draws the camera sensor as a mosaic of pixel cells, darkens what the current capture mode does not read,
/// and lets the user drag the edges of the window that it does read. Here a new mode is committed: whenever
/// the picture settles on another mode of the table it emits CameraResolutionChanged().
///
/// With the focus, which Tab gives it, Right and Left go to the next wider and narrower mode of the same height, Up
/// and Down to the next higher and lower one of the same width.
///
/// Every committed mode stands in the table, or was handed to commitResolution(). A drag or a new binning for
/// which the table has no mode leaves the current mode as it is.
///
/// Ownership: borrows the table.
/// Thread: GUI thread.
class ResolutionVisualization : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(VYRResolutionInfo cameraResolution READ cameraResolution WRITE setCameraResolution)
    Q_PROPERTY(int sensorBinning READ sensorBinning WRITE setSensorBinning)
    Q_PROPERTY(QSize sensorResolution READ sensorResolution WRITE setSensorResolution)
    Q_PROPERTY(float sensorPixelSize READ sensorPixelSize WRITE setSensorPixelSize)
    Q_PROPERTY(bool sensorGrayscale READ sensorGrayscale WRITE setSensorGrayscale)

public:
    /// Starts with `resolution` as the current mode and its binning as the chosen one. `table` must outlive
    /// the picture.
    ResolutionVisualization(const ResolutionTable& table, const VYRResolutionInfo& resolution,
                            QWidget* parent = nullptr);

    /// Ends a drag that is still under way.
    ~ResolutionVisualization() override;

    /// The current mode.
    VYRResolutionInfo cameraResolution() const;

    /// Shows `resolution` as the current mode; nothing is emitted.
    void setCameraResolution(const VYRResolutionInfo& resolution);

    /// The chosen binning code; it decides the size of the mosaic's cells.
    int sensorBinning() const;

    /// Chooses a binning and commits the mode of that binning that is nearest to the area covered now, if it
    /// is another one. With no mode of that binning the current mode stays.
    void setSensorBinning(int binning);

    /// The full size of the sensor in pixels; 752 × 480 at first.
    QSize sensorResolution() const;
    void setSensorResolution(QSize resolution);

    /// The size of a cell at binning 1x1 in widget pixels; 1 at first. Below 1 no cells are drawn.
    float sensorPixelSize() const;
    void setSensorPixelSize(float size);

    /// Whether the cells are grey instead of red, green and blue; false at first.
    bool sensorGrayscale() const;
    void setSensorGrayscale(bool grayscale);

    /// Makes `resolution` the current mode and emits CameraResolutionChanged() once.
    void commitResolution(const VYRResolutionInfo& resolution);

    /// A picture in the proportions of the sensor.
    QSize sizeHint() const override;

signals:
    /// Another mode was committed. A drag sends each mode twice in a row; the repetition is harmless.
    void CameraResolutionChanged(VYRResolutionInfo newResolution);

protected:
    void hideEvent(QHideEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    QRect currentWindow() const;
    void buildMosaic();
    void dropMosaic();
    void beginDrag(QPoint cursor);
    void dragTo(QPoint cursor);
    void commitDragged(QRect window);
    void commitNext(int direction, bool byHeight);
    void endDrag();

    const ResolutionTable& _table;
    VYRResolutionInfo _cameraResolution;
    int _sensorBinning;
    QSize _sensorResolution{752, 480};
    float _sensorPixelSize = 1.0F;
    bool _sensorGrayscale = false;
    std::array<QColor, 3> _cellColours;

    QPixmap _mosaic;         // null when it is to be built anew
    int _mosaicBinning = -1; // the binning that the mosaic was built for

    DragMode _dragMode = DragMode::None;
    QPoint _pressPoint;
    QRect _startWindow; // when the drag began
    QRect _dragWindow;  // as dragged last
};
