// SPDX-License-Identifier: Apache-2.0
// Drawing the sensor, and dragging the capture window on it.

#include "ResolutionVisualization.h"

#include "ResolutionTable.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPen>

#include <cmath>

namespace {

std::array<QColor, 3> cellColours(bool grayscale)
{
    if (grayscale)
        return {QColor(96, 96, 96), QColor(64, 64, 64), QColor(32, 32, 32)};
    return {QColor(255, 0, 0), QColor(0, 255, 0), QColor(0, 0, 255)};
}

QColor withAlpha(QColor colour, double alpha)
{
    colour.setAlphaF(alpha);
    return colour;
}

bool sameSize(const VYRResolutionInfo& a, const VYRResolutionInfo& b)
{
    return a.width == b.width && a.height == b.height;
}

Qt::CursorShape cursorFor(DragMode mode, QPoint press, QSize widget)
{
    if (mode == DragMode::Width)
        return Qt::SizeHorCursor;
    if (mode == DragMode::Height)
        return Qt::SizeVerCursor;
    const bool left = 2 * press.x() < widget.width();
    const bool top = 2 * press.y() < widget.height();
    return left == top ? Qt::SizeFDiagCursor : Qt::SizeBDiagCursor;
}

} // namespace

ResolutionVisualization::ResolutionVisualization(const ResolutionTable& table, const VYRResolutionInfo& resolution,
                                                 QWidget* parent)
    : QWidget(parent)
    , _table(table)
    , _cameraResolution(resolution)
    , _sensorBinning(resolution.binning)
    , _cellColours(cellColours(_sensorGrayscale))
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setFocusPolicy(Qt::TabFocus); // not by click: a drag leaves alone what is being typed elsewhere
    setAccessibleName(tr("Capture window on the sensor"));
    setToolTip(tr("Drag the edges of the capture window,\n"
                  "or use the arrow keys: sideways for its width, up and down for its height"));
}

ResolutionVisualization::~ResolutionVisualization()
{
    endDrag();
}

VYRResolutionInfo ResolutionVisualization::cameraResolution() const
{
    return _cameraResolution;
}

void ResolutionVisualization::setCameraResolution(const VYRResolutionInfo& resolution)
{
    _cameraResolution = resolution;
    update();
}

int ResolutionVisualization::sensorBinning() const
{
    return _sensorBinning;
}

void ResolutionVisualization::setSensorBinning(int binning)
{
    if (binning == _sensorBinning)
        return;
    _sensorBinning = binning;
    dropMosaic();
    const QSize size =
        rebinned({_cameraResolution.width, _cameraResolution.height}, _cameraResolution.binning, binning);
    const auto found = _table.nearest(size.width(), size.height(), binning);
    if (found && (found->binning != _cameraResolution.binning || !sameSize(*found, _cameraResolution)))
        commitResolution(*found);
}

QSize ResolutionVisualization::sensorResolution() const
{
    return _sensorResolution;
}

void ResolutionVisualization::setSensorResolution(QSize resolution)
{
    if (resolution != _sensorResolution) {
        _sensorResolution = resolution;
        updateGeometry();
        update();
    }
}

float ResolutionVisualization::sensorPixelSize() const
{
    return _sensorPixelSize;
}

void ResolutionVisualization::setSensorPixelSize(float size)
{
    if (std::isless(size, _sensorPixelSize) || std::isgreater(size, _sensorPixelSize)) {
        _sensorPixelSize = size;
        dropMosaic();
    }
}

bool ResolutionVisualization::sensorGrayscale() const
{
    return _sensorGrayscale;
}

void ResolutionVisualization::setSensorGrayscale(bool grayscale)
{
    _sensorGrayscale = grayscale;
    _cellColours = cellColours(grayscale);
    dropMosaic();
}

void ResolutionVisualization::commitResolution(const VYRResolutionInfo& resolution)
{
    _cameraResolution = resolution;
    update();
    emit CameraResolutionChanged(resolution);
}

QSize ResolutionVisualization::sizeHint() const
{
    return _sensorResolution.scaled(480, 480, Qt::KeepAspectRatio);
}

void ResolutionVisualization::hideEvent(QHideEvent* event)
{
    // A dialog that is closed in the middle of a drag sends no release.
    endDrag();
    QWidget::hideEvent(event);
}

void ResolutionVisualization::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Left:
        commitNext(-1, false);
        break;
    case Qt::Key_Right:
        commitNext(1, false);
        break;
    case Qt::Key_Down:
        commitNext(-1, true);
        break;
    case Qt::Key_Up:
        commitNext(1, true);
        break;
    default:
        QWidget::keyPressEvent(event);
    }
}

void ResolutionVisualization::mouseMoveEvent(QMouseEvent* event)
{
    if (_dragMode != DragMode::None)
        dragTo(event->pos());
}

