// SPDX-License-Identifier: Apache-2.0
// Shows a pair of pictures.

#include "PictureView.h"

#include "PictureComposer.h"
#include "PicturePair.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyle>
#include <QWheelEvent>

#include <cmath>

namespace {

// The one place with colours of its own: grey values are judged against a neutral dark surrounding, in any skin.
const QColor surrounding(30, 30, 30);
const QColor veil(0, 0, 0, 150);
const QColor captionBack(0, 0, 0, 130);
const QColor captionText(235, 235, 235);

constexpr double zoomPerNotch = 1.25;
constexpr double wheelNotch = 120.0; // eighths of a degree
constexpr int arrowStep = 48;
constexpr int focusWidth = 2;

/// From here on pixels are shown as what they are: squares.
constexpr double scaleOfSquares = 3.0;

QString captionOf(CellContent content)
{
    switch (content) {
    case CellContent::Left:
        return PictureView::tr("Left");
    case CellContent::Right:
        return PictureView::tr("Right");
    case CellContent::Anaglyph:
        return PictureView::tr("Anaglyph");
    case CellContent::Difference:
        return PictureView::tr("Difference");
    }
    return QString();
}

/// A caption in a corner of `place`.
void paintCaption(QPainter& painter, const QRect& place, Qt::Alignment corner, const QString& text)
{
    const QFontMetrics metrics = painter.fontMetrics();
    const QSize size(metrics.horizontalAdvance(text) + 12, metrics.height() + 4);
    if (size.width() + 12 > place.width() || size.height() + 12 > place.height())
        return;
    const QRect box = QStyle::alignedRect(Qt::LeftToRight, corner, size, place.adjusted(6, 6, -6, -6));
    painter.setPen(Qt::NoPen);
    painter.setBrush(captionBack);
    painter.drawRoundedRect(box, 3.0, 3.0);
    painter.setPen(captionText);
    painter.drawText(box, Qt::AlignCenter, text);
}

} // namespace

PictureView::PictureView(QWidget* parent)
    : QWidget(parent)
{
    setAttribute(Qt::WA_OpaquePaintEvent);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName(tr("Pictures of the camera"));
}

void PictureView::showPair(const PicturePair* pair)
{
    _pair = pair;
    _isComposed.fill(false);
    setViewPoint(_viewPoint);
}

void PictureView::setArrangement(PictureArrangement arrangement)
{
    if (arrangement == _arrangement)
        return;
    _arrangement = arrangement;
    _isComposed.fill(false);
    setViewPoint(_viewPoint);
}

void PictureView::setMessage(const QString& message)
{
    if (message == _message)
        return;
    _message = message;
    setAccessibleDescription(message); // what is painted is not read out otherwise
    update();
}

QSize PictureView::sizeHint() const
{
    return {752, 480};
}

ViewScene PictureView::scene() const
{
    return {_arrangement, _pair == nullptr ? QSize() : _pair->Size(), size()};
}

void PictureView::setViewPoint(const ViewPoint& point)
{
    _viewPoint = bounded(scene(), point);
    updateCursor();
    update();
}

void PictureView::updateCursor()
{
    // Only when it is another one: this is looked at with every frame, and a cursor is the window system's matter.
    const bool isOurs = testAttribute(Qt::WA_SetCursor);
    if (_viewPoint.zoom <= 1.0) {
        if (isOurs)
            unsetCursor();
        return;
    }
    const Qt::CursorShape hand = _dragging ? Qt::ClosedHandCursor : Qt::OpenHandCursor;
    if (!isOurs || cursor().shape() != hand)
        setCursor(hand);
}

const QImage& PictureView::composed(std::size_t index, CellContent content)
{
    if (!_isComposed[index]) {
        composePicture(_composed[index], content, *_pair);
        _isComposed[index] = true;
    }
    return _composed[index];
}

void PictureView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), surrounding);
    paintCells(painter);
    if (!_message.isEmpty())
        paintMessage(painter);
    if (hasFocus() && window()->testAttribute(Qt::WA_KeyboardFocusChange)) // it came by key, not with a click
        paintFocus(painter);
}

