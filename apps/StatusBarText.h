// SPDX-License-Identifier: Apache-2.0
// A status field, as apps see it.

#pragma once

#include <QColor>
#include <QString>

/// A field of the host's status bar. Called by slot: the order of the operations is fixed, and there is no virtual
/// destructor.
///
/// Ownership: belongs to the host.
/// Thread: setStatusText() and setStatusTextColored() on any thread (shown at once on the GUI thread, otherwise as
/// soon as it comes to it); setStatusVisible() on the GUI thread.
class StatusBarText
{
public:
    /// Shows `text`; the empty text clears. Text that looks like HTML is shown as such, so what comes from elsewhere, a
    /// file name for instance, is passed through QString::toHtmlEscaped(). A field with a display time clears itself
    /// after it. The status bar is as wide as its text: a long one widens the window.
    virtual void setStatusText(QString text) = 0;

    /// Shows `text` in a colour. It always is HTML, so plain text is passed through QString::toHtmlEscaped().
    virtual void setStatusTextColored(QString text, QColor color) = 0;

    /// Shows or hides the whole status bar, both fields. Stays so when the app changes.
    virtual void setStatusVisible(bool visible) = 0;

protected:
    ~StatusBarText() = default;
};
