// SPDX-License-Identifier: Apache-2.0
// The app's icon.

#include "StereoViewIcon.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QPixmap>

namespace {

constexpr double drawingSize = 72.0;

/// A picture of two hills and a sun, in a frame with round corners.
void paintPicture(QPainter& painter, const QRectF& place, const QColor& sky, const QColor& hill, double parallax)
{
    QPainterPath frame;
    frame.addRoundedRect(place, 5.0, 5.0);
    painter.save();
    painter.setClipPath(frame);

    QLinearGradient light(place.topLeft(), place.bottomLeft());
    light.setColorAt(0.0, sky);
    light.setColorAt(1.0, sky.darker(150));
    painter.fillRect(place, light);

    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(255, 255, 255, 220));
    painter.drawEllipse(QPointF(place.left() + 12.0 + parallax, place.top() + 11.0), 4.5, 4.5);

    const double ground = place.bottom() + 1.0;
    QPainterPath hills(QPointF(place.left() - 2.0, ground));
    hills.lineTo(place.left() + 13.0 + parallax, place.top() + 21.0);
    hills.lineTo(place.left() + 22.0 + parallax, place.top() + 31.0);
    hills.lineTo(place.left() + 30.0 + parallax * 2.0, place.top() + 15.0);
    hills.lineTo(place.right() + 8.0, ground);
    hills.closeSubpath();
    painter.setBrush(hill);
    painter.drawPath(hills);
    painter.restore();

    painter.setPen(QPen(QColor(255, 255, 255, 235), 2.0));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(place, 5.0, 5.0);
}

QPixmap drawn(int size)
{
    QPixmap pixmap(size, size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(size / drawingSize, size / drawingSize);

    QLinearGradient back(0.0, 0.0, 0.0, drawingSize);
    back.setColorAt(0.0, QColor(68, 76, 88));
    back.setColorAt(1.0, QColor(36, 41, 49));
    painter.setPen(Qt::NoPen);
    painter.setBrush(back);
    painter.drawRoundedRect(QRectF(1.0, 1.0, 70.0, 70.0), 13.0, 13.0);

    paintPicture(painter, QRectF(9.0, 10.0, 42.0, 36.0), QColor(214, 92, 84), QColor(96, 26, 30), 2.0);
    paintPicture(painter, QRectF(21.0, 25.0, 42.0, 36.0), QColor(72, 178, 196), QColor(16, 64, 80), -1.0);
    return pixmap;
}

} // namespace

QIcon stereoViewIcon()
{
    QIcon icon;
    for (const int size : {24, 48, 72, 144})
        icon.addPixmap(drawn(size));
    return icon;
}
