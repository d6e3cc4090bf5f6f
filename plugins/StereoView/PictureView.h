// SPDX-License-Identifier: Apache-2.0
// Shows a pair of pictures.

#pragma once

#include "ViewGeometry.h"

#include <QImage>
#include <QWidget>

#include <array>

class PicturePair;

/// Shows the pictures of a pair in an arrangement. The wheel zooms about the cursor, dragging moves, a double-click
/// shows everything again; both pictures of a pair move together. With the focus, + and - zoom about the middle, the
/// arrow keys move and 0 shows everything again; all other keys are left to the window.
///
/// Ownership: borrows the pair that it shows.
/// Thread: GUI thread.
class PictureView : public QWidget
{
    Q_OBJECT

public:
    explicit PictureView(QWidget* parent = nullptr);

    /// Shows `pair` from now on, and again when it is called again with new contents. The pair must stay until it is
    /// replaced.
    void showPair(const PicturePair* pair);

    void setArrangement(PictureArrangement arrangement);

    /// Puts a message over the pictures and dims them; the empty text takes it away.
    void setMessage(const QString& message);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    ViewScene scene() const;
    void setViewPoint(const ViewPoint& point);
    void updateCursor();
    void paintCells(QPainter& painter);
    void paintMessage(QPainter& painter);
    void paintFocus(QPainter& painter);
    void zoomBy(double factor);
    void moveBy(QPoint distance);
    const QImage& composed(std::size_t index, CellContent content);

    const PicturePair* _pair = nullptr;
    PictureArrangement _arrangement = PictureArrangement::SideBySide;
    ViewPoint _viewPoint;
    QString _message;
    QPoint _dragPoint;
    bool _dragging = false;
    std::array<QImage, 2> _composed;
    std::array<bool, 2> _isComposed{}; ///< of the present pair and arrangement
};
