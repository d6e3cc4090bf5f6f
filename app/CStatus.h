// SPDX-License-Identifier: Apache-2.0
// A field of the status bar.

#pragma once

#include <apps/StatusBarText.h>

#include <QLabel>
#include <QTime>
#include <QTimer>

#include <cstdint>

/// A text in the status bar that stays until it is replaced, or clears itself after its display time.
///
/// Ownership: owned by the status bar it is made for.
/// Thread: lives on the GUI thread. setStatusText() and setStatusTextColored() may be called on any thread: on
/// the GUI thread the text is there at once, from another thread it is there as soon as the GUI thread comes to it,
/// texts of one thread in their order. The rest is called on the GUI thread.
class CStatus : public QLabel, public StatusBarText
{
    Q_OBJECT

public:
    /// A field whose texts stay for `displayTime` milliseconds, or for ever when that is 0. A text is cleared at the
    /// first of the checks after its time, which come every quarter of the display time.
    CStatus(std::int32_t displayTime, QWidget* parent);

    /// Shows a text; the empty text clears the field.
    void setStatusText(QString text) override;

    /// Shows a text in a colour, as rich text.
    void setStatusTextColored(QString text, QColor color) override;

    /// Shows or hides the whole status bar that holds this field.
    void setStatusVisible(bool visible) override;

    /// Whether a text is to be cleared, as times of day.
    ///
    /// Deliberately without a date: an expiry past midnight is small and counts as reached, so a text set in the last
    /// moments of a day is cleared by the first check. That costs one text a day and spares every field a calendar.
    static bool isExpired(QTime now, QTime expiry) { return now >= expiry; }

private:
    void clearExpired();

    std::int32_t _displayTime; ///< milliseconds; 0 is for ever
    QTime _expiry;             ///< when the current text is to be cleared
    QTimer _clearTimer;
};
