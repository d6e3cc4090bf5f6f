// SPDX-License-Identifier: Apache-2.0
// The arithmetic of placing, zooming and moving pictures.

#pragma once

#include "PictureArrangement.h"

#include <QPointF>
#include <QRectF>
#include <QSize>

#include <vector>

/// What is placed where. In view pixels and picture pixels.
struct ViewScene
{
    PictureArrangement arrangement = PictureArrangement::SideBySide;
    QSize picture; ///< size of one picture
    QSize view;    ///< size of the whole view
};

/// How closely one looks, and where. The same for both pictures of a pair, so that corresponding details stay side by
/// side.
struct ViewPoint
{
    double zoom = 1.0;        ///< 1 shows the whole picture
    QPointF centre{0.5, 0.5}; ///< in the middle of a cell, as a share of the picture's width and height
};

/// A place of the view and the part of the picture that it shows.
struct PictureCell
{
    CellContent content;
    QRect target;  ///< view pixels
    QRectF source; ///< picture pixels
};

/// View pixels per picture pixel, after bounded(); 0 when there is nothing to show or no room.
double scaleOf(const ViewScene& scene, const ViewPoint& point);

/// The cells, adjacent and together in the middle of the view. Empty when there is nothing to show or no room.
std::vector<PictureCell> cellsOf(const ViewScene& scene, const ViewPoint& point);

/// `point` with its zoom brought between the whole picture and 32 view pixels a picture pixel, and its centre to where
/// no cell looks beyond the picture.
ViewPoint bounded(const ViewScene& scene, const ViewPoint& point);

/// Zooms by `factor` so that what is under the cursor stays there.
ViewPoint zoomedAbout(const ViewScene& scene, const ViewPoint& point, QPointF cursor, double factor);

/// Moves the pictures by view pixels, as when dragged.
ViewPoint movedBy(const ViewScene& scene, const ViewPoint& point, QPointF distance);
