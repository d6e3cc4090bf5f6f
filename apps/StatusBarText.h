// SPDX-License-Identifier: Apache-2.0
// A status field, as apps see it.

#pragma once

#include <QColor>
#include <QString>

/// A field of the host's status bar. Called by slot: the order of the operations is fixed, and there is no virtual
/// destructor.
/// Thread: setStatusText() and setStatusTextColored() on any thread (shown at once on the GUI thread, otherwise as
/// soon as it comes to it); setStatusVisible() on the GUI thread.
class StatusBarText
{
public:
    /// Shows `text`; the empty text clears. A field with a display time clears itself after it.
    virtual void setStatusText(QString text) = 0;

    /// Shows `text` in a colour, as rich text.
    virtual void setStatusTextColored(QString text, QColor color) = 0;

    /// Shows or hides the whole status bar.
    virtual void setStatusVisible(bool visible) = 0;

protected:
    ~StatusBarText() = default;
};
