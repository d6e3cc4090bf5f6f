// SPDX-License-Identifier: Apache-2.0
// A field of the status bar.

#include "CStatus.h"

#include <QThread>

CStatus::CStatus(std::int32_t displayTime, QWidget* parent)
    : QLabel(parent)
    , _displayTime(displayTime)
    , _clearTimer(this)
{
    if (_displayTime != 0) {
        connect(&_clearTimer, &QTimer::timeout, this, &CStatus::clearExpired);
        _clearTimer.start(_displayTime / 4);
    }
}

void CStatus::setStatusText(QString text)
{
    if (QThread::currentThread() != thread()) {
        QMetaObject::invokeMethod(
            this, [this, text] { setStatusText(text); }, Qt::QueuedConnection);
        return;
    }
    setText(text);
    if (_displayTime != 0)
        _expiry = QTime::currentTime().addMSecs(_displayTime);
}

void CStatus::setStatusTextColored(QString text, QColor color)
{
    // Both in one pass: a text that holds a place marker of its own is shown as it is.
    setStatusText(QStringLiteral("<font color=%2>%1</font>").arg(text, color.name()));
}

void CStatus::setStatusVisible(bool visible)
{
    parentWidget()->setVisible(visible);
}

void CStatus::clearExpired()
{
    if (!text().isEmpty() && isExpired(QTime::currentTime(), _expiry))
        setText(QString());
}
