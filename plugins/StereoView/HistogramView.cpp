// SPDX-License-Identifier: Apache-2.0
// Draws the histograms of a pair.

#include "HistogramView.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>

HistogramView::HistogramView(QWidget* parent)
    : QWidget(parent)
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setAccessibleName(tr("Histogram"));
    setToolTip(tr("Grey values from black to white: left picture as an area, right picture as a line"));
}

void HistogramView::showHistograms(const GreyHistogram& left, const GreyHistogram& right)
{
    _left = left;
    _right = right;
    update();
}

QSize HistogramView::sizeHint() const
{
    return {200, 64};
}

void HistogramView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Base));
    painter.setRenderHint(QPainter::Antialiasing);

    const std::uint32_t fullHeight = std::max(_left.fullHeight(), _right.fullHeight());
    QColor area = palette().color(QPalette::Text);
    area.setAlpha(90);
    QPainterPath leftArea = outlineOf(_left, fullHeight);
    leftArea.lineTo(width(), height());
    leftArea.lineTo(0.0, height());
    painter.fillPath(leftArea, area);
    painter.setPen(QPen(palette().color(QPalette::Link), 1.2));
    painter.drawPath(outlineOf(_right, fullHeight));
}

QPainterPath HistogramView::outlineOf(const GreyHistogram& histogram, std::uint32_t fullHeight) const
{
    const double step = width() / static_cast<double>(histogram.counts.size() - 1);
    const double room = height() - 2.0;
    QPainterPath path;
    for (std::size_t grey = 0; grey < histogram.counts.size(); ++grey) {
        const double share = std::min(1.0, histogram.counts[grey] / static_cast<double>(fullHeight));
        const QPointF point(static_cast<double>(grey) * step, height() - 0.5 - share * room);
        if (grey == 0)
            path.moveTo(point);
        else
            path.lineTo(point);
    }
    return path;
}
