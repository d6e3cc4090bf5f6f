// SPDX-License-Identifier: Apache-2.0
// Draws the histograms of a pair.

#pragma once

#include "GreyHistogram.h"

#include <QWidget>

class QPainterPath;

/// The left picture's histogram as an area, the right one's as a line, from black on the left to white on the right.
/// Thread: GUI thread.
class HistogramView : public QWidget
{
    Q_OBJECT

public:
    explicit HistogramView(QWidget* parent = nullptr);

    void showHistograms(const GreyHistogram& left, const GreyHistogram& right);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QPainterPath outlineOf(const GreyHistogram& histogram, std::uint32_t fullHeight) const;

    GreyHistogram _left;
    GreyHistogram _right;
};