void ResolutionVisualization::mousePressEvent(QMouseEvent* event)
{
    // One button only: a second one pressed in the middle of a drag must not begin another.
    if (event->button() == Qt::LeftButton)
        beginDrag(event->pos());
}

void ResolutionVisualization::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        endDrag();
}

void ResolutionVisualization::paintEvent(QPaintEvent*)
{
    if (_mosaic.isNull() || _mosaic.devicePixelRatioF() < devicePixelRatioF()
        || _mosaic.devicePixelRatioF() > devicePixelRatioF())
        buildMosaic();
    QPainter painter(this);
    painter.drawPixmap(0, 0, _mosaic);

    const QRect window = currentWindow();
    const QVector<QRect> bands = bandsOutside(size(), window);
    for (const QRect& band : bands)
        painter.fillRect(band, withAlpha(Qt::black, 0.82));
    painter.setPen(withAlpha(Qt::white, 0.5));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
    painter.setPen(QPen(QBrush(Qt::white, Qt::SolidPattern), 2, Qt::DotLine, Qt::SquareCap, Qt::RoundJoin));
    painter.drawRect(window);
    if (hasFocus() && this->window()->testAttribute(Qt::WA_KeyboardFocusChange)) { // it came by key
        painter.setPen(QPen(palette().color(QPalette::Highlight), 2, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
        painter.drawRect(rect().adjusted(1, 1, -1, -1));
    }
}

void ResolutionVisualization::resizeEvent(QResizeEvent* event)
{
    dropMosaic();
    QWidget::resizeEvent(event);
}

QRect ResolutionVisualization::currentWindow() const
{
    return captureWindow(size(), _sensorResolution, _cameraResolution);
}

void ResolutionVisualization::buildMosaic()
{
    const BinningFactors factors = binningFactors(_sensorBinning);
    const float cellWidth = _sensorPixelSize * static_cast<float>(factors.horizontal);
    const float cellHeight = _sensorPixelSize * static_cast<float>(factors.vertical);
    const QSize cell(truncated(cellWidth), truncated(cellHeight));
    const QVector<int> columns = cellStarts(cellWidth, width());
    const QVector<int> rows = cellStarts(cellHeight, height());

    _mosaic = QPixmap(size() * devicePixelRatioF());
    _mosaic.setDevicePixelRatio(devicePixelRatioF());
    _mosaic.fill(Qt::black);
    _mosaicBinning = _sensorBinning;
    QPainter painter(&_mosaic);
    for (int row = 0; row < rows.size(); ++row) {
        for (int column = 0; column < columns.size(); ++column) {
            const QColor& colour = _cellColours[static_cast<std::size_t>(cellColour(column, row))];
            painter.fillRect(QRect(QPoint(columns.at(column), rows.at(row)), cell), colour);
        }
    }
}

void ResolutionVisualization::dropMosaic()
{
    _mosaic = QPixmap();
    update();
}

void ResolutionVisualization::beginDrag(QPoint cursor)
{
    endDrag();
    _pressPoint = cursor;
    _startWindow = currentWindow();
    _dragWindow = _startWindow;
    _dragMode = dragModeAt(cursor, _startWindow);
    if (_dragMode != DragMode::None)
        QGuiApplication::setOverrideCursor(cursorFor(_dragMode, cursor, size()));
}

void ResolutionVisualization::dragTo(QPoint cursor)
{
    const QRect window = draggedWindow(_startWindow, _dragMode, _pressPoint, cursor, size());
    if (window == _dragWindow)
        return;
    _dragWindow = window;
    commitDragged(window);
}

void ResolutionVisualization::commitDragged(QRect window)
{
    const QSize wanted = sensorPixels(window, size(), _sensorResolution, _cameraResolution.binning);
    const auto found = _table.nearest(wanted.width(), wanted.height(), _cameraResolution.binning);
    if (!found)
        return;
    if (sameSize(*found, _cameraResolution)) {
        update();
        return;
    }
    if (found->binning != _mosaicBinning)
        dropMosaic();
    // Sent twice, deliberately: receivers are written for a drag that repeats itself.
    commitResolution(*found);
    commitResolution(*found);
}

// Goes on to the next larger (1) or smaller (-1) mode; with none there, or in the middle of a drag, nowhere.
void ResolutionVisualization::commitNext(int direction, bool byHeight)
{
    if (_dragMode != DragMode::None)
        return;
    const auto size = static_cast<float>(byHeight ? _cameraResolution.height : _cameraResolution.width);
    if (const auto found = _table.nextInRow(_cameraResolution, truncated(size) + direction, byHeight))
        commitResolution(*found);
}

void ResolutionVisualization::endDrag()
{
    if (_dragMode != DragMode::None) {
        _dragMode = DragMode::None;
        QGuiApplication::restoreOverrideCursor();
    }
}