void PictureView::paintCells(QPainter& painter)
{
    const ViewScene shown = scene();
    const std::vector<PictureCell> cells = cellsOf(shown, _viewPoint);
    // How large a camera's pixel is in pixels of the screen, which may be smaller than ours.
    const double screenScale = scaleOf(shown, _viewPoint) * devicePixelRatioF();

    painter.setRenderHint(QPainter::SmoothPixmapTransform, screenScale < scaleOfSquares);
    for (std::size_t i = 0; i < cells.size(); ++i)
        painter.drawImage(QRectF(cells[i].target), composed(i, cells[i].content), cells[i].source);

    painter.setRenderHint(QPainter::Antialiasing);
    for (const PictureCell& cell : cells)
        paintCaption(painter, cell.target, Qt::AlignLeft | Qt::AlignTop, captionOf(cell.content));
    if (!cells.empty() && _viewPoint.zoom > 1.0) {
        const QString percent = QStringLiteral("%1 %").arg(std::lround(screenScale * 100.0));
        paintCaption(painter, cells.back().target, Qt::AlignRight | Qt::AlignBottom, percent);
    }
    if (!_message.isEmpty())
        for (const PictureCell& cell : cells)
            painter.fillRect(cell.target, veil);
}

void PictureView::paintMessage(QPainter& painter)
{
    QFont large = font();
    large.setPointSizeF(large.pointSizeF() * 1.25);
    painter.setFont(large);
    const QRect room = rect().adjusted(24, 24, -24, -24);
    const QRect text = painter.fontMetrics().boundingRect(room, Qt::AlignCenter | Qt::TextWordWrap, _message);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(captionBack);
    painter.drawRoundedRect(text.adjusted(-16, -10, 16, 10), 6.0, 6.0);
    painter.setPen(captionText);
    painter.drawText(room, Qt::AlignCenter | Qt::TextWordWrap, _message);
}

void PictureView::paintFocus(QPainter& painter)
{
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setPen(QPen(palette().color(QPalette::Highlight), focusWidth, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    painter.setBrush(Qt::NoBrush);
    const int half = focusWidth / 2;
    painter.drawRect(rect().adjusted(half, half, -half, -half));
}

void PictureView::resizeEvent(QResizeEvent*)
{
    setViewPoint(_viewPoint);
}

void PictureView::wheelEvent(QWheelEvent* event)
{
    const double factor = std::pow(zoomPerNotch, event->angleDelta().y() / wheelNotch);
    setViewPoint(zoomedAbout(scene(), _viewPoint, event->position(), factor));
    event->accept();
}

void PictureView::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton) {
        QWidget::mousePressEvent(event);
        return;
    }
    _dragging = true;
    _dragPoint = event->pos();
    setViewPoint(_viewPoint);
}

void PictureView::mouseMoveEvent(QMouseEvent* event)
{
    if (!_dragging)
        return;
    const QPoint distance = event->pos() - _dragPoint;
    _dragPoint = event->pos();
    moveBy(distance);
}

void PictureView::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return;
    _dragging = false;
    setViewPoint(_viewPoint);
}

void PictureView::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        setViewPoint(ViewPoint());
}

void PictureView::keyPressEvent(QKeyEvent* event)
{
    const bool plain = (event->modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier)) == Qt::NoModifier;
    switch (plain ? event->key() : 0) {
    case Qt::Key_Plus:
        zoomBy(zoomPerNotch);
        break;
    case Qt::Key_Minus:
        zoomBy(1.0 / zoomPerNotch);
        break;
    case Qt::Key_0:
        setViewPoint(ViewPoint());
        break;
    case Qt::Key_Left:
        moveBy({arrowStep, 0});
        break;
    case Qt::Key_Right:
        moveBy({-arrowStep, 0});
        break;
    case Qt::Key_Up:
        moveBy({0, arrowStep});
        break;
    case Qt::Key_Down:
        moveBy({0, -arrowStep});
        break;
    default:
        QWidget::keyPressEvent(event);
    }
}

void PictureView::zoomBy(double factor)
{
    if (scaleOf(scene(), _viewPoint) <= 0.0)
        return; // nothing to zoom, and the first picture is to be seen whole
    ViewPoint zoomed = _viewPoint;
    zoomed.zoom *= factor;
    setViewPoint(zoomed);
}

void PictureView::moveBy(QPoint distance)
{
    setViewPoint(movedBy(scene(), _viewPoint, distance));
}
