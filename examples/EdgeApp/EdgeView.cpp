// SPDX-License-Identifier: Apache-2.0
// Shows the edges.

#include "EdgeView.h"

#include <QPainter>
#include <QStyle>

EdgeView::EdgeView(const EdgePicture& picture)
    : _picture(picture)
{
    setAccessibleName(QStringLiteral("Edges of the left picture"));
}

void EdgeView::setMessage(const QString& message)
{
    _message = message;
    setAccessibleDescription(message); // what is painted is not read out otherwise
    update();
}

void EdgeView::setDarkOnLight(bool darkOnLight)
{
    _darkOnLight = darkOnLight;
    update();
}

void EdgeView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), Qt::black);
    if (_picture.pixels.empty()) {
        painter.setPen(Qt::white);
        painter.drawText(rect(), Qt::AlignCenter | Qt::TextWordWrap, _message);
        return;
    }
    paintPicture(painter);
}

void EdgeView::paintPicture(QPainter& painter) const
{
    // The image has no pixels of its own.
    const QImage image(_picture.pixels.data(), _picture.width, _picture.height, _picture.bytesPerRow,
                       QImage::Format_Grayscale8);
    const QSize size = image.size().scaled(this->size(), Qt::KeepAspectRatio);
    const QRect place = QStyle::alignedRect(Qt::LeftToRight, Qt::AlignCenter, size, rect());
    painter.drawImage(place, image);
    if (_darkOnLight) {
        painter.setCompositionMode(QPainter::CompositionMode_Difference); // from white: each pixel is inverted
        painter.fillRect(place, Qt::white);
    }
}
